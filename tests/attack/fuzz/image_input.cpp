#include "attack/fuzz/image_input.h"

#include "attack/fuzz/input.h"

#include <algorithm>

namespace zn::test {

namespace {

constexpr std::size_t kHeader = 348; // bytes in NIfTI-1

bool saysDataFollow(std::string_view bytes) {
    for (const std::size_t magic : {std::size_t{344}, std::size_t{4}}) { // in NIfTI-1 and NIfTI-2
        if (bytes.size() > magic && bytes.substr(magic).starts_with("n+")) return true;
    }
    return false;
}

} // namespace

std::filesystem::path imageInput(std::string_view bytes) {
    if (bytes.starts_with("\x1f\x8b")) return inputFile("compressed.nii.gz", bytes);
    if (saysDataFollow(bytes)) return inputFile("plain.nii", bytes);
    inputFile("pair.img", bytes.substr(std::min(kHeader, bytes.size())));
    return inputFile("pair.hdr", bytes);
}

} // namespace zn::test
