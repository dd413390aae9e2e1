#pragma once

#include "headless/host/host_exports.h"

namespace zn::headless {

/// The BLAS behind the matrix products: name, version and build options in its own words, and the kernels that it chose
/// for this processor. The bits of a result depend on both.
ZN_HOST_EXPORT const char* blasLibrary();
ZN_HOST_EXPORT const char* blasKernels();

} // namespace zn::headless
