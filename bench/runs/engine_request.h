#pragma once

#include "numeric/array_owners.h"

#include <string>

namespace zn::bench {

/// What engine_run is asked to do.
struct EngineRequest {
    int voxels = 0;
    int volumes = 0;
    int components = 0;
    unsigned seed = 0; ///< of the start vectors, and of the data when they are simulated
    std::string data;  ///< file of V x T doubles; empty: simulated
    std::string maps;  ///< file to write K x V floats to; empty: none
    int regions = -1;  ///< regions of interest of the fingerprint; negative: no fingerprint
};

/// VOXELS VOLUMES COMPONENTS SEED [DATA MAPS] [--regions COUNT]; false when the arguments are not these.
bool readRequest(int count, char** arguments, EngineRequest& request);

/// The centred data, V x T, row-major. Ends the process when the file does not hold them.
ZeroedBlock takeData(const EngineRequest& request);

} // namespace zn::bench
