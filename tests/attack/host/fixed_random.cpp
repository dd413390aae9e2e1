// The plug-in seeds the C library's random numbers with the time. This program has its own in their place, the same in
// every run, so that the results of two runs can be compared byte for byte. The dynamic linker finds these first.

#include <cstdint>

namespace {

std::uint64_t state = 0;

} // namespace

extern "C" {

__attribute__((visibility("default"))) void srand(unsigned /*seed*/) noexcept {
    state = 1;
}

// Knuth's MMIX generator; its high bits, up to glibc's RAND_MAX of 2^31 - 1.
__attribute__((visibility("default"))) int rand() noexcept {
    state = state * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<int>(state >> 33U);
}
}
