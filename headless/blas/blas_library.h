#pragma once

namespace zn::headless {

/// The BLAS behind the matrix products: name, version and build options in its own words, and the kernels that it chose
/// for this processor. The bits of a result depend on both.
const char* blasLibrary();
const char* blasKernels();

} // namespace zn::headless
