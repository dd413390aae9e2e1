#pragma once

// Eigen for WebAssembly. To Eigen clang is g++ 4.2, for whose errors it works around with x86 instructions; the version
// from which it no longer does is claimed instead.
#include <Eigen/src/Core/util/Macros.h>
#undef EIGEN_COMP_GNUC
#define EIGEN_COMP_GNUC 63

#include <Eigen/Cholesky>
#include <Eigen/Core>
#include <Eigen/Eigenvalues>
