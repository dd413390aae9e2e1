#pragma once

#include <cstdint>
#include <vector>

namespace zn::headless {

/// Memory that an array takes up of which only some elements are written, rounded up to pages of 4 KiB; the array
/// begins with a page.
///
///   written           [element], 0: never touched
///   bytesPerElement   at least 1
std::int64_t touchedBytes(const std::vector<unsigned char>& written, std::int64_t bytesPerElement);

} // namespace zn::headless
