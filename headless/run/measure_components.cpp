#include "headless/run/stages.h"

#include "headless/failure/failure.h"
#include "headless/run/plugin_files.h"

#include <filesystem>
#include <fstream>

namespace zn::headless {

namespace {

// From the plug-in's file, whose length has been checked; empty when the plug-in left no such file.
TemporalEigenpairs eigenpairsOf(const Run& run) {
    const auto volumes = static_cast<std::size_t>(run.volumes);
    TemporalEigenpairs eigen{std::vector<double>(volumes), std::vector<double>(volumes * volumes)};
    const std::filesystem::path file = pluginFile(run, ResultFile::kPluginEigenvalues);
    if (!std::filesystem::exists(file)) return {};
    std::ifstream stream(file, std::ios::binary);
    for (std::vector<double>* part : {&eigen.values, &eigen.vectors}) {
        stream.read(reinterpret_cast<char*>(part->data()), static_cast<std::streamsize>(sizeof(double) * part->size()));
    }
    if (!stream) throw Failure(ExitStatus::kOther, file.string() + " cannot be read back; check its disk.");
    return eigen;
}

} // namespace

void measureComponents(Run& run) {
    const VolumeMaps& maps = run.session.maps;
    run.courses = fitCourses(run.session.series, run.mask.voxels, maps, *run.products);
    run.measures.resize(maps.maps().size());
    run.products->team().run(run.componentsFound(), [&](int number) {
        const auto i = static_cast<std::size_t>(number);
        run.measures[i].moments = momentsOf(maps.maps()[i].values, run.mask.voxels);
    });
    for (std::size_t i = 0; i < maps.maps().size(); ++i) {
        run.measures[i].explainedPercent = run.courses.explainedPercent[i];
        if (run.confounds) run.measures[i].confound = strongestConfound(maps.maps()[i].timeCourse, *run.confounds);
    }
    const TemporalEigenpairs eigen = eigenpairsOf(run);
    run.temporalEigenvalues = eigen.values;
    run.keptPercent = keptVariancePercent(eigen, run.eigenvalues.first, run.eigenvalues.last);
}

} // namespace zn::headless
