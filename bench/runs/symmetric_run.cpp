// symmetric_run VOXELS VOLUMES COMPONENTS SEED DATA MAPS THREADS
//
// The engine with the symmetric estimate, as in znica run --approach symmetric, from centred doubles in memory to
// component maps. The products, the threads and the estimate are those of the headless host. Files as in engine_run.
#include "headless/blas/matrix_products.h"
#include "headless/host/current_session.h"
#include "headless/run/symmetric_separator.h"
#include "host/host_api.h"
#include "ica/covariance.h"
#include "ica/reconstruction.h"
#include "ica/separate_in_host.h"
#include "ica/whitening.h"
#include "runs/engine_request.h"
#include "runs/process_memory.h"
#include "runs/run_clock.h"
#include "runs/run_result.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <vector>

namespace {

using namespace zn;
using namespace zn::bench;
using zn::headless::SymmetricSeparator;

class NoEvents : public headless::SessionEvents {
    void logLine(std::string_view) override {}
    void message(std::string_view text) override {
        std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
    }
    void saveMaps(const headless::VolumeMaps&, std::string_view) override {}
    [[noreturn]] void outOfMemory() override { std::abort(); }
};

Components runEngine(const EngineRequest& request, ZeroedBlock& x, const SymmetricSeparator& separator,
                     RunResult& result) {
    const int voxels = request.voxels;
    const int volumes = request.volumes;
    const int n = request.components;
    const FastIcaSettings settings{zn::Nonlinearity::tanh, 1e-4f, 1000, n};
    const long long held = residentBytes();
    forgetPeak();
    const RunClock clock;

    auto covariance = computeCovariance(x.get(), voxels, volumes);
    auto eigen = decomposeCovariance(covariance, volumes, "run.vtc");
    auto whitened = whiten(x.get(), voxels, volumes, eigen, 1, n);
    const RunClock separationClock;
    auto separation = separateInHost(whitened, voxels, volumes, settings);
    result.add("separation_seconds", separationClock.seconds());
    result.add("separation_processor_seconds", separationClock.processorSeconds());
    whitened = Whitening{};
    auto components = reconstruct(x, voxels, volumes, separation.value());

    result.add("seconds", clock.seconds());
    result.add("processor_seconds", clock.processorSeconds());
    result.add("bytes_beyond_data", static_cast<double>(peakBytes() - held));
    result.add("iterations", separator.facts()->iterations);
    result.add("found", components.count);
    return components;
}

} // namespace

int main(int count, char** arguments) {
    EngineRequest request;
    if (count != 8 || !readRequest(count - 1, arguments, request)) {
        std::fputs("usage: symmetric_run VOXELS VOLUMES COMPONENTS SEED DATA MAPS THREADS\n", stderr);
        return 1;
    }
    headless::MatrixProducts products(std::atoi(arguments[7]));
    NoEvents events;
    headless::Progress progress(headless::Progress::Display::kNone);
    SymmetricSeparator separator(products.team(), events, progress, 3, request.seed);
    headless::Session session;
    session.products = &products;
    session.events = &events;
    session.separator = &separator;
    headless::attachSession(&session);
    if (!bindHostApi() || !bindHostMatrixProducts()) {
        std::fputs("symmetric_run: no host module with matrix products is loaded.\n", stderr);
        return 1;
    }
    bindHostSeparation();

    RunResult result;
    ZeroedBlock x = takeData(request);
    const Components components = runEngine(request, x, separator, result);
    std::vector<const float*> maps;
    for (int k = 0; k < components.count; ++k) maps.push_back(components.maps[k]);
    if (!writeMaps(request.maps, maps, request.voxels)) {
        std::fprintf(stderr, "symmetric_run: cannot write %s.\n", request.maps.c_str());
        return 1;
    }
    result.print();
    return 0;
}
