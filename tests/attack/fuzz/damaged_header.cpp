#include "attack/fuzz/damaged_header.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>

namespace zn::test {

namespace {

enum class Kind { kInteger, kReal };

// Equal fields one after another.
struct Fields {
    std::size_t offset;
    std::size_t count;
    std::size_t bytes; // of each
    Kind kind;
};

constexpr Fields kNifti1[] = {
    {0, 1, 4, Kind::kInteger},   // size of the header
    {40, 8, 2, Kind::kInteger},  // dim
    {40, 5, 2, Kind::kInteger},  // those that count, again
    {70, 2, 2, Kind::kInteger},  // datatype, bitpix
    {76, 8, 4, Kind::kReal},     // pixdim
    {108, 3, 4, Kind::kReal},    // vox_offset, scl_slope, scl_inter
    {123, 1, 1, Kind::kInteger}, // xyzt_units
    {252, 2, 2, Kind::kInteger}, // qform_code, sform_code
    {256, 18, 4, Kind::kReal},   // quaternion with offsets, sform
    {344, 4, 1, Kind::kInteger}, // magic
    {348, 1, 1, Kind::kInteger}, // whether extensions follow
    {352, 2, 4, Kind::kInteger}, // size and code of the first extension
};
constexpr Fields kNifti2[] = {
    {0, 1, 4, Kind::kInteger},   {4, 8, 1, Kind::kInteger}, {12, 2, 2, Kind::kInteger},  {16, 8, 8, Kind::kInteger},
    {16, 5, 8, Kind::kInteger},  {104, 8, 8, Kind::kReal},  {168, 1, 8, Kind::kInteger}, {176, 2, 8, Kind::kReal},
    {344, 2, 4, Kind::kInteger}, {352, 18, 8, Kind::kReal}, {500, 1, 4, Kind::kInteger}, {540, 1, 1, Kind::kInteger},
    {544, 2, 4, Kind::kInteger},
};

std::uint64_t integerBits(std::minstd_rand& random) {
    constexpr std::int64_t kValues[] = {24,
                                        32,
                                        40,
                                        48,
                                        0,
                                        1,
                                        2,
                                        3,
                                        4,
                                        7,
                                        8,
                                        16,
                                        64,
                                        127,
                                        128,
                                        255,
                                        256,
                                        512,
                                        768,
                                        1024,
                                        2000,
                                        32767,
                                        32768,
                                        65535,
                                        -1,
                                        -2,
                                        348,
                                        540,
                                        1280,
                                        1536,
                                        1792,
                                        2048,
                                        -32768,
                                        46341,
                                        2147483647,
                                        2147483648,
                                        352,
                                        544,
                                        std::numeric_limits<std::int64_t>::max(),
                                        std::numeric_limits<std::int64_t>::min(),
                                        std::int64_t{1} << 32,
                                        std::int64_t{1} << 62};
    return static_cast<std::uint64_t>(kValues[below(std::size(kValues), random)]);
}

double realValue(std::minstd_rand& random) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kValues[] = {
        0,     -0.0,  1,      -1,      2,         2000,       0.001,
        1e-30, 1e-45, 1e-310, 344,     348,       352,        540,
        544,   400,   -352,   1e6,     2e10,      3.4e38,     -1e38,
        1e38,  1e19,  1e30,   1.7e308, kInfinity, -kInfinity, std::numeric_limits<double>::quiet_NaN()};
    return kValues[below(std::size(kValues), random)];
}

std::string valueFor(const Fields& fields, std::minstd_rand& random) {
    std::uint64_t bits = integerBits(random);
    if (fields.kind == Kind::kReal && fields.bytes == 4) {
        bits = std::bit_cast<std::uint32_t>(static_cast<float>(std::clamp(realValue(random), -1e39, 1e39)));
    } else if (fields.kind == Kind::kReal) {
        bits = std::bit_cast<std::uint64_t>(realValue(random));
    }
    if (below(4, random) == 0) bits = std::uint64_t{random()} << 33 ^ std::uint64_t{random()} << 8 ^ random();
    std::string value(fields.bytes, '\0');
    std::memcpy(value.data(), &bits, value.size()); // the low bytes
    return value;
}

// The first field of a header in this machine's byte order.
std::int32_t sizeField(const std::string& bytes, bool swapped) {
    std::string first = bytes.substr(0, 4);
    if (swapped) std::reverse(first.begin(), first.end());
    std::int32_t size = 0;
    if (first.size() == 4) std::memcpy(&size, first.data(), 4);
    return size;
}

bool hasSize(const std::string& bytes, bool swapped) {
    return sizeField(bytes, swapped) == 348 || sizeField(bytes, swapped) == 540;
}

} // namespace

bool looksLikeNifti(const std::string& bytes) {
    return hasSize(bytes, false) || hasSize(bytes, true);
}

void damageHeader(std::string& image, std::minstd_rand& random) {
    if (!looksLikeNifti(image)) return;
    const bool swapped = hasSize(image, true);
    const bool second = sizeField(image, swapped) == 540;
    const Fields& fields =
        second ? kNifti2[below(std::size(kNifti2), random)] : kNifti1[below(std::size(kNifti1), random)];
    const std::size_t at = fields.offset + fields.bytes * below(fields.count, random);
    std::string value = valueFor(fields, random);
    if (swapped) std::reverse(value.begin(), value.end());
    if (at + value.size() <= image.size()) image.replace(at, value.size(), value);
}

} // namespace zn::test
