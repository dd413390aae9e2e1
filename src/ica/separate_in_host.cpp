#include "ica/separate_in_host.h"

#include "host/host_api.h"
#include "numeric/nrerror.h"

#include <cmath>

namespace zn {

namespace {

constexpr double kLengthTolerance = 1e-6; // rounding of a host in double precision stays far below it

int codeOf(Nonlinearity nonlinearity) {
    if (nonlinearity == Nonlinearity::gaussian) return 1;
    return nonlinearity == Nonlinearity::cube ? 2 : 0;
}

// False for NaN and infinity as well.
bool isUnitVector(const double* w, int n) {
    double square = 0.0;
    for (int k = 0; k < n; ++k) square += w[k] * w[k];
    return std::fabs(square - 1.0) < kLengthTolerance;
}

} // namespace

std::optional<Separation> separateInHost(const Whitening& whitened, int voxels, int volumes,
                                         const FastIcaSettings& settings) {
    const auto separateWhitened = hostSeparation().znSeparateWhitenedData;
    if (!separateWhitened) return std::nullopt;
    const int n = settings.components;
    const ZeroedBlock vectors(n, n);
    const int found = separateWhitened(whitened.data.get(), whitened.dewhitening.get(), volumes, n, voxels,
                                       codeOf(settings.nonlinearity), static_cast<double>(settings.epsilon),
                                       settings.iterationLimit, vectors.get());
    if (found < 0) return std::nullopt;
    if (found > n) nrerror("More components than requested from the host in routine separateInHost");

    Separation separation = emptySeparation(volumes, n);
    for (int c = 0; c < found; ++c) {
        const double* w = vectors.row(c);
        if (!isUnitVector(w, n)) nrerror("No unit vector from the host in routine separateInHost");
        addComponent(w, n, whitened, volumes, separation);
    }
    return separation;
} // NOLINT(clang-analyzer-unix.Malloc): the blocks are the caller's now

} // namespace zn
