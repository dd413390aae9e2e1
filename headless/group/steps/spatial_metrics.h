#pragma once

#include <filesystem>

namespace zn::headless {

/// Copies the metrics of a result, table and description, without those that depend on time courses: the rows of a
/// group are not volumes, so these values become n/a. Throws Failure.
///
///   result   folder of the result
void copySpatialMetrics(const std::filesystem::path& result, const std::filesystem::path& table,
                        const std::filesystem::path& description);

} // namespace zn::headless
