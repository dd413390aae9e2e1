#pragma once

#include "host/nrvmp_records.h"
#include "host/voi_records.h"
#include "host/vtc_header.h"

namespace zn {

using UnusedHostFunction = void (*)();

/// The host's functions by name. A null pointer means that this host lacks the function.
struct HostApi {
#define ZN(result, name, parameters) result(*name) parameters = nullptr;
#define ZN_UNUSED(name) UnusedHostFunction name = nullptr;
#include "host/host_functions.def"
#undef ZN_UNUSED
#undef ZN
};

/// The host's matrix products; see host_matrix_products.def for their contract.
struct HostMatrixProducts {
#define ZN(result, name, parameters) result(*name) parameters = nullptr;
#include "host/host_matrix_products.def"
#undef ZN
};

/// What a host may offer in addition; null: it does not. See host_separation.def.
struct HostSeparation {
#define ZN(result, name, parameters) result(*name) parameters = nullptr;
#include "host/host_separation.def"
#undef ZN
};

/// The process-wide tables: filled by the functions below on the host's thread before any use, read-only afterwards.
const HostApi& host();
const HostMatrixProducts& products();
const HostSeparation& hostSeparation();

/// Whether both tables are filled. Without them there is nothing that a run could call.
bool isHostBound();

/// Finds the host among the loaded modules and looks up every name of the list, in the list's order.
/// False when neither host module is loaded or it lacks its version function; any other missing name stays null.
bool bindHostApi();

/// Looks up the four products. False when no host module is loaded, and at the first missing product.
bool bindHostMatrixProducts();

/// Looks up the optional function, after everything else. It stays null when the host lacks it.
void bindHostSeparation();

} // namespace zn
