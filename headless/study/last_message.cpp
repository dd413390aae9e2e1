#include "headless/study/last_message.h"

#include <fstream>

namespace zn::headless {

std::string lastMessage(const std::filesystem::path& log) {
    constexpr char kBegin[] = "znica: ";
    std::ifstream lines(log, std::ios::binary);
    std::string message;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(kBegin)) message = line.substr(sizeof kBegin - 1);
    }
    return message;
}

} // namespace zn::headless
