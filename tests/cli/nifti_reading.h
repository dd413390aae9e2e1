#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <zlib.h>

namespace zn::test {

/// A .nii.gz in this machine's byte order, read using the offsets in the format definition, without a NIfTI library.
struct ReadNifti {
    std::array<std::int16_t, 8> dim;
    std::int16_t dataType;
    std::array<float, 8> pixdim;
    float slope;
    char units;
    std::int16_t qformCode, sformCode;
    std::array<float, 6> quaternAndOffset;
    std::array<float, 12> sform;
    std::string data;

    explicit ReadNifti(const std::filesystem::path& file) {
        const std::string bytes = inflated(file);
        if (bytes.size() < 352 || bytes.compare(344, 3, "n+1") != 0) throw std::runtime_error("not a NIfTI-1 file");
        get(bytes, 40, dim);
        get(bytes, 70, dataType);
        get(bytes, 76, pixdim);
        get(bytes, 112, slope);
        units = bytes[123];
        get(bytes, 252, qformCode);
        get(bytes, 254, sformCode);
        get(bytes, 256, quaternAndOffset);
        get(bytes, 280, sform);
        float offset = 0;
        get(bytes, 108, offset);
        data = bytes.substr(static_cast<std::size_t>(offset));
    }

    template <class Value> std::vector<Value> values() const {
        std::vector<Value> result(data.size() / sizeof(Value));
        std::memcpy(result.data(), data.data(), result.size() * sizeof(Value));
        return result;
    }

private:
    template <class Value> static void get(const std::string& bytes, std::size_t offset, Value& value) {
        std::memcpy(&value, bytes.data() + offset, sizeof value);
    }

    static std::string inflated(const std::filesystem::path& file) {
        const gzFile stream = gzopen(file.c_str(), "rb");
        if (!stream) throw std::runtime_error("cannot open " + file.string());
        std::string bytes;
        std::array<char, 65536> part;
        for (int got = 0; (got = gzread(stream, part.data(), part.size())) > 0;) {
            bytes.append(part.data(), static_cast<std::size_t>(got));
        }
        gzclose(stream);
        return bytes;
    }
};

} // namespace zn::test
