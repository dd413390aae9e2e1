#pragma once

namespace zn::headless {

/// Throws Failure (kInput) if the cut-off of --high-pass is below two repetition times, the shortest period that the
/// series can show.
///
///   cutOff   seconds; 0: no filter
void requireCutOff(double cutOff, double secondsPerVolume);

} // namespace zn::headless
