#include "headless/cli/number_checks.h"

#include <charconv>
#include <cmath>

namespace zn::headless {

namespace {

template <class Number> bool parseEntirely(const std::string& text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

} // namespace

CLI::Validator finiteNumber(const std::string& wanted, bool (*fits)(double)) {
    return CLI::Validator("").operation([wanted, fits](std::string& text) -> std::string {
        double number = 0.0;
        if (parseEntirely(text, number) && std::isfinite(number) && fits(number)) return "";
        return "needs " + wanted + "; got " + text;
    });
}

CLI::Validator wholeNumber(std::uint64_t maximum) {
    return CLI::Validator("").operation([maximum](std::string& text) -> std::string {
        std::uint64_t number = 0;
        if (parseEntirely(text, number) && number <= maximum) return "";
        return "needs a whole number from 0 to " + std::to_string(maximum) + "; got " + text;
    });
}

} // namespace zn::headless
