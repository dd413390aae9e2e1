// The linker redirects every call of srand and of jacobi here (--wrap), and the names with __real_ to the original
// functions. The long name is jacobi's in the Itanium C++ ABI.
#include "runs/engine_wraps.h"

#include "runs/run_clock.h"

namespace {

unsigned startSeed = 0;
zn::bench::EigenSearch eigenSearch;

} // namespace

namespace zn::bench {

void setStartSeed(unsigned seed) {
    startSeed = seed;
}

const EigenSearch& lastEigenSearch() {
    return eigenSearch;
}

} // namespace zn::bench

extern "C" void __real_srand(unsigned seed);
extern "C" void __wrap_srand(unsigned) {
    __real_srand(startSeed);
}

extern "C" void __real__ZN2zn6jacobiEPPdiS0_S1_Pi(double** a, int n, double* d, double** v, int* rotations);
extern "C" void __wrap__ZN2zn6jacobiEPPdiS0_S1_Pi(double** a, int n, double* d, double** v, int* rotations) {
    const zn::bench::RunClock clock;
    __real__ZN2zn6jacobiEPPdiS0_S1_Pi(a, n, d, v, rotations);
    eigenSearch = {clock.seconds(), *rotations};
}
