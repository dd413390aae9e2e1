#include "host/host_module.h"

#include <array>
#include <cerrno>
#include <string_view>

#include <dlfcn.h>
#include <link.h>
#include <sys/auxv.h>
#include <unistd.h>

namespace zn {

namespace {

std::string_view baseName(std::string_view path) {
    constexpr std::string_view kReplaced = " (deleted)"; // what the kernel adds when the file was replaced or removed
    if (path.ends_with(kReplaced)) path.remove_suffix(kReplaced.size());
    const auto slash = path.rfind('/');
    std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
    if (name.ends_with(".exe")) name.remove_suffix(4);
    return name;
}

// The main program is listed without a name. It may have been started through a link, under an explicit loader, or its
// file may have been replaced since, so that the executable's path is only one of its names.
bool isMainProgramCalled(std::string_view wanted) {
    std::array<char, 4096> path{};
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    if (length > 0 && baseName({path.data(), static_cast<std::size_t>(length)}) == wanted) return true;
    const auto* started = reinterpret_cast<const char*>(getauxval(AT_EXECFN));
    if (started && baseName(started) == wanted) return true;
    return program_invocation_name && baseName(program_invocation_name) == wanted;
}

struct Search {
    std::string_view wanted;
    const void* inside = nullptr; // an address in the module, once found
};

// Runs under a lock of the dynamic linker. Functions that take another one of its locks, dladdr above all, must wait
// until it is released: a thread that loads a library meanwhile takes the two in the opposite order. Must not throw.
int visit(dl_phdr_info* info, std::size_t, void* data) {
    auto& search = *static_cast<Search*>(data);
    const std::string_view path = info->dlpi_name ? info->dlpi_name : "";
    if (!(path.empty() ? isMainProgramCalled(search.wanted) : baseName(path) == search.wanted)) return 0;
    search.inside = info->dlpi_phdr; // the program headers lie inside the module
    return 1;
}

} // namespace

std::optional<HostModule> HostModule::find() {
    for (const char* wanted : {"Tesmira", "TesmiraZN"}) {
        Search search{wanted};
        dl_iterate_phdr(visit, &search);
        Dl_info module{};
        if (search.inside && dladdr(search.inside, &module) != 0) return HostModule(module.dli_fbase);
    }
    return std::nullopt;
}

void* HostModule::function(const char* name) const {
    Dl_info module{};
    if (dladdr(base_, &module) == 0) return nullptr;
    void* handle = dlopen(module.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    if (!handle) handle = dlopen(nullptr, RTLD_LAZY); // the main program is not found by its file name
    if (!handle) return nullptr;

    // The lookup also searches the module's dependencies; only what the module itself exports counts.
    void* address = dlsym(handle, name);
    dlclose(handle);
    Dl_info owner{};
    const bool own = address && dladdr(address, &owner) != 0 && owner.dli_fbase == base_;
    return own ? address : nullptr;
}

} // namespace zn
