#include "plugin/fatal_error.h"

#include <string>
#include <string_view>

namespace zn {

Stop stopAfterFatalError(BusyCursor& cursor, const char* text) {
    if (std::string_view(text).starts_with("allocation failure")) return stopWithMemoryFull(cursor);
    const std::string line = std::string("// Plugin> ") + text + ". Exiting plugin.";
    return stopWithMessage(cursor, text, line.c_str(), false);
}

} // namespace zn
