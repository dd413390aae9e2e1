#pragma once

namespace zn::headless {

/// The standard normal deviate with the same tail probability as t in Student's distribution, with the sign of t.
///
///   freedom   degrees of freedom, at least 1
///
/// Relative error for |t| up to 30: below 1e-7 from 100 degrees of freedom on, 5e-6 from 20, 2e-4 from 5, 1e-3 from 3;
/// 0.11 for 1.
///
/// Method: Hill (1970), Communications of the ACM 13, 617-619 (Algorithm 395), the asymptotic expansion.
double normalDeviate(double t, double freedom);

} // namespace zn::headless
