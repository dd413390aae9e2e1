#include "headless/nifti/volume_stream.h"

#include "headless/failure/failure.h"
#include "headless/nifti/voxel_values.h"

#include <string>

namespace zn::headless {

VolumeStream::VolumeStream(const ImageHeader& header)
    : header_(header), bytesPerVolume_(header.voxels() * header.image->nbyper), file_(header.image->iname) {
    requireRealNumbers(header);
    if (!file_.isOpen()) {
        throw Failure(ExitStatus::kInput, header.file.string() + " cannot be opened; check its permissions.");
    }
    file_.skip(header.image->iname_offset); // read() reports a file that ends earlier
}

void VolumeStream::read(std::byte* volume) {
    const auto wanted = static_cast<std::size_t>(bytesPerVolume_);
    if (file_.read(volume, wanted) != wanted) {
        throw Failure(ExitStatus::kInput, header_.file.string() + " is truncated or damaged: volume " +
                                              std::to_string(next_ + 1) + " of " + std::to_string(header_.volumes) +
                                              " cannot be read; copy or download it again.");
    }
    const int unit = header_.image->swapsize;
    if (unit > 1 && header_.image->byteorder != nifti_short_order()) {
        nifti_swap_Nbytes(bytesPerVolume_ / unit, unit, volume);
    }
    if (++next_ == header_.volumes) finish();
}

void VolumeStream::finish() {
    file_.finish();
    if (file_.isTruncated()) {
        throw Failure(ExitStatus::kInput,
                      header_.file.string() + " is truncated: it ends before its checksum; copy or download it again.");
    }
    if (file_.isDamaged()) {
        throw Failure(ExitStatus::kInput,
                      header_.file.string() + " is damaged: its checksum is wrong; copy or download it again.");
    }
}

} // namespace zn::headless
