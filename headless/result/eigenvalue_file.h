#pragma once

#include <filesystem>
#include <vector>

namespace zn::headless {

/// The eigenvalues, in falling order, from the plug-in's eigenvalue file: `volumes` doubles, little-endian, followed by
/// the eigenvectors. Empty when the file is missing or of another length than 8 * (T + T * T) bytes.
std::vector<double> readEigenvalues(const std::filesystem::path& file, int volumes);

} // namespace zn::headless
