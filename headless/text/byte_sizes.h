#pragma once

#include <cstdint>
#include <string>

namespace zn::headless {

inline constexpr double kBytesPerGib = 1073741824.0;

/// "1.25 GiB", with three significant digits.
std::string gibText(std::int64_t bytes);

} // namespace zn::headless
