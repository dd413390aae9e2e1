#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

namespace zn::headless {

/// Reads the names of the regions of a label image: a tab-separated table with one row per label whose header includes
/// the columns "index" and "name". A label with an empty name is omitted and is known by its number. Throws Failure
/// (kInput), also for an index that is not a whole number or that occurs twice.
std::map<std::int32_t, std::string> readRegionNames(const std::filesystem::path& file);

} // namespace zn::headless
