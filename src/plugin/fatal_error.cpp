#include "plugin/fatal_error.h"

#include <array>
#include <cstdio>
#include <string_view>

namespace zn {

Stop stopAfterFatalError(BusyCursor& cursor, const char* text) {
    if (std::string_view(text).starts_with("allocation failure")) return stopWithMemoryFull(cursor);
    std::array<char, 512> line{}; // not on the heap, which may be exhausted
    std::snprintf(line.data(), line.size(), "// Plugin> %s. Exiting plugin.", text);
    return stopWithMessage(cursor, text, line.data(), false);
}

} // namespace zn
