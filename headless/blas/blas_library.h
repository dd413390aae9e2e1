#pragma once

namespace zn::headless {

/// The BLAS behind the matrix products: its name, version and build options as it reports them, and the kernels that it
/// chose for this processor. The last bits of a result depend on both.
const char* blasLibrary();
const char* blasKernels();

} // namespace zn::headless
