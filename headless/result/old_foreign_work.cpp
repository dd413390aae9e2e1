#include "headless/result/old_foreign_work.h"

#include "headless/result/output_place.h"
#include "headless/text/unfinished_name.h"

#include <chrono>
#include <system_error>
#include <vector>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::hours kOld(24);
constexpr std::size_t kMostNamed = 3;

// False also when the time is unknown.
bool isOld(const fs::path& path) {
    std::error_code error;
    const auto written = fs::last_write_time(path, error);
    return !error && fs::file_time_type::clock::now() - written > kOld;
}

bool allIsOld(const fs::path& work) {
    std::error_code error;
    if (!isOld(work)) return false;
    if (!fs::is_directory(work, error)) return true;
    for (fs::recursive_directory_iterator entry(work, error), end; !error && entry != end; entry.increment(error)) {
        if (!isOld(entry->path())) return false;
    }
    return !error;
}

// ".WANTED.unfinished-", WANTED shortened where it is in such names.
std::string beginningFor(const std::string& wanted) {
    constexpr char kEnd[] = ".unfinished-";
    const std::string name = unfinishedName(wanted, 0);
    return name.substr(0, name.rfind(kEnd) + sizeof kEnd - 1);
}

} // namespace

std::string noteOnOldForeignWork(const fs::path& folder, const std::string& wanted) {
    const std::string beginning = wanted.empty() ? "." : beginningFor(wanted);
    std::vector<std::string> names;
    for (const fs::path& work : foreignWorkIn(folder)) {
        std::string name = work.filename().string();
        if (name.starts_with(beginning) && allIsOld(work)) names.push_back(std::move(name));
    }
    if (names.empty()) return "";
    std::string text = folder.string() + " holds ";
    for (std::size_t i = 0; i < names.size() && i < kMostNamed; ++i) text += (i > 0 ? ", " : "") + names[i];
    if (names.size() > kMostNamed) text += " and " + std::to_string(names.size() - kMostNamed) + " more";
    return text + ", which another machine or container began and has not changed for a day; remove " +
           (names.size() == 1 ? "it if that process was killed." : "them if those processes were killed.");
}

std::string noteOnOldForeignWorkFor(const fs::path& out) {
    const fs::path place = outputPlace(out);
    return noteOnOldForeignWork(place.parent_path(), place.filename().string());
}

} // namespace zn::headless
