// engine_run VOXELS VOLUMES COMPONENTS SEED [DATA MAPS] [--regions COUNT]
//
// Runs the engine once, from centred doubles in memory to component maps, and prints the time of each stage. The data
// are read from DATA (V x T doubles) and the maps written to MAPS (K x V floats); without the two names the data are
// simulated from the seed. --regions runs the fingerprint as well, with that many regions of interest. The eigenvalue
// file and the covariance as text go to the current folder, as in every run.
#include "fingerprint/fingerprint.h"
#include "host/host_api.h"
#include "host/update_clock.h"
#include "ica/covariance.h"
#include "ica/fastica.h"
#include "ica/reconstruction.h"
#include "ica/whitening.h"
#include "runs/engine_request.h"
#include "runs/engine_wraps.h"
#include "runs/process_memory.h"
#include "runs/run_clock.h"
#include "runs/run_result.h"
#include "runs/simulated_run.h"

#include <algorithm>
#include <cstdio>
#include <random>
#include <vector>

namespace {

using namespace zn;
using namespace zn::bench;

// Adds the seconds that a stage takes to the result, under its name.
template <class Stage> auto timed(RunResult& result, const char* name, Stage stage) {
    const RunClock clock;
    auto value = stage();
    result.add(name, clock.seconds());
    return value;
}

Components runEngine(const EngineRequest& request, ZeroedBlock& x, RunResult& result) {
    const int voxels = request.voxels;
    const int volumes = request.volumes;
    const int n = request.components;
    const FastIcaSettings settings{Nonlinearity::tanh, 1e-4f, 1000, n};
    const long long held = residentBytes();
    forgetPeak();
    updateClock() = UpdateClock{};
    const RunClock clock;

    auto covariance = timed(result, "covariance", [&] { return computeCovariance(x.get(), voxels, volumes); });
    auto eigen = timed(result, "eigen", [&] { return decomposeCovariance(covariance, volumes, "run.vtc"); });
    auto whitened = timed(result, "whitening", [&] { return whiten(x.get(), voxels, volumes, eigen, 1, n); });
    auto separation = timed(result, "fastica", [&] { return separate(whitened, voxels, volumes, settings); });
    whitened = Whitening{};
    auto components = timed(result, "maps", [&] { return reconstruct(x, voxels, volumes, separation); });

    result.add("seconds", clock.seconds());
    result.add("processor_seconds", clock.processorSeconds());
    result.add("bytes_beyond_data", static_cast<double>(peakBytes() - held));
    result.add("updates", updateClock().updates);
    result.add("seconds_of_updates_but_last", updateClock().last - updateClock().first);
    result.add("found", components.count);
    result.add("jacobi", lastEigenSearch().seconds);
    result.add("rotations", lastEigenSearch().rotations);
    return components;
}

OffsetMatrix<float> noise(int rows, int columns) {
    OffsetMatrix<float> matrix(0, rows - 1, 0, columns - 1);
    std::minstd_rand generator(1);
    std::uniform_real_distribution<float> values(-1.0f, 1.0f);
    for (int i = 0; i < rows; ++i) std::generate(matrix[i], matrix[i] + columns, [&] { return values(generator); });
    return matrix;
}

void runFingerprint(const EngineRequest& request, const Components& components, RunResult& result) {
    const auto coordinates = simulateRun(request.voxels, 1, 1, 1).coordinates;
    const auto design = noise(request.volumes, kPredictors);
    OffsetMatrix<float> templates;
    if (request.regions > 0) templates = noise(request.regions, request.voxels);
    const int k = components.count;

    const RunClock clock;
    Fingerprint fingerprint(k);
    computeSpatialFeatures(components.maps.get(), k, request.voxels, fingerprint);
    computeTemporalFeatures(components.timeCourses.get(), components.rawTimeCourses.get(), k, request.volumes, 2000,
                            fingerprint);
    computeClustering(components.maps.get(), coordinates.get(), k, request.voxels, 2.5f, 10, fingerprint);
    computeDesignMatch(design.get(), components.timeCourses.get(), request.volumes, k, fingerprint);
    computeTemplateMatch(components.maps.get(), templates.get(), request.regions, request.voxels, k, fingerprint);
    result.add("fingerprint", clock.seconds());
    result.add("fingerprint_processor", clock.processorSeconds());
}

} // namespace

int main(int count, char** arguments) {
    EngineRequest request;
    if (!readRequest(count, arguments, request)) {
        std::fputs("usage: engine_run VOXELS VOLUMES COMPONENTS SEED [DATA MAPS] [--regions COUNT]\n", stderr);
        return 1;
    }
    if (!bindHostApi() || !bindHostMatrixProducts()) {
        std::fputs("engine_run: no host module with matrix products is loaded.\n", stderr);
        return 1;
    }
    setStartSeed(request.seed);
    RunResult result;
    ZeroedBlock x = takeData(request);
    const Components components = runEngine(request, x, result);
    if (request.regions >= 0) runFingerprint(request, components, result);
    std::vector<const float*> maps;
    for (int k = 0; k < components.count; ++k) maps.push_back(components.maps[k]);
    if (!request.maps.empty() && !writeMaps(request.maps, maps, request.voxels)) {
        std::fprintf(stderr, "engine_run: cannot write %s.\n", request.maps.c_str());
        return 1;
    }
    result.print();
    return 0;
}
