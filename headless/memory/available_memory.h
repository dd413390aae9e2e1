#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace zn::headless {

/// Bytes that this process can still use without swapping: MemAvailable of /proc/meminfo, or what the process's control
/// group (a container, a batch job) has left, whichever is less. Nothing if the system reports neither.
///
///   root   folder with /proc and /sys
std::optional<std::int64_t> availableMemoryBytes(const std::filesystem::path& root = "/");

/// The same, but no more than the batch job that this process belongs to is granted.
std::optional<std::int64_t> usableMemoryBytes();

/// Bytes of address space that a limit (ulimit -v) leaves this process; nothing without a limit.
std::optional<std::int64_t> addressSpaceLeftBytes();

/// The peak memory of this process so far.
std::int64_t peakMemoryBytes();

} // namespace zn::headless
