#include "host/host_module.h"

#include <windows.h>

namespace zn {

std::optional<HostModule> HostModule::find() {
    for (const char* wanted : {"Tesmira.exe", "TesmiraZN.exe"}) {
        if (HMODULE module = GetModuleHandleA(wanted)) return HostModule(module);
    }
    return std::nullopt;
}

void* HostModule::function(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(base_), name));
}

} // namespace zn
