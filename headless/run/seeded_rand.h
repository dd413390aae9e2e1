#pragma once

#include <cstdint>

namespace zn::headless {

/// Begins a run's random numbers: from here on `rand` of the whole process draws from this seed.
///
/// A plug-in seeds the C library's generator from the clock, so that no two runs are alike. This executable defines
/// `srand` and `rand` itself and exports them: the dynamic linker searches the executable first, so the references of a
/// plug-in that is loaded later end here instead of in the C library. `rand` then gives the numbers of a Mersenne
/// Twister, which the language lays down bit for bit, and `srand` keeps its caller's number out: its first call in a
/// run restarts the run's own sequence, the n-th call starts the n-th sequence of that seed (a plug-in that seeds anew
/// for every attempt still gets new numbers).
///
/// Linux only; for one thread at a time, the one that runs the plug-in.
void beginRandomNumbers(std::uint32_t seed);

/// A seed that is new every time.
std::uint32_t freshSeed();

} // namespace zn::headless
