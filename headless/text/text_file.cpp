#include "headless/text/text_file.h"

#include "headless/failure/failure.h"
#include "headless/text/take_free_name.h"
#include "headless/text/unfinished_name.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <fstream>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace zn::headless {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void failToWrite(const fs::path& file) {
    throw Failure(ExitStatus::kOther,
                  file.string() + " cannot be written; check the permissions and the free disk space.");
}

void removeLeftoverFiles(const fs::path& folder) {
    std::error_code error;
    for (const fs::path& leftover : leftoversIn(folder)) {
        if (fs::is_regular_file(fs::symlink_status(leftover, error))) fs::remove(leftover, error);
    }
}

// An empty file under a name that did not exist.
fs::path newFileBeside(const fs::path& file) {
    for (int number = 0;; ++number) {
        fs::path path = file.parent_path() / unfinishedName(file.filename().string(), number);
        const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
        if (descriptor < 0 && errno != EEXIST) failToWrite(file);
        if (descriptor < 0) continue;
        close(descriptor);
        return path;
    }
}

std::error_code takeName(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::rename(from, to, error);
    return error;
}

// Writes the text, then lets it take its name. False when that name must be free and is not.
bool writeUnderHiddenName(const fs::path& file, std::string_view text, decltype(&takeName) take) {
    removeLeftoverFiles(fs::absolute(file).parent_path());
    const fs::path unfinished = newFileBeside(file);
    std::error_code error;
    try {
        writeTextFile(unfinished, text);
        error = take(unfinished, file);
    } catch (const Failure&) { // it gives the hidden name, which means nothing to the user
        error = std::make_error_code(std::errc::io_error);
    }
    if (!error) return true;
    std::error_code ignored;
    fs::remove(unfinished, ignored);
    if (error == std::errc::file_exists) return false;
    failToWrite(file);
}

} // namespace

void writeTextFile(const fs::path& file, std::string_view text) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    stream.close();
    if (!stream) failToWrite(file);
}

void replaceTextFile(const fs::path& file, std::string_view text) {
    writeUnderHiddenName(file, text, takeName);
}

bool createTextFile(const fs::path& file, std::string_view text) {
    return writeUnderHiddenName(file, text, takeFreeName);
}

std::string cellText(float value) {
    if (std::isnan(value)) return "n/a";
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return {text, end};
}

std::string cellText(std::string name) {
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::iscntrl(c) != 0; }, ' ');
    return name;
}

} // namespace zn::headless
