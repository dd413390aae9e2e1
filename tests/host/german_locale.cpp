#include "host/german_locale.h"

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <stdexcept>
#include <string>

// The C library never frees what it makes of LOCPATH.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:argz_add_sep";
}

namespace zn::test {

#ifdef _WIN32

bool setGermanLocale() {
    return std::setlocale(LC_ALL, "German_Germany.1252") != nullptr;
}

#else

bool setGermanLocale() {
    const std::string folder = std::filesystem::current_path().string();
    const std::string command = "localedef -i de_DE -f UTF-8 '" + folder + "/de_DE.UTF-8' 2>/dev/null";
    if (std::system(command.c_str()) != 0) return false;
    setenv("LOCPATH", folder.c_str(), 1);
    try {
        std::locale::global(std::locale("de_DE.UTF-8"));
    } catch (const std::runtime_error&) {
        return false;
    }
    return true;
}

#endif

} // namespace zn::test
