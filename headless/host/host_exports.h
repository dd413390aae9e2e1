#pragma once

#include "host/nrvmp_records.h"
#include "host/voi_records.h"
#include "host/vtc_header.h"

/// Marks what the module exports; everything else in it is hidden.
#define ZN_HOST_EXPORT __attribute__((visibility("default")))

namespace zn::headless {

// Declares every function that the plug-in calls with its type in the list, so that a definition with another type does
// not compile.
extern "C" {
#define ZN(result, name, parameters) ZN_HOST_EXPORT result name parameters;
#define ZN_UNUSED(name)
#include "host/host_functions.def"
#include "host/host_matrix_products.def"
#include "host/host_separation.def"
#undef ZN_UNUSED
#undef ZN
}

} // namespace zn::headless
