#pragma once

#include "headless/simulate/recovery.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// How well one source of a sample came back in a result.
struct SourceScore {
    std::string name;
    Recovery recovery;
};

/// For every source of a simulated sample the component of a result whose map is most like it. Throws Failure (kInput)
/// when one of the folders lacks its files or the two do not fit.
std::vector<SourceScore> scoreResult(const std::filesystem::path& result, const std::filesystem::path& truth);

} // namespace zn::headless
