#include "runs/run_result.h"

#include <cstdio>
#include <fstream>

namespace zn::bench {

void RunResult::print() const {
    const char* separator = "{";
    for (const auto& [name, value] : values_) {
        std::printf("%s\"%s\": %.9g", separator, name.c_str(), value);
        separator = ", ";
    }
    std::puts("}");
}

bool writeMaps(const std::string& fileName, const std::vector<const float*>& maps, int voxels) {
    std::ofstream file(fileName, std::ios::binary);
    for (const float* map : maps) {
        file.write(reinterpret_cast<const char*>(map), static_cast<std::streamsize>(sizeof(float)) * voxels);
    }
    file.close();
    return !file.fail();
}

} // namespace zn::bench
