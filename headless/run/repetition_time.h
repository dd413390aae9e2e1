#pragma once

#include "headless/nifti/image_header.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zn::headless {

/// The time between volumes and where it was found.
struct RepetitionTime {
    double seconds = 0.0;
    std::string source;                     ///< "--tr", "the header" or the sidecar's file name
    std::vector<std::string> disagreements; ///< one sentence per source that differs by more than a millisecond
    bool perhapsUnset = false;              ///< 1 s without a unit in the header, the default of many programs
};

/// The TR of a functional image: as given, else `RepetitionTime` of the JSON file with the image's name in the same
/// folder, else of the nearest one that applies by the inheritance principle of BIDS (see sidecarsOf), else from the
/// header. Throws Failure (kInput) that says what to do when the first of these that exists is
/// not between 0.001 and 20 s, when there is none, and when a sidecar that is needed cannot be read as JSON.
///
///   sidecars   what sidecarsOf() returns for the image, if the caller has asked already
RepetitionTime repetitionTime(const std::optional<double>& given, const ImageHeader& functional,
                              const std::optional<std::vector<std::filesystem::path>>& sidecars = {});

} // namespace zn::headless
