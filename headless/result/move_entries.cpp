#include "headless/result/move_entries.h"

#include "headless/text/take_free_name.h"

#include <system_error>

namespace zn::headless {

namespace fs = std::filesystem;

std::vector<fs::path> moveEntries(const fs::path& from, const fs::path& to, const fs::path& except) {
    std::vector<fs::path> names; // listed first: iteration over a changing folder may repeat entries
    for (const auto& entry : fs::directory_iterator(from)) {
        if (entry.path() != except) names.push_back(entry.path().filename());
    }
    moveNamed(names, from, to);
    return names;
}

void moveNamed(const std::vector<fs::path>& names, const fs::path& from, const fs::path& to) {
    std::size_t moved = 0;
    try {
        for (; moved < names.size(); ++moved) {
            const std::error_code error = takeFreeName(from / names[moved], to / names[moved]);
            if (error) throw fs::filesystem_error("rename", from / names[moved], to / names[moved], error);
        }
    } catch (const std::exception&) {
        try {
            for (; moved > 0; --moved) fs::rename(to / names[moved - 1], from / names[moved - 1]);
        } catch (const std::exception&) {
            throw HalfMoved();
        }
        throw; // the first error is the one to report
    }
}

} // namespace zn::headless
