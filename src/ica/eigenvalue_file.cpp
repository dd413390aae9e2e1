#include "ica/eigenvalue_file.h"

#include <bit>
#include <fstream>

namespace zn {

static_assert(std::endian::native == std::endian::little, "the file holds doubles as this machine does");

void writeEigenvalueFile(const char* fileName, const double* d, const double* const* v, int n) {
    std::ofstream file(fileName, std::ios::binary);
    const auto bytes = static_cast<std::streamsize>(sizeof(double)) * n;
    file.write(reinterpret_cast<const char*>(&d[1]), bytes);
    for (int row = 1; row <= n; ++row) file.write(reinterpret_cast<const char*>(&v[row][1]), bytes);
}

} // namespace zn
