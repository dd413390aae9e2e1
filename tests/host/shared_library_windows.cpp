#include "host/shared_library.h"

#include <filesystem>
#include <stdexcept>

#include <windows.h>

namespace zn::test {

SharedLibrary::SharedLibrary(const std::string& file)
    : handle_(LoadLibraryW(std::filesystem::path(file).make_preferred().c_str())) {
    if (!handle_) throw std::runtime_error(file + ": Windows error " + std::to_string(GetLastError()));
}

SharedLibrary::~SharedLibrary() {
    FreeLibrary(static_cast<HMODULE>(handle_));
}

void* SharedLibrary::address(const char* name) const {
    void* found = reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
    if (!found) throw std::runtime_error(std::string(name) + " is not exported");
    return found;
}

} // namespace zn::test
