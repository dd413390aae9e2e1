#include "runs/engine_request.h"

#include "runs/simulated_run.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

namespace zn::bench {

bool readRequest(int count, char** arguments, EngineRequest& request) {
    if (count > 2 && std::strcmp(arguments[count - 2], "--regions") == 0) {
        request.regions = std::atoi(arguments[count - 1]);
        count -= 2;
    }
    if (count != 5 && count != 7) return false;
    request.voxels = std::atoi(arguments[1]);
    request.volumes = std::atoi(arguments[2]);
    request.components = std::atoi(arguments[3]);
    request.seed = static_cast<unsigned>(std::atoi(arguments[4]));
    if (count == 7) {
        request.data = arguments[5];
        request.maps = arguments[6];
    }
    return true;
}

ZeroedBlock takeData(const EngineRequest& request) {
    if (request.data.empty()) {
        return simulateRun(request.voxels, request.volumes, request.components, request.seed).data;
    }
    ZeroedBlock data(request.voxels, request.volumes);
    std::ifstream file(request.data, std::ios::binary);
    file.read(reinterpret_cast<char*>(data.get()),
              static_cast<std::streamsize>(sizeof(double)) * request.voxels * request.volumes);
    if (file) return data;
    std::fprintf(stderr, "engine_run: %s does not hold %d x %d doubles.\n", request.data.c_str(), request.voxels,
                 request.volumes);
    std::exit(1);
}

} // namespace zn::bench
