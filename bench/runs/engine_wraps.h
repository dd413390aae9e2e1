#pragma once

namespace zn::bench {

/// Seed of the engine's random start vectors, whatever it asks for: it seeds from the clock, which would make runs
/// unrepeatable.
void setStartSeed(unsigned seed);

/// The last call of jacobi in this process. It is timed separately because its stage also writes two files.
struct EigenSearch {
    double seconds = 0.0;
    int rotations = 0;
};
const EigenSearch& lastEigenSearch();

} // namespace zn::bench
