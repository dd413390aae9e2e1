#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

namespace zn::test {

/// A NIfTI-1 file (.nii) assembled byte by byte from the offsets in the format definition, without any library.
struct NiftiBytes {
    std::array<std::int16_t, 8> dim = {4, 6, 5, 4, 12, 1, 1, 1};
    std::int16_t dataType = 4; ///< 2 uint8, 4 int16, 8 int32, 16 float32, 64 float64, 256 int8, 512 uint16, 768 uint32
    std::int16_t bitsPerVoxel = 16;
    std::array<float, 8> pixdim = {1, 3, 3, 3, 2, 1, 1, 1};
    float slope = 0.0f;
    float inter = 0.0f;
    char units = 2 | 8; ///< millimetres and seconds
    std::int16_t qformCode = 0;
    std::int16_t sformCode = 1;
    std::array<float, 6> quaternAndOffset{};
    std::array<std::array<float, 4>, 3> sform = {{{3, 0, 0, -9}, {0, 3, 0, -7.5f}, {0, 0, 3, -6}}};
    std::string extension; ///< of the header: a multiple of 16 bytes, of which 8 are its size and its code
    bool bigEndian = false;
    std::string data; ///< voxel bytes in the file's byte order

    template <class Value> void append(Value value) {
        std::array<char, sizeof(Value)> bytes;
        std::memcpy(bytes.data(), &value, sizeof(Value));
        if (bigEndian) std::reverse(bytes.begin(), bytes.end());
        data.append(bytes.data(), bytes.size());
    }

    std::string bytes() const {
        std::string file(352, '\0');
        put(file, 0, std::int32_t{348});
        for (std::size_t i = 0; i < 8; ++i) put(file, 40 + 2 * i, dim[i]);
        put(file, 70, dataType);
        put(file, 72, bitsPerVoxel);
        for (std::size_t i = 0; i < 8; ++i) put(file, 76 + 4 * i, pixdim[i]);
        put(file, 108, static_cast<float>(352 + extension.size()));
        put(file, 112, slope);
        put(file, 116, inter);
        file[123] = units;
        put(file, 252, qformCode);
        put(file, 254, sformCode);
        for (std::size_t i = 0; i < 6; ++i) put(file, 256 + 4 * i, quaternAndOffset[i]);
        for (std::size_t row = 0; row < 3; ++row) {
            for (std::size_t column = 0; column < 4; ++column)
                put(file, 280 + 16 * row + 4 * column, sform[row][column]);
        }
        file.replace(344, 4, std::string("n+1\0", 4));
        file[348] = extension.empty() ? 0 : 1;
        return file + extension + data;
    }

private:
    template <class Value> void put(std::string& file, std::size_t offset, Value value) const {
        std::array<char, sizeof(Value)> bytes;
        std::memcpy(bytes.data(), &value, sizeof(Value));
        if (bigEndian) std::reverse(bytes.begin(), bytes.end());
        file.replace(offset, sizeof(Value), bytes.data(), sizeof(Value));
    }
};

/// Unproblematic int16 data: deterministic noise in every voxel.
inline NiftiBytes plainSeries(int volumes = 12) {
    NiftiBytes image;
    image.dim[4] = static_cast<std::int16_t>(volumes);
    std::uint32_t state = 1;
    for (int i = 0; i < 6 * 5 * 4 * volumes; ++i) {
        state = state * 1664525U + 1013904223U; // Numerical values of a plain linear congruential generator
        image.append(static_cast<std::int16_t>(500 + (state >> 24)));
    }
    return image;
}

/// A 3D uint8 image of ones on the same grid.
inline NiftiBytes plainMask() {
    NiftiBytes image;
    image.dim = {3, 6, 5, 4, 1, 1, 1, 1};
    image.dataType = 2;
    image.bitsPerVoxel = 8;
    image.data = std::string(6 * 5 * 4, '\1');
    return image;
}

} // namespace zn::test
