#include "headless/text/text_file.h"

#include "headless/failure/failure.h"

#include <charconv>
#include <cmath>
#include <fstream>

namespace zn::headless {

void writeTextFile(const std::filesystem::path& file, std::string_view text) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    stream.close();
    if (stream) return;
    throw Failure(ExitStatus::kOther,
                  file.string() + " cannot be written; check the permissions and the free disk space.");
}

std::string cellText(float value) {
    if (std::isnan(value)) return "n/a";
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return {text, end};
}

} // namespace zn::headless
