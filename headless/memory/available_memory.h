#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace zn::headless {

/// Bytes that this process can still take without swapping: MemAvailable of /proc/meminfo, or what the process's
/// control group (a container, a batch job) has left, whichever is less. Nothing where the system
/// reports neither.
///
///   root   where /proc and /sys are looked for
std::optional<std::int64_t> availableMemoryBytes(const std::filesystem::path& root = "/");

/// The most memory that this process has had in use so far.
std::int64_t peakMemoryBytes();

} // namespace zn::headless
