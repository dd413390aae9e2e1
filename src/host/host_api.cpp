#include "host/host_api.h"

#include "host/host_module.h"

namespace zn {

namespace {

HostApi boundApi;
HostMatrixProducts boundProducts;
HostSeparation boundSeparation;

template <class Function> Function lookUp(const HostModule& module, const char* name) {
    return reinterpret_cast<Function>(module.function(name));
}

} // namespace

const HostApi& host() {
    return boundApi;
}

const HostMatrixProducts& products() {
    return boundProducts;
}

const HostSeparation& hostSeparation() {
    return boundSeparation;
}

bool isHostBound() {
    return boundApi.znGetVersionOfTesmiraZN && boundProducts.zn_intel_matrix_vector_mult_d;
}

bool bindHostApi() {
    const auto module = HostModule::find();
    if (!module || !module->function("znGetVersionOfTesmiraZN")) return false;

#define ZN(result, name, parameters) boundApi.name = lookUp<result(*) parameters>(*module, #name);
#define ZN_UNUSED(name) boundApi.name = lookUp<UnusedHostFunction>(*module, #name);
#include "host/host_functions.def"
#undef ZN_UNUSED
#undef ZN
    return true;
}

bool bindHostMatrixProducts() {
    const auto module = HostModule::find();
    if (!module) return false;

#define ZN(result, name, parameters)                                                                                   \
    boundProducts.name = lookUp<result(*) parameters>(*module, #name);                                                 \
    if (!boundProducts.name) return false;
#include "host/host_matrix_products.def"
#undef ZN
    return true;
}

void bindHostSeparation() {
    boundSeparation = HostSeparation{};
    const auto module = HostModule::find();
    if (!module) return;

#define ZN(result, name, parameters) boundSeparation.name = lookUp<result(*) parameters>(*module, #name);
#include "host/host_separation.def"
#undef ZN
}

} // namespace zn
