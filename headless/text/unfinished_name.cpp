#include "headless/text/unfinished_name.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <regex>
#include <system_error>

#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zn::headless {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kLongestName = 100; // of the part before ".unfinished"

// Of the installation of the system; empty where it has none. Machines may share their name, such as localhost.
std::string machineId() {
    std::ifstream file("/etc/machine-id");
    std::string id;
    std::getline(file, id);
    return id;
}

// 8 hexadecimal digits: a 32-bit FNV-1a hash of what identifies the host and of the process table's inode.
std::string machine() {
    std::array<char, 256> text{};
    gethostname(text.data(), text.size() - 1);
    struct stat table {};
    stat("/proc/self/ns/pid", &table); // 0 without /proc
    std::uint32_t hash = 2166136261U;
    for (const char c : text.data() + ("/" + machineId()) + "/" + std::to_string(table.st_ino)) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    }
    std::snprintf(text.data(), text.size(), "%08x", hash);
    return text.data();
}

// NAME, MACHINE, PROCESS, NUMBER
const std::regex kForm(R"(\..+\.unfinished-([0-9a-f]{8})-([0-9]{1,9})-[0-9]+)");

// A process that was killed stays in the table as a zombie until its parent collects its status, which may be never:
// the first process of a container often does not. "PID (NAME) STATE ...", where NAME may contain anything.
bool isZombie(const std::string& process) {
    std::ifstream file("/proc/" + process + "/stat");
    std::string text;
    std::getline(file, text, '\0');
    const auto nameEnd = text.rfind(')');
    return nameEnd != std::string::npos && text.compare(nameEnd, 4, ") Z ") == 0;
}

bool isForeign(const std::string& name) {
    std::smatch parts;
    return std::regex_match(name, parts, kForm) && parts[1] != machine();
}

bool isLeftover(const std::string& name) {
    std::smatch parts;
    if (!std::regex_match(name, parts, kForm) || parts[1] != machine()) return false;
    const bool isListed = kill(std::stoi(parts[2]), 0) == 0 || errno != ESRCH;
    return !isListed || isZombie(parts[2]);
}

std::vector<fs::path> entriesNamed(const fs::path& folder, bool (*isWanted)(const std::string& name)) {
    std::error_code error;
    std::vector<fs::path> found;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (isWanted(entry->path().filename().string())) found.push_back(entry->path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace

std::string unfinishedName(const std::string& wanted, int number) {
    return "." + wanted.substr(0, kLongestName) + ".unfinished-" + machine() + "-" + std::to_string(getpid()) + "-" +
           std::to_string(number);
}

bool isUnfinishedName(const std::string& name) {
    return std::regex_match(name, kForm);
}

std::vector<fs::path> leftoversIn(const fs::path& folder) {
    return entriesNamed(folder, isLeftover);
}

std::vector<fs::path> foreignWorkIn(const fs::path& folder) {
    return entriesNamed(folder, isForeign);
}

} // namespace zn::headless
