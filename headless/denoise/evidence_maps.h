#pragma once

#include "headless/denoise/denoising.h"

#include <vector>

namespace zn::headless {

/// A map over the grid, 0 where nothing was cleaned.
struct EvidenceMap {
    ResultFile file;
    const char* title; ///< on the page
    std::vector<float> values;
};

/// Temporal signal-to-noise ratio before and after, and the variance removed, in per cent.
std::vector<EvidenceMap> evidenceMaps(const Denoising& run);

/// Writes the maps as images. Throws Failure (kOther).
void writeMaps(const Denoising& run);

} // namespace zn::headless
