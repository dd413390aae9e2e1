#include "ica/whitening.h"

#include "host/host_api.h"
#include "host/log.h"

#include <array>
#include <charconv>
#include <cmath>

namespace zn {

namespace {

// The eigenpairs by rank; a rank that does not exist has the value 0 and a zero vector.
class Ranked {
public:
    Ranked(const Eigenpairs& eigen, int volumes) : eigen_(eigen), volumes_(volumes) {}

    double value(int rank) const { return exists(rank) ? eigen_.values[rank] : 0.0; }
    double element(int volume, int rank) const { return exists(rank) ? eigen_.vectors[volume][rank] : 0.0; }

private:
    bool exists(int rank) const { return rank >= 1 && rank <= volumes_; }

    const Eigenpairs& eigen_;
    int volumes_;
};

// Six decimals, as by printf's %f, but with a point in every locale: the host may have set one with a comma.
std::array<char, 64> fixedPoint(float value) {
    std::array<char, 64> text{}; // at most 39 digits before the point
    std::to_chars(text.begin(), text.end() - 1, static_cast<double>(value), std::chars_format::fixed, 6);
    return text;
}

double sumOfValues(const Ranked& eigen, int first, int last) {
    double sum = 0.0;
    for (int i = 0; i <= last - first; ++i) sum += eigen.value(first + i);
    return sum;
}

} // namespace

Whitening whiten(const double* x, int voxels, int volumes, Eigenpairs& eigen, int first, int last) {
    const Ranked ranked(eigen, volumes);
    const double total = sumOfValues(ranked, 1, volumes);
    const double retained = sumOfValues(ranked, first, last);
    logLine("// Plugin>  Retained variance after dimensionality reduction: %s %%",
            fixedPoint(static_cast<float>(retained / total * 100.0)).data());

    const int n = last - first + 1;
    Whitening result{ZeroedBlock(n, volumes), ZeroedBlock(volumes, n), {}};
    for (int r = 0; r < n; ++r) {
        const double scaleDown = std::pow(ranked.value(first + r), -0.5);
        const double scaleUp = std::pow(ranked.value(first + r), 0.5);
        for (int t = 1; t <= volumes; ++t) {
            result.whitening.row(r)[t - 1] = scaleDown * ranked.element(t, first + r);
            result.dewhitening.row(t - 1)[r] = scaleUp * ranked.element(t, first + r);
        }
    }

    result.data = ZeroedBlock(n, voxels);
    products().zn_intel_matrix_matrix_mult_d(result.whitening.get(), x, result.data.get(), n, voxels, volumes, false,
                                             true);
    eigen = Eigenpairs{};
    return result;
} // NOLINT(clang-analyzer-unix.Malloc): the blocks are the caller's now

} // namespace zn
