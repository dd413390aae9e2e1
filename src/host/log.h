#pragma once

namespace zn {

/// Writes one line to the host's log, formatted as by printf; truncated at 511 characters, far above the longest line
/// of a run.
[[gnu::format(printf, 1, 2)]] void logLine(const char* format, ...);

} // namespace zn
