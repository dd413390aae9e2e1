#include "headless/denoise/removal.h"

#include "headless/blas/pseudo_inverse.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace zn::headless {

namespace {

void append(std::vector<double>& matrix, const std::vector<UnitCourse>& courses) {
    for (const UnitCourse& course : courses) matrix.insert(matrix.end(), course.begin(), course.end());
}

struct Inverse {
    std::vector<double> rows; // [column][volume]
    int rank = 0;
};

Inverse invert(const std::vector<double>& columns, int volumes) {
    Inverse inverse{std::vector<double>(columns.size()), 0};
    const int count = static_cast<int>(columns.size()) / volumes;
    inverse.rank = pseudoInverse(columns.data(), count, volumes, kDependent, inverse.rows.data());
    return inverse;
}

// The part of a course that columns explain, from their pseudo-inverse.
UnitCourse explainedBy(const std::vector<UnitCourse>& columns, const Inverse& inverse, const UnitCourse& course) {
    UnitCourse part(course.size(), 0.0);
    for (std::size_t k = 0; k < columns.size(); ++k) {
        const auto weights = inverse.rows.begin() + static_cast<std::ptrdiff_t>(k * course.size());
        const double coefficient = std::inner_product(course.begin(), course.end(), weights, 0.0);
        for (std::size_t t = 0; t < part.size(); ++t) part[t] += coefficient * columns[k][t];
    }
    return part;
}

double squaresOf(const UnitCourse& course) {
    return std::inner_product(course.begin(), course.end(), course.begin(), 0.0);
}

// Column by column B - G (G+ B). What remains of a column that the kept ones explain is rounding error, and set to 0.
void orthogonalise(std::vector<UnitCourse>& rejected, const std::vector<UnitCourse>& kept, int volumes) {
    std::vector<double> g;
    append(g, kept);
    const Inverse inverse = invert(g, volumes);
    for (UnitCourse& column : rejected) {
        const UnitCourse explained = explainedBy(kept, inverse, column);
        for (std::size_t t = 0; t < column.size(); ++t) column[t] -= explained[t];
        if (std::sqrt(squaresOf(column)) < kDependent) std::fill(column.begin(), column.end(), 0.0);
    }
}

} // namespace

double largestNuisanceShare(const Regressors& regressors) {
    std::vector<double> nuisance;
    append(nuisance, regressors.nuisance);
    const Inverse inverse = invert(nuisance, static_cast<int>(regressors.volumes));
    double largest = 0.0;
    for (const UnitCourse& course : regressors.kept) {
        largest = std::max(largest, squaresOf(explainedBy(regressors.nuisance, inverse, course)));
    }
    return largest;
}

Removal makeRemoval(const Regressors& regressors, DenoiseMethod method) {
    Removal removal;
    removal.volumes = static_cast<int>(regressors.volumes);
    removal.count = static_cast<int>(regressors.rejected.size() + regressors.nuisance.size());
    std::vector<UnitCourse> rejected = regressors.rejected;
    if (method == DenoiseMethod::kOrthogonalised) orthogonalise(rejected, regressors.kept, removal.volumes);
    append(removal.columns, rejected);
    append(removal.columns, regressors.nuisance);

    std::vector<double> design = removal.columns;
    if (method == DenoiseMethod::kNonAggressive) append(design, regressors.kept);
    Inverse inverse = invert(design, removal.volumes);
    inverse.rows.resize(removal.columns.size());
    removal.weights = std::move(inverse.rows);
    removal.designColumns = static_cast<int>(design.size()) / removal.volumes;
    removal.designRank = inverse.rank;
    removal.lostDegrees = rankOf(removal.columns.data(), removal.count, removal.volumes, kDependent);
    return removal;
}

} // namespace zn::headless
