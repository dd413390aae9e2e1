#include "host/shared_library.h"

#include <stdexcept>

#include <dlfcn.h>

namespace zn::test {

SharedLibrary::SharedLibrary(const std::string& file) : handle_(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (!handle_) throw std::runtime_error(dlerror());
}

SharedLibrary::~SharedLibrary() {
    dlclose(handle_);
}

void* SharedLibrary::address(const char* name) const {
    void* found = dlsym(handle_, name);
    if (!found) throw std::runtime_error(dlerror());
    return found;
}

} // namespace zn::test
