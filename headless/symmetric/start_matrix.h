#pragma once

#include "headless/symmetric/unmixing_matrix.h"

#include <random>

namespace zn::headless {

/// A random number in [0, 1), the same with every standard library.
double uniform(std::mt19937& random);

/// n x n random numbers in [-0.5, 0.5), row by row: a start, once its rows have been decorrelated.
UnmixingMatrix startMatrix(int dimension, std::mt19937& random);

} // namespace zn::headless
