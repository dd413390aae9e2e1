#pragma once

#include "headless/cli/command_line.h"

namespace zn::headless {

/// `znica preview BOLD --out DIR`, with the options of `znica run` for input and preparation: what the page shows
/// before a run. Reads, checks and refuses as `znica run` does, up to the mask. DIR then holds
///
///   mean         [voxels of the grid] grey levels of the mean image, one byte each, x fastest
///   mask         [voxels of the grid] 1 where a voxel would be analysed
///   facts.json   size, voxel_to_mm, oriented, volumes, tr_seconds, tr_source, voxels, voxels_excluded,
///                needed_bytes, available_bytes, notes
void addPreviewCommand(CLI::App& app, Action& action);

} // namespace zn::headless
