#pragma once

namespace zn::bench {

/// Seed that the engine's random start vectors get, whatever it asks for: it takes the clock, and no run could be
/// repeated.
void setStartSeed(unsigned seed);

/// The last call of jacobi in this process. It lies inside a stage that also writes two files.
struct EigenSearch {
    double seconds = 0.0;
    int rotations = 0;
};
const EigenSearch& lastEigenSearch();

} // namespace zn::bench
