#include "headless/blas/blas_library.h"

#include <cblas.h>

namespace zn::headless {

namespace {

const char* orUnknown(const char* text) {
    return text && *text != '\0' ? text : "unknown";
}

} // namespace

const char* blasLibrary() {
    return orUnknown(openblas_get_config());
}

const char* blasKernels() {
    return orUnknown(openblas_get_corename());
}

} // namespace zn::headless
