#include "host/host_module.h"

#include "host/nrvmp_records.h"
#include "host/voi_records.h"
#include "host/vtc_header.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace zn {

namespace {

extern "C" {
#define ZN(result, name, parameters) result name parameters;
#define ZN_UNUSED(name) void* name();
#include "host/host_functions.def"
#include "host/host_matrix_products.def"
#include "host/host_separation.def"
#undef ZN_UNUSED
#undef ZN
}

struct NamedFunction {
    std::string_view name;
    void* address;
};

// WebAssembly has no names at run time: the host is linked in, and this table stands for its exports.
NamedFunction functions[] = {
#define ZN(result, name, parameters) {#name, reinterpret_cast<void*>(&name)},
#define ZN_UNUSED(name) ZN(void*, name, ())
#include "host/host_functions.def"
#include "host/host_matrix_products.def"
#include "host/host_separation.def"
#undef ZN_UNUSED
#undef ZN
};

} // namespace

std::optional<HostModule> HostModule::find() {
    return HostModule(functions);
}

void* HostModule::function(const char* name) const {
    const auto* first = static_cast<const NamedFunction*>(base_);
    const auto* end = first + std::size(functions);
    const auto* found = std::find_if(first, end, [name](const NamedFunction& f) { return f.name == name; });
    return found != end ? found->address : nullptr;
}

} // namespace zn
