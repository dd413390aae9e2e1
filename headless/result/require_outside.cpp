#include "headless/result/require_outside.h"

#include "headless/failure/failure.h"

#include <algorithm>
#include <system_error>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

bool isBelow(const fs::path& folder, const fs::path& file) {
    return std::mismatch(folder.begin(), folder.end(), file.begin(), file.end()).first == folder.end();
}

bool liesIn(const fs::path& folder, const fs::path& file) {
    std::error_code error;
    const fs::path there = fs::canonical(folder, error);
    if (error) return false; // a folder that does not exist yet
    const fs::path target = fs::canonical(file, error);
    if (!error && isBelow(there, target)) return true;
    const fs::path beside = fs::canonical(fs::absolute(file).parent_path(), error);
    return !error && isBelow(there, beside);
}

} // namespace

void requireOutside(const fs::path& folder, const std::vector<fs::path>& inputs) {
    for (const fs::path& file : inputs) {
        if (file.empty() || !liesIn(folder, file)) continue;
        throw Failure(ExitStatus::kInput, file.string() + " lies in " + folder.string() +
                                              ", which --force would replace; name another folder with --out.");
    }
}

} // namespace zn::headless
