#pragma once

#include <cstdint>
#include <random>

namespace zn::headless {

/// Random numbers that are the same with every compiler: the generator is specified by the C++ standard; the
/// distributions, which the standard leaves open, are implemented here.
class RandomNumbers {
public:
    explicit RandomNumbers(std::uint64_t seed) : generator_(seed) {}

    /// Uniform in [0, 1), 53 bits.
    double uniform();
    double uniform(double low, double high) { return low + (high - low) * uniform(); }
    /// Standard normal. Method: Marsaglia and Bray (1964), SIAM Review 6, 260-264, the polar form.
    double normal();

private:
    std::mt19937_64 generator_;
    double spare_ = 0.0;
    bool hasSpare_ = false;
};

} // namespace zn::headless
