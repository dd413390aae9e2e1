#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// What `znica simulate` is asked to do.
struct SimulateOptions {
    std::filesystem::path out;
    std::string size = "small"; ///< one of sizeNames()
    int sources = 8;
    double noisePercent = 1.0; ///< standard deviation in per cent of the mean signal
    std::uint64_t seed = 1;
    bool force = false;

    static std::vector<std::string> sizeNames() { return {"tiny", "small", "medium", "large"}; }
};

} // namespace zn::headless
