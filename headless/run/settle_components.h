#pragma once

#include "headless/run/run.h"

namespace zn::headless {

/// For --components auto: estimates the number of components from the eigenvalues, settles the range with it, notes
/// each criterion's answer and writes the criteria as a table. Else nothing.
///
/// The table has one row per number of components, from 1: components, eigenvalue (of that rank), mdl and laplace;
/// "n/a" where a criterion was not evaluated.
void settleComponents(Run& run);

} // namespace zn::headless
