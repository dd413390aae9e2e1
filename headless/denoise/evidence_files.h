#pragma once

#include "headless/denoise/denoising.h"
#include "headless/denoise/quality.h"

namespace zn::headless {

/// Writes the evidence: the measures before and after, DVARS and framewise displacement per volume, the fate of every
/// component, the carpets (one row per volume, one column per voxel), and the maps. Throws Failure (kOther).
void writeEvidence(const Denoising& run, const Quality& quality);

} // namespace zn::headless
