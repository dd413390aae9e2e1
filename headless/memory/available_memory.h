#pragma once

#include <cstdint>
#include <optional>

namespace zn {

/// Bytes that the machine can give without swapping: MemAvailable of /proc/meminfo. Nothing where it is not told.
std::optional<std::int64_t> availableMemoryBytes();

} // namespace zn
