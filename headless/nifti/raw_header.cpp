#include "headless/nifti/raw_header.h"

#include "headless/nifti/quiet_library.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include <nifti2_io.h>

namespace zn::headless {

namespace {

template <class Header> RawHeader fieldsOf(Header& header) {
    const bool otherByteOrder = header.dim[0] < 1 || header.dim[0] > 7; // the number of axes shows
    if (otherByteOrder) {
        nifti_swap_Nbytes(8, sizeof header.dim[0], header.dim);
        nifti_swap_Nbytes(8, sizeof header.pixdim[0], header.pixdim);
    }
    RawHeader raw;
    std::copy(std::begin(header.dim), std::end(header.dim), raw.dim.begin());
    std::copy(std::begin(header.pixdim), std::end(header.pixdim), raw.pixdim.begin());
    return raw;
}

} // namespace

std::optional<RawHeader> readRawHeader(const std::filesystem::path& file) {
    const QuietLibrary quiet;
    int version = 0;
    constexpr int kUnchecked = 0;
    const std::unique_ptr<void, decltype(&std::free)> header(nifti_read_header(file.c_str(), &version, kUnchecked),
                                                             std::free);
    if (!header) return std::nullopt;
    if (version == 2) return fieldsOf(*static_cast<nifti_2_header*>(header.get()));
    return fieldsOf(*static_cast<nifti_1_header*>(header.get()));
}

} // namespace zn::headless
