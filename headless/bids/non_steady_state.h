#pragma once

#include <filesystem>

namespace zn::headless {

/// The number of volumes at the beginning of a run before the magnetisation is in its steady state, from fMRIPrep's
/// table of confounds: each column "non_steady_state_outlierXX" is 1 in the row of one such volume. Counts the rows up
/// to the last of them; 0 without such columns. Throws Failure (kInput) when the table cannot be read.
int nonSteadyStateVolumes(const std::filesystem::path& confounds);

} // namespace zn::headless
