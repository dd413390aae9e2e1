#include "headless/run/symmetric_separator.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace zn::headless {

namespace {

zn::Nonlinearity nonlinearityOf(int code) {
    if (code == 1) return zn::Nonlinearity::gaussian;
    return code == 2 ? zn::Nonlinearity::cube : zn::Nonlinearity::tanh;
}

template <class... Values> std::string formatted(const char* format, Values... values) {
    char text[192];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

} // namespace

void SymmetricSeparator::show(const SymmetricProgress& state) {
    progress_.searching(state.start < 0 ? "all voxels" : formatted("start %d of %d", state.start + 1, starts_).c_str(),
                        state.iterations);
}

void SymmetricSeparator::log(const SymmetricResult& result, const SeparationRequest& request) {
    const SymmetricFacts& facts = result.facts;
    for (std::size_t i = 0; i < facts.starts.size(); ++i) {
        const StartFacts& start = facts.starts[i];
        events_.logLine(formatted("znica: start %zu: %d iterations on %d of %d voxels%s, negentropy %.6g, "
                                  "agreement with the chosen start %.3f",
                                  i + 1, start.iterations, facts.startVoxels, request.voxels,
                                  start.converged ? "" : " without convergence", start.negentropy, start.agreement));
    }
    events_.logLine(formatted("znica: start %d finished on all voxels: %d iterations, negentropy %.6g, "
                              "%zu of %d components converged",
                              facts.chosen + 1, facts.iterations, facts.negentropy, result.vectors.size(),
                              request.components));
}

int SymmetricSeparator::separate(const SeparationRequest& request, double* vectors) {
    events_.logLine(formatted("znica: Running FastICA computation (symmetric approach, %d starts)", starts_));
    SymmetricSettings settings;
    settings.nonlinearity = nonlinearityOf(request.nonlinearity);
    settings.epsilon = request.epsilon;
    settings.iterationLimit = request.iterationLimit;
    settings.starts = starts_;
    settings.seed = seed_;
    const SymmetricResult result = separateSymmetrically(team_, {request.z, request.components, request.voxels},
                                                         {request.dewhitening, request.volumes}, settings,
                                                         [this](const SymmetricProgress& state) { show(state); });
    log(result, request);
    for (std::size_t k = 0; k < result.vectors.size(); ++k) {
        const std::vector<double>& vector = result.vectors[k];
        std::copy(vector.begin(), vector.end(), vectors + k * vector.size());
    }
    facts_ = result.facts;
    return static_cast<int>(result.vectors.size());
}

} // namespace zn::headless
