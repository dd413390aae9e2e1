#pragma once

#include "ica/jacobi/rotation_kernels.h"

#include <cstddef>
#include <vector>

namespace zn {

/// Rotates one pair of elements.
inline void rotate(const PlaneRotation& rotation, double& x, double& y) {
    const double g = x;
    const double h = y;
    x = g - rotation.s * (h + g * rotation.tau);
    y = h + rotation.s * (g - h * rotation.tau);
}

/// The rotations of one sweep over the planes (p, q), p < q, in the order in which they were made.
class SweepRotations {
public:
    struct Range {
        const PlaneRotation* first;
        const PlaneRotation* last; // past the last one
        const PlaneRotation* begin() const { return first; }
        const PlaneRotation* end() const { return last; }
    };

    explicit SweepRotations(int n) : starts_(static_cast<std::size_t>(n) + 2) {
        rotations_.reserve(static_cast<std::size_t>(n) * static_cast<std::size_t>(n) / 2);
    }

    void clear() { rotations_.clear(); }
    void beginPass(int p) { starts_[static_cast<std::size_t>(p)] = rotations_.size(); }
    void add(const PlaneRotation& rotation) { rotations_.push_back(rotation); }
    void endPass(int p) { starts_[static_cast<std::size_t>(p) + 1] = rotations_.size(); }

    /// Rotations of the planes (p, .), q ascending. Valid until the next one is added.
    Range pass(int p) const {
        const auto index = static_cast<std::size_t>(p);
        return {rotations_.data() + starts_[index], rotations_.data() + starts_[index + 1]};
    }
    std::size_t count() const { return rotations_.size(); }

private:
    std::vector<PlaneRotation> rotations_;
    std::vector<std::size_t> starts_; // by p
};

} // namespace zn
