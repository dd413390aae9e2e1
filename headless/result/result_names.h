#pragma once

#include <filesystem>
#include <string>

namespace zn::headless {

/// A file's name without folder and without ".nii", ".nii.gz", ".hdr" or ".img", in letters of any case.
std::string imageStem(const std::filesystem::path& image);

/// What the names of a result begin with, in the manner of BIDS derivatives: the stem without its suffix "_bold" and
/// without a "_desc-..." of its own. "sub-02_task-oneback_run-1_bold.nii.gz" gives "sub-02_task-oneback_run-1".
std::string resultStem(const std::filesystem::path& image);

/// "ICA_00" for component 0; two digits, more where the number needs them.
std::string componentName(int index);

} // namespace zn::headless
