#pragma once

#include <cstddef>
#include <string>

namespace zn::headless {

/// "1 column", "2 columns"
std::string counted(std::size_t count, const std::string& what);

/// At most six significant digits.
std::string shortNumber(double number);

/// "2 s", with at most six significant digits.
std::string secondsText(double seconds);

} // namespace zn::headless
