// Outside the guard: with emscripten this is the file beside, which needs the declarations below.
#include <charconv>

#ifndef ZN_FLOATING_CHARCONV_H
#define ZN_FLOATING_CHARCONV_H

namespace zn::web {

// What std::to_chars and std::from_chars do with floating-point numbers, in the "C" locale.

/// The shortest text that reads back as the value.
std::to_chars_result write(char* first, char* last, float value);
std::to_chars_result write(char* first, char* last, double value);

/// In fixed, scientific or general notation with `precision` digits, as printf does.
std::to_chars_result write(char* first, char* last, double value, std::chars_format format, int precision);

/// The longest beginning of the text that is a decimal number.
std::from_chars_result read(const char* first, const char* last, float& value);
std::from_chars_result read(const char* first, const char* last, double& value);

} // namespace zn::web

#endif
