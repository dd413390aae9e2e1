#include "headless/text/input_file.h"

#include "headless/failure/failure.h"

#include <fstream>
#include <sstream>
#include <system_error>

#include <unistd.h>

namespace zn::headless {

namespace fs = std::filesystem;

void refuseFile(const fs::path& file, const std::string& why) {
    throw Failure(ExitStatus::kInput, file.string() + " " + why);
}

void requireReadable(const fs::path& file) {
    std::error_code error;
    const auto status = fs::status(file, error);
    if (!fs::exists(status) && fs::is_symlink(fs::symlink_status(file, error))) {
        refuseFile(file, "is a link to a file that does not exist; fetch that file first.");
    }
    if (!fs::exists(status)) refuseFile(file, "does not exist; check the name and the folder.");
    if (fs::is_directory(status)) refuseFile(file, "is a folder; name a file.");
    if (access(file.c_str(), R_OK) != 0) refuseFile(file, "cannot be read; check its permissions.");
}

std::string readWholeFile(const fs::path& file) {
    requireReadable(file);
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    if (stream.is_open() && stream.peek() == std::ifstream::traits_type::eof() && !stream.bad()) return "";
    if (!stream.is_open() || !(text << stream.rdbuf())) refuseFile(file, "cannot be read; check its disk.");
    return text.str();
}

} // namespace zn::headless
