#pragma once

#include "headless/denoise/denoising.h"
#include "headless/denoise/quality.h"

namespace zn::headless {

/// Writes the evidence: the measures before and after, DVARS and framewise displacement per volume, the fate of every
/// component, the carpets (one row per volume, one column per voxel), and the maps. Throws Failure (kOther).
void writeEvidence(const Denoising& run, const Quality& quality);

/// Writes the components' courses under names that say what became of them ("accepted_00", "rejected_03"), one row per
/// volume of the image, n/a for dummy scans, with a sidecar. Throws Failure (kOther).
void writeNamedCourses(const Denoising& run);

/// A map over the grid, 0 where nothing was cleaned.
struct EvidenceMap {
    ResultFile file;
    const char* title; ///< on the page
    std::vector<float> values;
};

/// Temporal signal-to-noise ratio before and after, and the variance removed, in per cent.
std::vector<EvidenceMap> evidenceMaps(const Denoising& run);

} // namespace zn::headless
