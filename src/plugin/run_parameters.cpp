#include "plugin/run_parameters.h"

#include "host/host_api.h"
#include "host/log.h"

namespace zn {

namespace {

Nonlinearity readNonlinearity() {
    if (host().znGetDlgIntegerParameter(5) == 1) return Nonlinearity::cube;
    return host().znGetDlgIntegerParameter(3) == 1 ? Nonlinearity::gaussian : Nonlinearity::tanh;
}

// Number of ranks kept; in 64 bits because the dialog may return any values.
long long rangeLength(const RunParameters& p) {
    return static_cast<long long>(p.lastEigenvalue) - p.firstEigenvalue + 1;
}

void adjustEigenvalueRange(RunParameters& p, int volumes) {
    if (p.firstEigenvalue > p.lastEigenvalue) {
        logLine("// Plugin>  Adjusting the first eigenvalue from %i to %i ...", p.firstEigenvalue, p.lastEigenvalue);
        p.firstEigenvalue = p.lastEigenvalue;
    }
    if (rangeLength(p) > volumes) {
        const int last = p.firstEigenvalue + volumes - 1;
        logLine("// Plugin>  Adjusting the last eigenvalue from %i to %i ...", p.lastEigenvalue, last);
        p.lastEigenvalue = last;
    }
}

// The number of components always ends up as the number of eigenvalues kept; the first step only adds a log line.
void adjustComponents(RunParameters& p, int volumes) {
    if (p.fastIca.components > volumes) {
        logLine("// Plugin>  Reducing the number of components from %i to %i (number of volumes)", p.fastIca.components,
                volumes);
        p.fastIca.components = volumes;
    }
    const int dimension = static_cast<int>(rangeLength(p));
    if (p.fastIca.components != dimension) {
        logLine("// Plugin>  Adjusting the number of independent components from %i to %i (data dimension)",
                p.fastIca.components, dimension);
        p.fastIca.components = dimension;
    }
}

} // namespace

RunParameters readRunParameters(int volumes) {
    RunParameters p{};
    p.runFastIca = host().znGetDlgIntegerParameter(0) != 0;
    p.fastIca.nonlinearity = readNonlinearity();
    p.fastIca.epsilon = host().znGetDlgFloatParameter(0);
    p.fastIca.iterationLimit = host().znGetDlgIntegerParameter(8);
    p.firstEigenvalue = host().znGetDlgIntegerParameter(6);
    p.lastEigenvalue = host().znGetDlgIntegerParameter(7);
    adjustEigenvalueRange(p, volumes);
    p.fastIca.components = host().znGetDlgIntegerParameter(9);
    adjustComponents(p, volumes);
    return p;
}

} // namespace zn
