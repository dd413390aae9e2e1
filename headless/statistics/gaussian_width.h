#pragma once

namespace zn::headless {

/// Full width at half maximum of a Gaussian with standard deviation 1: 2 sqrt(2 ln 2).
inline constexpr double kFwhmOfUnitSigma = 2.3548200450309493;

} // namespace zn::headless
