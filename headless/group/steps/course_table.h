#pragma once

#include <filesystem>
#include <vector>

namespace zn::headless {

/// The courses of the components in a run, [component][volume], from its table: a header line with names, one row per
/// volume. Throws Failure (kInput) when the table is damaged.
std::vector<std::vector<float>> readCourses(const std::filesystem::path& file);

} // namespace zn::headless
