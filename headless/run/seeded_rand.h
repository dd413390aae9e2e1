#pragma once

#include <cstdint>

namespace zn::headless {

/// Starts the random numbers of a run: from here on `rand` in the entire process uses this seed.
///
/// A plug-in seeds the C library's generator from the clock, so that no two runs are alike. This executable defines and
/// exports `srand` and `rand` itself: the dynamic linker searches the executable first, so calls from a plug-in loaded
/// later resolve here instead of to the C library. `rand` then returns the numbers of a Mersenne Twister, which the C++
/// standard specifies bit for bit, and `srand` ignores its argument: its first call in a run restarts the run's own
/// sequence, and the n-th call starts the n-th sequence of that seed (a plug-in that seeds again for every attempt
/// still gets new numbers).
///
/// Linux only; for one thread at a time, the one that runs the plug-in.
void beginRandomNumbers(std::uint32_t seed);

/// A new seed on every call.
std::uint32_t freshSeed();

} // namespace zn::headless
