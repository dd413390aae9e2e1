#include "ica/fastica.h"

#include "host/host_api.h"
#include "host/log.h"
#include "ica/fixed_point_step.h"
#include "numeric/elapsed_time.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ctime>

namespace zn {

namespace {

constexpr int kMostFailures = 5; // of the whole run, not of one component
constexpr int kNotConverged = 0;

double length(const double* w, int n) {
    double square = 0.0;
    for (int i = 0; i < n; ++i) square += w[i] * w[i];
    return std::sqrt(square);
}

void normalise(double* w, int n) {
    const double norm = length(w, n);
    for (int i = 0; i < n; ++i) w[i] /= norm;
}

// Work space of the search; n is the reduced dimension, V the number of voxels.
struct Search {
    const WhitenedData data;
    const FastIcaSettings& settings;
    ZeroedBlock b;   // n x n, column c is the unit vector of component c
    ZeroedBlock bbt; // n x n, B Bt: projection onto the components found
    ZeroedBlock w, previous, work;
    ZeroedBlock y; // V

    Search(const WhitenedData& whitened, const FastIcaSettings& fastIcaSettings)
        : data(whitened), settings(fastIcaSettings), b(data.dimension, data.dimension),
          bbt(data.dimension, data.dimension), w(1, data.dimension), previous(1, data.dimension),
          work(1, data.dimension), y(1, data.voxels) {}

    // Removes from w its projection onto the components found so far, and makes it a unit vector.
    void deflateAndNormalise() {
        const int n = data.dimension;
        std::fill_n(work.get(), n, 0.0);
        products().zn_intel_matrix_vector_mult_d(bbt.get(), w.get(), work.get(), n, n, false);
        for (int i = 0; i < n; ++i) w.get()[i] -= work.get()[i];
        normalise(w.get(), n);
    }

    void start() {
        const int n = data.dimension;
        for (int i = 0; i < n; ++i) {
            w.get()[i] = std::rand() / static_cast<double>(RAND_MAX) - 0.5;
            previous.get()[i] = 0.0;
        }
        products().zn_intel_matrix_matrix_mult_d(b.get(), b.get(), bbt.get(), n, n, n, false, true);
        deflateAndNormalise();
    }

    // Whether w is within epsilon of sign times the previous w.
    bool isSame(double sign) {
        const int n = data.dimension;
        for (int i = 0; i < n; ++i) work.get()[i] = w.get()[i] - sign * previous.get()[i];
        return length(work.get(), n) < static_cast<double>(settings.epsilon);
    }
};

// One attempt at one component; returns the number of iterations, or kNotConverged at the limit. A limit below 0 means
// no limit.
int attempt(Search& search) {
    search.start();
    // Wider than the limit, so that without one the counter cannot overflow.
    for (long long iteration = 0; iteration != search.settings.iterationLimit; ++iteration) {
        search.deflateAndNormalise();
        if (search.isSame(+1.0) || search.isSame(-1.0)) return static_cast<int>(iteration + 1);
        // A NaN never goes away and passes no test: the remaining iterations could only repeat it.
        if (std::isnan(search.w.get()[0])) return kNotConverged;
        std::copy_n(search.w.get(), search.data.dimension, search.previous.get());
        fixedPointStep(search.settings.nonlinearity, search.data, search.w.get(), search.y.get(), search.work.get());
    }
    return kNotConverged;
}

// The current vector has converged.
void keep(Search& search, const Whitening& whitened, int volumes, Separation& separation) {
    const int n = search.data.dimension;
    const double* w = search.w.get();
    for (int k = 0; k < n; ++k) search.b.row(k)[separation.found] = w[k];
    addComponent(w, n, whitened, volumes, separation);
}

} // namespace

Separation separate(const Whitening& whitened, int voxels, int volumes, const FastIcaSettings& settings) {
    host().znLogText("// Plugin>  Running FastICA computation (deflation approach)...");
    const int n = settings.components;
    Separation separation = emptySeparation(volumes, n);
    Search search(WhitenedData{whitened.data.get(), n, voxels}, settings);

    std::srand(static_cast<unsigned>(std::time(nullptr)));
    int failures = 0;
    for (int number = 1; number <= n;) {
        const ElapsedTime time;
        const int iterations = attempt(search);
        if (iterations != kNotConverged) {
            keep(search, whitened, volumes, separation);
            logLine("// Plugin>  IC #: %i  Number of Iterations: %i (elapsed time: %i secs) ", number++, iterations,
                    time.seconds());
        } else if (++failures > kMostFailures) {
            host().znLogText("// Plugin>  Too many failures to converge....giving up!");
            break;
        } else {
            logLine("// Plugin>  IC #: %i  Number of Iterations: %i (restarting) (elapsed time: %i secs)", number,
                    settings.iterationLimit, time.seconds());
        }
    }
    return separation;
} // NOLINT(clang-analyzer-unix.Malloc): the blocks are the caller's now

} // namespace zn
