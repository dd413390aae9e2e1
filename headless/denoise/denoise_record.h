#pragma once

#include "headless/denoise/denoising.h"

namespace zn::headless {

/// The file of the image that the method writes.
ResultFile imageFileOf(DenoiseMethod method);

/// Writes the sidecar of the denoised image: the fields of the original image's sidecar, if it has one, and how the
/// image was denoised, by which software, from which files (with their SHA-256). Throws Failure (kOther).
void writeSidecar(const Denoising& run);

/// Writes dataset_description.json and .bidsignore, which make the folder a BIDS derivative. Throws Failure (kOther).
void writeDatasetFiles(const Denoising& run);

} // namespace zn::headless
