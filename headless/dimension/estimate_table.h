#pragma once

#include "headless/dimension/component_estimate.h"

#include <filesystem>

namespace zn::headless {

/// Writes the curves of an estimate as a table: a row a number of components (from 1) with columns components,
/// eigenvalue (of that rank), mdl and laplace; "n/a" where a criterion was not evaluated. Throws Failure (kOther).
void writeEstimateTable(const std::filesystem::path& file, const ComponentEstimate& estimate);

} // namespace zn::headless
