// itpp_run VOXELS VOLUMES COMPONENTS SEED DATA MAPS
//
// IT++'s FastICA, deflation approach, on the data of engine_run. Its convergence test is the same as the engine's.
#include "runs/process_memory.h"
#include "runs/run_clock.h"
#include "runs/run_result.h"

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <itpp/itbase.h>
#include <itpp/itsignal.h>

namespace {

using namespace zn::bench;

// Products of the whitened data and a vector; every update starts with one.
struct Updates {
    int voxels = 0;
    int count = 0;
    RunClock clock;
    double first = 0.0;
    double last = 0.0;
} updates;

std::vector<float> toFloats(const itpp::mat& maps) {
    std::vector<float> floats;
    floats.reserve(static_cast<std::size_t>(maps.size()));
    for (int k = 0; k < maps.rows(); ++k) {
        for (int v = 0; v < maps.cols(); ++v) floats.push_back(static_cast<float>(maps(k, v)));
    }
    return floats;
}

} // namespace

// IT++ does not report its number of iterations; its calls to the BLAS pass through here and are counted.
extern "C" void dgemv_(const char* transpose, const int* rows, const int* columns, const double* alpha, const double* a,
                       const int* strideA, const double* x, const int* strideX, const double* beta, double* y,
                       const int* strideY) {
    using Product = decltype(&dgemv_);
    static const auto product = reinterpret_cast<Product>(dlsym(RTLD_NEXT, "dgemv_"));
    const bool isTransposed = *transpose == 'T' || *transpose == 't';
    if ((isTransposed ? *columns : *rows) == updates.voxels) {
        updates.last = updates.clock.seconds();
        if (updates.count++ == 0) updates.first = updates.last;
    }
    product(transpose, rows, columns, alpha, a, strideA, x, strideX, beta, y, strideY);
}

int main(int count, char** arguments) {
    if (count != 7) {
        std::fputs("usage: itpp_run VOXELS VOLUMES COMPONENTS SEED DATA MAPS\n", stderr);
        return 1;
    }
    const int voxels = std::atoi(arguments[1]);
    const int volumes = std::atoi(arguments[2]);
    const int components = std::atoi(arguments[3]);
    itpp::mat data(volumes, voxels); // column-major: the same order in memory as V x T row-major
    std::ifstream(arguments[5], std::ios::binary)
        .read(reinterpret_cast<char*>(data._data()), static_cast<std::streamsize>(sizeof(double)) * voxels * volumes);
    itpp::RNG_reset(static_cast<unsigned>(std::atoi(arguments[4])));

    RunResult result;
    updates.voxels = voxels;
    const long long held = residentBytes();
    forgetPeak();
    const RunClock clock;
    itpp::Fast_ICA ica(data);
    ica.set_approach(FICA_APPROACH_DEFL);
    ica.set_non_linearity(FICA_NONLIN_TANH);
    ica.set_nrof_independent_components(components);
    ica.set_first_eig(1);
    ica.set_last_eig(components);
    ica.set_epsilon(1e-4);
    ica.separate();
    const itpp::mat maps = ica.get_independent_components();
    result.add("seconds", clock.seconds());
    result.add("processor_seconds", clock.processorSeconds());
    result.add("bytes_beyond_data", static_cast<double>(peakBytes() - held));
    result.add("updates", updates.count);
    result.add("seconds_of_updates_but_last", updates.last - updates.first);
    result.add("found", maps.rows());

    const auto floats = toFloats(maps);
    std::vector<const float*> rows;
    for (int k = 0; k < maps.rows(); ++k) rows.push_back(floats.data() + static_cast<long long>(k) * voxels);
    if (!writeMaps(arguments[6], rows, voxels)) return 1;
    result.print();
    return 0;
}
