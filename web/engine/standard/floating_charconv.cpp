#include "floating_charconv.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <system_error>

namespace {

std::to_chars_result copied(const std::string& text, char* first, char* last) {
    if (static_cast<std::size_t>(last - first) < text.size()) return {last, std::errc::value_too_large};
    std::memcpy(first, text.data(), text.size());
    return {first + text.size(), std::errc()};
}

template <class... Values> std::string formatted(const char* format, Values... values) {
    char text[400]; // the longest double has 309 digits before the point
    const int length = std::snprintf(text, sizeof text, format, values...);
    return {text, static_cast<std::size_t>(length)};
}

float parse(const char* text, char** end, float) {
    return std::strtof(text, end);
}

double parse(const char* text, char** end, double) {
    return std::strtod(text, end);
}

std::string specialText(double value) {
    return std::string(std::signbit(value) ? "-" : "") + (std::isnan(value) ? "nan" : "inf");
}

// The fewest digits, in scientific notation, that read back as the value.
template <class Real> std::string shortestScientific(Real value) {
    std::string text;
    for (int digits = 1; digits <= std::numeric_limits<Real>::max_digits10; ++digits) {
        text = formatted("%.*e", digits - 1, static_cast<double>(value));
        if (parse(text.c_str(), nullptr, value) == value) break;
    }
    return text;
}

// The same digits without an exponent.
std::string asFixed(double value, const std::string& scientific) {
    const std::size_t e = scientific.find('e');
    const auto point = scientific.find('.');
    const int decimals = point == std::string::npos ? 0 : static_cast<int>(e - point) - 1;
    const int exponent = std::atoi(scientific.c_str() + e + 1);
    return formatted("%.*f", std::max(decimals - exponent, 0), value);
}

// The shorter notation, which is the one without an exponent when both are as long.
template <class Real> std::to_chars_result shortest(char* first, char* last, Real value) {
    if (!std::isfinite(value)) return copied(specialText(value), first, last);
    const std::string scientific = shortestScientific(value);
    const std::string fixed = asFixed(value, scientific);
    return copied(fixed.size() <= scientific.size() ? fixed : scientific, first, last);
}

std::to_chars_result precise(char* first, char* last, double value, std::chars_format format, int precision) {
    if (!std::isfinite(value)) return copied(specialText(value), first, last);
    const char* pattern = format == std::chars_format::fixed        ? "%.*f"
                          : format == std::chars_format::scientific ? "%.*e"
                                                                    : "%.*g";
    return copied(formatted(pattern, precision, value), first, last);
}

// Neither blanks nor a plus sign may come first, and hexadecimal numbers end before their x.
bool mayBegin(const std::string& text) {
    const std::size_t first = !text.empty() && text[0] == '-' ? 1 : 0;
    if (first >= text.size()) return false;
    const auto c = static_cast<unsigned char>(text[first]);
    return std::isdigit(c) != 0 || std::strchr(".iInN", c) != nullptr;
}

template <class Real> std::from_chars_result parseAll(const char* first, const char* last, Real& value) {
    std::string text(first, last);
    text.resize(std::min(text.find_first_of("xX"), text.size()));
    if (!mayBegin(text)) return {first, std::errc::invalid_argument};
    char* end = nullptr;
    errno = 0;
    const Real number = parse(text.c_str(), &end, value);
    const char* stop = first + (end - text.c_str());
    if (stop == first) return {first, std::errc::invalid_argument};
    if (errno == ERANGE) return {stop, std::errc::result_out_of_range};
    value = number;
    return {stop, std::errc()};
}

} // namespace

namespace zn::web {

std::to_chars_result write(char* first, char* last, float value) {
    return shortest(first, last, value);
}

std::to_chars_result write(char* first, char* last, double value) {
    return shortest(first, last, value);
}

std::to_chars_result write(char* first, char* last, double value, std::chars_format format, int precision) {
    return precise(first, last, value, format, precision);
}

std::from_chars_result read(const char* first, const char* last, float& value) {
    return parseAll(first, last, value);
}

std::from_chars_result read(const char* first, const char* last, double& value) {
    return parseAll(first, last, value);
}

} // namespace zn::web
