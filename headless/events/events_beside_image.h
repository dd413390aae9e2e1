#pragma once

#include <filesystem>
#include <string>

namespace zn::headless {

/// The BIDS events file of an image: in the image's folder, with its entities and the suffix "_events.tsv". If there is
/// none, the entities that events files do not have are left out (space, res, den, desc, echo, part and hemi), as for
/// a preprocessed image that lies beside the events. Throws Failure (kInput), naming the file that is missing.
///
///   stem   name of the image without folder and ending
///
///   sub-01_task-rest_space-MNI_desc-preproc_bold.nii.gz -> sub-01_task-rest_events.tsv
std::filesystem::path eventsBesideImage(const std::filesystem::path& image, const std::string& stem);

} // namespace zn::headless
