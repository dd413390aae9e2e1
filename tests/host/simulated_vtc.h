#pragma once

#include "host/scripted_host.h"

#include <vector>

namespace zn::test {

/// What went into simulated data.
struct SimulatedSources {
    std::vector<std::vector<double>> maps;        ///< one value per selected voxel
    std::vector<std::vector<double>> timeCourses; ///< one value per volume
};

/// Gives the host a VTC of mixed sources: every source has a map of independent, strongly peaked values and its own
/// time course, and a little noise is added. The same numbers on every machine.
SimulatedSources giveSimulatedVtc(ScriptedHost& host, int x, int y, int z, int volumes, int sources);

/// Absolute Pearson correlation.
double absoluteCorrelation(const std::vector<double>& a, const std::vector<double>& b);

/// For each source the best absolute correlation of its map with the values of any component map inside the mask.
std::vector<double> recoveredMaps(const ScriptedHost& host, const SimulatedSources& sources);

} // namespace zn::test
