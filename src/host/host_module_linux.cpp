#include "host/host_module.h"

#include <array>
#include <string>
#include <string_view>

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

namespace zn {

namespace {

// The main program is listed without a name; the path of its executable stands in.
std::string pathOfMainProgram() {
    std::array<char, 4096> path{};
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    return length > 0 ? std::string(path.data(), static_cast<std::size_t>(length)) : std::string();
}

std::string_view baseName(std::string_view path) {
    const auto slash = path.rfind('/');
    std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
    if (name.ends_with(".exe")) name.remove_suffix(4);
    return name;
}

struct Search {
    std::string_view wanted;
    void* base = nullptr;
};

// The program headers lie inside the module, so dladdr finds its base from their address.
void* baseOf(const dl_phdr_info& info) {
    Dl_info module{};
    return dladdr(info.dlpi_phdr, &module) != 0 ? module.dli_fbase : nullptr;
}

int visit(dl_phdr_info* info, std::size_t, void* data) {
    auto& search = *static_cast<Search*>(data);
    const bool unnamed = !info->dlpi_name || info->dlpi_name[0] == '\0';
    const std::string path = unnamed ? pathOfMainProgram() : std::string(info->dlpi_name);
    if (baseName(path) != search.wanted) return 0;
    search.base = baseOf(*info);
    return search.base != nullptr ? 1 : 0;
}

} // namespace

std::optional<HostModule> HostModule::find() {
    for (const char* wanted : {"Tesmira", "TesmiraZN"}) {
        Search search{wanted};
        dl_iterate_phdr(visit, &search);
        if (search.base) return HostModule(search.base);
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
