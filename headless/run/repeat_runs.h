#pragma once

#include "headless/run/run.h"

namespace zn::headless {

/// For --repeats R above 1: runs the plug-in again until there are R runs, the k-th one (from 0) with the first seed +
/// k, and compares what they found. The session comes with the maps of the first run and leaves with them; the maps of
/// later runs are kept in memory for the comparison alone (8 bytes per voxel and component) and their files are
/// removed. Their lines are added to the log file. A run that finds nothing counts as not converged; every other
/// failure is thrown.
void repeatSeparation(Run& run);

} // namespace zn::headless
