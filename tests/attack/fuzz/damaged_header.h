#pragma once

#include <cstddef>
#include <random>
#include <string>

namespace zn::test {

/// A number from 0 to count - 1, the same with every standard library.
inline std::size_t below(std::size_t count, std::minstd_rand& random) {
    return static_cast<std::size_t>(random()) % count;
}

/// Whether bytes begin like a NIfTI-1 or NIfTI-2 header in either byte order.
bool looksLikeNifti(const std::string& bytes);

/// Sets one field of a NIfTI-1 or NIfTI-2 header, chosen at random, to a value that is extreme for it (0, the limits of
/// its type and of its meaning, infinity, NaN) or random. Does nothing to other bytes.
void damageHeader(std::string& image, std::minstd_rand& random);

} // namespace zn::test
