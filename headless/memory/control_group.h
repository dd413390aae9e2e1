#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace zn::headless {

/// Bytes that the control group of this process, or the narrowest one around it, may still take; file contents that the
/// system can drop count as free. Both versions of the interface are read: memory.max, memory.current, and
/// memory.limit_in_bytes, memory.usage_in_bytes. Nothing without a limit.
///
///   root   where /proc/self/cgroup and /sys/fs/cgroup are looked for
std::optional<std::int64_t> controlGroupMemoryLeft(const std::filesystem::path& root);

} // namespace zn::headless
