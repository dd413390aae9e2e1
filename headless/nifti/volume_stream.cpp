#include "headless/nifti/volume_stream.h"

#include "headless/failure/failure.h"
#include "headless/nifti/quiet_library.h"
#include "headless/nifti/voxel_values.h"

#include <string>

namespace zn::headless {

namespace {

znzFile openedQuietly(const char* file) {
    const QuietLibrary quiet;
    return znzopen(file, "rb", nifti_is_gzfile(file));
}

} // namespace

VolumeStream::VolumeStream(const ImageHeader& header)
    : header_(header), bytesPerVolume_(header.voxels() * header.image->nbyper), file_(nullptr) {
    requireRealNumbers(header);
    const nifti_image& image = *header.image;
    file_ = openedQuietly(image.iname);
    if (znz_isnull(file_) || znzseek(file_, image.iname_offset, SEEK_SET) < 0) {
        if (!znz_isnull(file_)) znzclose(file_);
        throw Failure(ExitStatus::kInput, header.file.string() + " cannot be opened; check its permissions.");
    }
}

VolumeStream::~VolumeStream() {
    znzclose(file_);
}

void VolumeStream::read(std::byte* volume) {
    const auto wanted = static_cast<std::size_t>(bytesPerVolume_);
    if (znzread(volume, 1, wanted, file_) != wanted) {
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
    std::byte beyond{};
    const std::size_t got = znzread(&beyond, 1, 1, file_); // zlib compares the checksum only when it reaches the end
    if (got > 1) {
        throw Failure(ExitStatus::kInput,
                      header_.file.string() + " is damaged: its checksum is wrong; copy or download it again.");
    }
}

} // namespace zn::headless
