#include "headless/denoise/file_hash.h"

#include "headless/text/input_file.h"

#include <array>
#include <fstream>
#include <memory>
#include <new>
#include <vector>

#include <openssl/evp.h>

namespace zn::headless {

std::string fileHash(const std::filesystem::path& file) {
    constexpr std::size_t kPiece = 1 << 20; // bytes
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> state(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    if (!state || EVP_DigestInit_ex(state.get(), EVP_sha256(), nullptr) != 1) throw std::bad_alloc();
    std::ifstream stream(file, std::ios::binary);
    std::vector<char> piece(kPiece);
    while (stream) {
        stream.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        EVP_DigestUpdate(state.get(), piece.data(), static_cast<std::size_t>(stream.gcount()));
    }
    if (!stream.eof()) refuseFile(file, "cannot be read; check its permissions.");
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int size = 0;
    EVP_DigestFinal_ex(state.get(), digest.data(), &size);
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (unsigned int i = 0; i < size; ++i) {
        text += kDigits[digest[i] >> 4];
        text += kDigits[digest[i] & 0xfu];
    }
    return text;
}

} // namespace zn::headless
