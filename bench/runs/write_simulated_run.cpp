// write_simulated_run VOXELS VOLUMES SOURCES SEED FOLDER
//
// Writes the data of one simulated run into an existing folder, in this machine's byte order:
//
//   data.f64      V x T doubles, row-major, centred
//   sources.f32   K x V floats, row-major
#include "runs/simulated_run.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

int main(int count, char** arguments) {
    if (count != 6) {
        std::fputs("usage: write_simulated_run VOXELS VOLUMES SOURCES SEED FOLDER\n", stderr);
        return 1;
    }
    const int voxels = std::atoi(arguments[1]);
    const int volumes = std::atoi(arguments[2]);
    const int sources = std::atoi(arguments[3]);
    const std::string folder = arguments[5];
    const auto run = zn::bench::simulateRun(voxels, volumes, sources, static_cast<unsigned>(std::atoi(arguments[4])));

    std::ofstream data(folder + "/data.f64", std::ios::binary);
    data.write(reinterpret_cast<const char*>(run.data.get()),
               static_cast<std::streamsize>(sizeof(double)) * voxels * volumes);
    std::ofstream maps(folder + "/sources.f32", std::ios::binary);
    for (int k = 0; k < sources; ++k) {
        maps.write(reinterpret_cast<const char*>(run.sources[k]), static_cast<std::streamsize>(sizeof(float)) * voxels);
    }
    data.close();
    maps.close();
    if (data && maps) return 0;
    std::fprintf(stderr, "write_simulated_run: cannot write to %s.\n", folder.c_str());
    return 1;
}
