// How the fuzzer changes an input: in its own way, or, so that damaged values reach the code behind the parsers, by a
// field of a header, by a value of a JSON text, and inside a compressed image.

#include "attack/fuzz/damaged_header.h"
#include "attack/fuzz/damaged_json.h"
#include "attack/fuzz/input.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include <zlib.h>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

using zn::test::below;

constexpr std::size_t kLongestInflated = 1 << 16;

std::string compressed(const std::string& bytes) {
    z_stream stream{};
    deflateInit2(&stream, 1, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY);
    std::string result(bytes.size() + 1024, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    deflate(&stream, Z_FINISH);
    result.resize(result.size() - stream.avail_out);
    deflateEnd(&stream);
    return result;
}

std::string changedBytes(std::string bytes, std::size_t maxSize) {
    const std::size_t size = std::min(bytes.size(), maxSize);
    bytes.resize(maxSize);
    bytes.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(bytes.data()), size, maxSize));
    return bytes;
}

std::string changed(std::string bytes, std::size_t maxSize, std::minstd_rand& random) {
    const bool inside = below(4, random) != 0;
    if (inside && bytes.starts_with("\x1f\x8b")) {
        const std::string plain =
            zn::test::textInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        if (plain.size() <= kLongestInflated) return compressed(changed(plain, kLongestInflated, random));
    }
    if (inside && zn::test::looksLikeNifti(bytes)) {
        zn::test::damageHeader(bytes, random);
        return bytes;
    }
    if (inside && (bytes.starts_with('{') || bytes.starts_with('['))) {
        const std::string json = zn::test::damagedJson(bytes, random);
        if (!json.empty() && json.size() <= maxSize) return json;
    }
    return changedBytes(bytes, maxSize);
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    std::minstd_rand random(seed);
    const std::string before(reinterpret_cast<const char*>(data), size);
    std::string after = changed(before, maxSize, random);
    if (after.size() > maxSize) after = changedBytes(before, maxSize);
    std::copy(after.begin(), after.end(), data);
    return after.size();
}
