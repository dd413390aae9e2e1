#pragma once

#include "headless/host/session.h"
#include "headless/nifti/image_header.h"

#include <filesystem>
#include <string>

namespace zn::headless {

/// Adds to the files of a run what only its report needs ("..._desc-mean_bold.nii.gz" and, with a design matrix,
/// "..._desc-ICA_design.tsv"), then report.html. Without an installed template the page is left out, and that is said
/// on the standard error. Throws Failure (kOther).
///
///   folder   of the result, where the run's own files are complete
///   stem     what their names begin with
void addReport(const std::filesystem::path& folder, const std::string& stem, const Session& session,
               const ImageHeader& functional);

} // namespace zn::headless
