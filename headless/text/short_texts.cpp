#include "headless/text/short_texts.h"

#include <cstdio>

namespace zn::headless {

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string shortNumber(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", number);
    return text;
}

std::string secondsText(double seconds) {
    return shortNumber(seconds) + " s";
}

} // namespace zn::headless
