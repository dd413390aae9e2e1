#include "output/file_beside_vtc.h"

#include "numeric/nrerror.h"

#include <string_view>

namespace zn {

std::string fileBesideVtc(const char* vtcFile, const char* ending) {
    constexpr std::size_t kExtension = 4;
    constexpr std::size_t kLongestStem = 255;

    const std::string_view name(vtcFile);
    const std::string_view stem = name.size() > kExtension ? name.substr(0, name.size() - kExtension) : "";
    if (stem.size() > kLongestStem) nrerror("file name too long");
    return std::string(stem) + ending;
}

} // namespace zn
