#pragma once

#include "headless/run/run.h"

namespace zn::headless {

/// Predicts the memory of a run from the voxels that it is likely to analyse, notes it, and refuses what will not fit.
/// The budget is that of --memory, else what the machine has free now. For --mask auto one volume is read. Throws
/// Failure: kInput for fewer voxels than volumes, kMemory for a prediction beyond the budget.
void checkBudget(Run& run);

/// Predicts again for the voxels that the data turned out to have; throws as above.
void requireMemory(Run& run, std::int64_t voxels);

} // namespace zn::headless
