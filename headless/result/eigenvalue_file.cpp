#include "headless/result/eigenvalue_file.h"

#include <fstream>
#include <system_error>

namespace zn::headless {

std::vector<double> readEigenvalues(const std::filesystem::path& file, int volumes) {
    const auto count = static_cast<std::uintmax_t>(volumes);
    std::error_code error;
    if (std::filesystem::file_size(file, error) != sizeof(double) * (count + count * count) || error) return {};
    std::vector<double> values(count);
    std::ifstream stream(file, std::ios::binary);
    stream.read(reinterpret_cast<char*>(values.data()), static_cast<std::streamsize>(sizeof(double) * count));
    if (!stream) values.clear();
    return values;
}

} // namespace zn::headless
