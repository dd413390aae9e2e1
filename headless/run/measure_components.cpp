#include "headless/run/stages.h"

#include "headless/run/plugin_files.h"

#include <fstream>

namespace zn::headless {

namespace {

// From the plug-in's file, whose length has been checked; empty when the plug-in left no such file.
TemporalEigenpairs eigenpairsOf(const Run& run) {
    const auto volumes = static_cast<std::size_t>(run.volumes);
    TemporalEigenpairs eigen{std::vector<double>(volumes), std::vector<double>(volumes * volumes)};
    std::ifstream stream(pluginFile(run, ResultFile::kPluginEigenvalues), std::ios::binary);
    for (std::vector<double>* part : {&eigen.values, &eigen.vectors}) {
        stream.read(reinterpret_cast<char*>(part->data()), static_cast<std::streamsize>(sizeof(double) * part->size()));
    }
    return stream ? eigen : TemporalEigenpairs{};
}

} // namespace

void measureComponents(Run& run) {
    const VolumeMaps& maps = run.session.maps;
    run.courses = fitCourses(run.session.series, run.mask.voxels, maps, *run.products);
    for (std::size_t i = 0; i < maps.maps().size(); ++i) {
        const VolumeMap& map = maps.maps()[i];
        ComponentMeasures measures;
        measures.explainedPercent = run.courses.explainedPercent[i];
        measures.moments = momentsOf(map.values, run.mask.voxels);
        if (run.confounds) measures.confound = strongestConfound(map.timeCourse, *run.confounds);
        run.measures.push_back(measures);
    }
    const TemporalEigenpairs eigen = eigenpairsOf(run);
    run.temporalEigenvalues = eigen.values;
    run.keptPercent = keptVariancePercent(eigen, run.eigenvalues.first, run.eigenvalues.last);
}

} // namespace zn::headless
