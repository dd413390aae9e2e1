#pragma once

#include "headless/bids/bids_folder.h"

#include <string>
#include <vector>

namespace zn::headless {

/// Images that were passed over, by the reason: a clause such as "one echo of several".
using PassedOver = std::map<std::string, std::vector<std::string>>;

/// The functional images of a folder that can be analysed: "_bold.nii" or "_bold.nii.gz". Single echoes, phase parts,
/// surfaces and names that are not BIDS are passed over.
///
///   preprocessed   take the images with "desc-preproc", as in fMRIPrep's derivatives; otherwise those without "desc"
///   passedOver     receives the names of the others
std::vector<NamedFile> functionalImages(const BidsFolder& folder, bool preprocessed, PassedOver& passedOver);

/// What the files of a run are named after: the entities without "desc", "sub-01_task-rest_space-MNI".
std::string runName(const BidsName& image);

} // namespace zn::headless
