#pragma once

#include <filesystem>
#include <string>

namespace zn::headless {

/// A file's name without its folder and without ".nii", ".nii.gz", ".hdr" or ".img" in any case.
std::string imageStem(const std::filesystem::path& image);

/// What the names of a result begin with, following BIDS derivatives: the stem without its suffix "_bold" and without
/// any "_desc-..." entity. "sub-02_task-oneback_run-1_bold.nii.gz" gives "sub-02_task-oneback_run-1".
std::string resultStem(const std::filesystem::path& image);

/// "ICA_00" for component 0; at least two digits.
std::string componentName(int index);

} // namespace zn::headless
