#include "headless/result/move_entries.h"

#include <system_error>
#include <vector>

namespace zn::headless {

namespace fs = std::filesystem;

void moveEntries(const fs::path& from, const fs::path& to, const fs::path& except) {
    std::vector<fs::path> names; // listed first: iteration over a changing folder may repeat entries
    for (const auto& entry : fs::directory_iterator(from)) {
        if (entry.path() != except) names.push_back(entry.path().filename());
    }
    std::size_t moved = 0;
    try {
        for (; moved < names.size(); ++moved) fs::rename(from / names[moved], to / names[moved]);
    } catch (const fs::filesystem_error&) {
        std::error_code ignored; // the first error is the one to report
        while (moved > 0) {
            --moved;
            fs::rename(to / names[moved], from / names[moved], ignored);
        }
        throw;
    }
}

} // namespace zn::headless
