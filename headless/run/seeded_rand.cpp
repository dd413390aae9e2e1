#include "headless/run/seeded_rand.h"

#include <cstdlib>
#include <random>

namespace zn::headless {

namespace {

std::mt19937 generator; // the C interface has no parameter for it
std::uint32_t runSeed = std::mt19937::default_seed;
std::uint32_t sequence = 0;

static_assert(RAND_MAX == 0x7fffffff, "rand returns the upper 31 of the generator's 32 bits");

void startSequence() {
    std::seed_seq seeds{runSeed, sequence};
    generator.seed(seeds);
}

} // namespace

void beginRandomNumbers(std::uint32_t seed) {
    runSeed = seed;
    sequence = 0;
    startSequence();
}

std::uint32_t freshSeed() {
    return std::random_device()();
}

} // namespace zn::headless

// As the C library declares them.
#ifdef __GLIBC__
#define ZN_NO_THROW noexcept
#else
#define ZN_NO_THROW
#endif

extern "C" {

__attribute__((visibility("default"))) void srand(unsigned) ZN_NO_THROW {
    zn::headless::startSequence();
    ++zn::headless::sequence;
}

__attribute__((visibility("default"))) int rand() ZN_NO_THROW {
    return static_cast<int>(zn::headless::generator() >> 1);
}

} // extern "C"
