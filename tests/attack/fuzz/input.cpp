#include "attack/fuzz/input.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>
#include <zlib.h>

namespace zn::test {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kLongestText = std::size_t{1} << 22;

class OwnFolder {
public:
    OwnFolder() : path_(fs::temp_directory_path() / ("znica-fuzz-" + std::to_string(getpid()))) {
        fs::create_directories(path_);
    }
    ~OwnFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;

    fs::path operator/(const std::string& name) const { return path_ / name; }

private:
    fs::path path_;
};

const OwnFolder& ownFolder() {
    static const OwnFolder folder;
    return folder;
}

} // namespace

std::string textInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    if (!bytes.starts_with("\x1f\x8b")) return bytes;
    z_stream stream{};
    inflateInit2(&stream, 15 + 16); // the largest window, in a gzip wrapper
    std::string text(kLongestText, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(text.data());
    stream.avail_out = static_cast<uInt>(text.size());
    inflate(&stream, Z_FINISH);
    text.resize(text.size() - stream.avail_out);
    inflateEnd(&stream);
    return text;
}

fs::path inputFile(const std::string& name, std::string_view bytes) {
    const fs::path file = ownFolder() / name;
    const auto opened = [&file] { return open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600); };
    int descriptor = opened();
    if (descriptor < 0) {
        fs::create_directories(file.parent_path());
        descriptor = opened();
    }
    const bool written = write(descriptor, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
    close(descriptor);
    if (!written) throw std::runtime_error("cannot write " + file.string());
    return file;
}

void removeInputFile(const std::string& name) {
    unlink((ownFolder() / name).c_str());
}

std::vector<std::string> piecesOf(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    while (true) {
        const std::size_t end = text.find(separator);
        pieces.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) return pieces;
        text.remove_prefix(end + 1);
    }
}

void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "not true: %s\n", what);
    std::abort();
}

} // namespace zn::test
