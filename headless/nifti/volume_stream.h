#pragma once

#include "headless/compression/inflating_file.h"
#include "headless/nifti/image_header.h"

#include <cstddef>

namespace zn::headless {

/// Reads the volumes of an image one after another, each byte of the file once. Stored values are returned in this
/// machine's byte order and otherwise unchanged, including NaN.
class VolumeStream {
public:
    /// Throws Failure (kInput) when the image data cannot be opened or are not real numbers.
    explicit VolumeStream(const ImageHeader& header);

    std::int64_t bytesPerVolume() const { return bytesPerVolume_; }

    /// The next volume, x fastest, into bytesPerVolume() bytes. Throws Failure (kInput) naming the volume at which a
    /// truncated or damaged file ends. After the last volume of a compressed file its checksum is verified.
    void read(std::byte* volume);

private:
    void finish();

    const ImageHeader& header_;
    std::int64_t bytesPerVolume_;
    InflatingFile file_;
    int next_ = 0; // volume, from 0
};

} // namespace zn::headless
