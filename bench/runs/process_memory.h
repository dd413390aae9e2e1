#pragma once

namespace zn::bench {

/// Bytes that this process holds in memory now.
long long residentBytes();

/// The most bytes it has held since its start or since the last call of forgetPeak.
long long peakBytes();

/// Lets the peak begin anew at what is held now.
void forgetPeak();

} // namespace zn::bench
