#pragma once

#include <filesystem>

namespace zn::headless {

/// Throws Failure (kOther) unless a study may be planned in this folder: it does not exist, is empty, has a study's
/// record, or holds nothing but what the steps of a study write.
void requireStudyPlace(const std::filesystem::path& folder);

} // namespace zn::headless
