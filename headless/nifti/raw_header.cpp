#include "headless/nifti/raw_header.h"

#include "headless/compression/inflating_file.h"
#include "headless/nifti/quiet_library.h"
#include "headless/text/input_file.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include <nifti2_io.h>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kSize1 = 348; // of a NIfTI-1 header, as its first field says
constexpr std::size_t kSize2 = 540; // the same for NIfTI-2

[[noreturn]] void refuseUnknown(const fs::path& file) {
    refuseFile(file, "is not a NIfTI image (.nii, .nii.gz, or .hdr with .img), or is damaged.");
}

[[noreturn]] void refuseDamaged(const fs::path& file, const std::string& why) {
    refuseFile(file, "has a damaged header: " + why + "; export or copy the image again.");
}

// The first bytes of the file that holds the header, inflated if need be; fewer than asked for at its end.
std::string firstBytes(const fs::path& file) {
    const QuietLibrary quiet;
    const std::unique_ptr<char, decltype(&std::free)> name(nifti_findhdrname(file.c_str()), std::free);
    if (!name) return "";
    InflatingFile stream(name.get());
    std::string bytes(kSize2, '\0');
    bytes.resize(stream.read(reinterpret_cast<std::byte*>(bytes.data()), bytes.size()));
    return bytes;
}

// Reads numbers at byte offsets, in the byte order of the file.
class Fields {
public:
    Fields(const std::string& bytes, bool swapped) : bytes_(bytes), swapped_(swapped) {}

    template <class Stored> Stored at(std::size_t offset) const {
        std::array<char, sizeof(Stored)> stored{};
        std::copy_n(bytes_.data() + offset, stored.size(), stored.begin());
        if (swapped_) std::reverse(stored.begin(), stored.end());
        Stored value{};
        std::memcpy(&value, stored.data(), sizeof value);
        return value;
    }

private:
    const std::string& bytes_;
    bool swapped_;
};

// What is read of a header, with the offsets that the fields have in its version.
struct Layout {
    std::size_t size;
    std::size_t dim, dataType, pixdim, dataOffset, qformCode, quaternion, sformCode, sform, magic;
};
constexpr Layout kNifti1 = {kSize1, 40, 70, 76, 108, 252, 256, 254, 280, 344};
constexpr Layout kNifti2 = {kSize2, 16, 12, 104, 168, 344, 352, 348, 400, 4};

template <class Integer, class Real, class Offset, class Code>
void readAndCheck(const fs::path& file, const Fields& fields, const Layout& layout, RawHeader& raw) {
    const auto reals = [&](std::size_t offset, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            if (!std::isfinite(fields.at<Real>(offset + i * sizeof(Real)))) return false;
        }
        return true;
    };
    for (std::size_t i = 0; i < 8; ++i) {
        raw.dim[i] = fields.at<Integer>(layout.dim + i * sizeof(Integer));
        raw.pixdim[i] = static_cast<double>(fields.at<Real>(layout.pixdim + i * sizeof(Real)));
    }
    if (raw.dim[0] < 1 || raw.dim[0] > 7) {
        refuseDamaged(file, "it has " + std::to_string(raw.dim[0]) + " axes instead of 1 to 7");
    }
    for (std::size_t axis = 1; axis <= static_cast<std::size_t>(raw.dim[0]); ++axis) {
        if (raw.dim[axis] >= 1) continue;
        refuseDamaged(file, "its axis " + std::to_string(axis) + " has " + std::to_string(raw.dim[axis]) + " elements");
    }
    const auto dataType = fields.at<std::int16_t>(layout.dataType);
    if (nifti_is_valid_datatype(dataType) == 0) {
        refuseDamaged(file, "there is no data type " + std::to_string(dataType));
    }
    const bool finite = reals(layout.pixdim, 4) && // sign of the third axis and voxel sizes
                        (fields.at<Code>(layout.qformCode) <= 0 || reals(layout.quaternion, 6)) &&
                        (fields.at<Code>(layout.sformCode) <= 0 || reals(layout.sform, 12));
    if (!finite) refuseDamaged(file, "its affine or its voxel sizes hold values that are not finite");

    const auto offset = static_cast<double>(fields.at<Offset>(layout.dataOffset));
    if (!(offset >= 0.0 && offset <= static_cast<double>(std::numeric_limits<std::int32_t>::max()))) {
        refuseDamaged(file, "its data cannot begin at byte " + std::to_string(offset));
    }
    raw.dataOffset = static_cast<std::int64_t>(offset);
}

} // namespace

RawHeader readRawHeader(const fs::path& file) {
    const std::string bytes = firstBytes(file);
    for (const Layout& layout : {kNifti1, kNifti2}) {
        for (const bool swapped : {false, true}) {
            const Fields fields(bytes, swapped);
            if (bytes.size() < layout.size || fields.at<std::int32_t>(0) != static_cast<std::int32_t>(layout.size)) {
                continue;
            }
            RawHeader raw;
            raw.separateData = bytes[layout.magic] != 'n' || bytes[layout.magic + 1] != '+';
            if (layout.size == kSize1) {
                readAndCheck<std::int16_t, float, float, std::int16_t>(file, fields, layout, raw);
            } else {
                readAndCheck<std::int64_t, double, std::int64_t, std::int32_t>(file, fields, layout, raw);
            }
            return raw;
        }
    }
    refuseUnknown(file);
}

} // namespace zn::headless
