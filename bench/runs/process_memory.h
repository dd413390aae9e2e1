#pragma once

namespace zn::bench {

/// Bytes that this process currently holds in memory.
long long residentBytes();

/// The most bytes it has held since its start or since the last call of forgetPeak.
long long peakBytes();

/// Resets the peak to what is held now.
void forgetPeak();

} // namespace zn::bench
