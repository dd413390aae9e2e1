#pragma once

namespace zn {

/// Writes one line into the host's log, formatted as by printf. Longer than the longest line of a run is cut.
[[gnu::format(printf, 1, 2)]] void logLine(const char* format, ...);

} // namespace zn
