#include "headless/nifti/same_grid.h"

#include "headless/failure/failure.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace zn::headless {

namespace {

constexpr double kTolerance = 0.01; // of a voxel edge

double smallestEdge(const Affine& affine) {
    double smallest = INFINITY;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        smallest = std::min(smallest, std::hypot(affine[0][axis], affine[1][axis], affine[2][axis]));
    }
    return smallest;
}

double cornerDistance(const ImageHeader& a, const ImageHeader& b, unsigned corner) {
    double squares = 0.0;
    for (std::size_t row = 0; row < 3; ++row) {
        double difference = a.affine[row][3] - b.affine[row][3];
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const int index = (corner >> axis & 1U) != 0 ? a.size[axis] - 1 : 0;
            difference += (a.affine[row][axis] - b.affine[row][axis]) * index;
        }
        squares += difference * difference;
    }
    return std::sqrt(squares);
}

bool voxelsCoincide(const ImageHeader& a, const ImageHeader& b) {
    const double tolerance = kTolerance * smallestEdge(b.affine);
    for (unsigned corner = 0; corner < 8; ++corner) {
        if (!(cornerDistance(a, b, corner) <= tolerance)) return false; // written so that NaN counts as different
    }
    return true;
}

std::string affineText(const Affine& affine) {
    std::string text;
    for (const auto& row : affine) {
        char line[128];
        std::snprintf(line, sizeof line, "%s%.4g %.4g %.4g %.5g", text.empty() ? "[" : "; ", row[0], row[1], row[2],
                      row[3]);
        text += line;
    }
    return text + "]";
}

std::string placeText(const ImageHeader& header) {
    return header.oriented ? " with affine " + affineText(header.affine) : " without orientation";
}

} // namespace

void requireSameGrid(const std::string& what, const ImageHeader& image, const ImageHeader& reference) {
    const bool sameSize = image.size == reference.size;
    if (sameSize && voxelsCoincide(image, reference)) return;
    throw Failure(ExitStatus::kInput, "the " + what + " " + image.file.string() + " is " + sizeText(image) + " voxels" +
                                          placeText(image) + ", " + reference.file.string() + " is " +
                                          sizeText(reference) + placeText(reference) + "; resample the " + what +
                                          " to that grid.");
}

} // namespace zn::headless
