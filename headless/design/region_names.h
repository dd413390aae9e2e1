#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

namespace zn::headless {

/// Reads the names of the regions of a label image: a tab-separated table whose header has the columns "index" and
/// "name" among others, one row a label. A label whose name is empty is left out: it goes by its number. Throws Failure
/// (kInput), also for an index that is not whole or comes twice.
std::map<std::int32_t, std::string> readRegionNames(const std::filesystem::path& file);

} // namespace zn::headless
