#pragma once

#include "headless/bids/functional_images.h"
#include "headless/study/study_options.h"

#include <memory>

namespace zn::headless {

/// An image of the chosen subjects and sessions, before the other filters.
struct Candidate {
    NamedFile image;
    std::string dataset;                      ///< that it belongs to: "raw", or the name of the derivatives
    std::filesystem::path folder;             ///< relative to that dataset
    std::shared_ptr<const BidsFolder> files;  ///< of its folder
    std::shared_ptr<const BidsFolder> events; ///< of the same folder of the dataset that BIDS_DIR names
    bool preprocessed = false;
};

/// All functional images of the chosen subjects and sessions. Throws Failure (kInput).
std::vector<Candidate> findCandidates(const StudyOptions& options, PassedOver& passedOver);

/// Leaves the images that pass the filters, all in one space. Throws Failure (kInput) for a label that no image has,
/// several spaces, and when none is left.
void chooseCandidates(const Selection& selection, std::vector<Candidate>& candidates);

} // namespace zn::headless
