#pragma once

#include "headless/bids/bids_folder.h"

#include <filesystem>

namespace zn::headless {

// The files that belong to an image have exactly its entities, apart from those named here; there is no next best. Each
// is empty when there is none. Throws Failure (kInput) naming two files that match equally well.

/// "desc-brain_mask.nii.gz" (or .nii) in the image's folder: the same space and resolution, too.
std::filesystem::path maskOf(const NamedFile& image, const BidsFolder& folder);

/// "desc-confounds_timeseries.tsv", or "desc-confounds_regressors.tsv" as it was called earlier; without space,
/// resolution and density.
std::filesystem::path confoundsOf(const NamedFile& image, const BidsFolder& folder);

/// "events.tsv" in the folder of the original images; without space, resolution, density, part.
std::filesystem::path eventsOf(const NamedFile& image, const BidsFolder& originals);

} // namespace zn::headless
