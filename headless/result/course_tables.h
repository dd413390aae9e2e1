#pragma once

#include "headless/design/design_matrix.h"
#include "headless/host/volume_maps.h"

#include <filesystem>

namespace zn::headless {

/// Writes the components' time courses as a tab-separated table: columns ICA_00, ICA_01, ..., one row per volume. The
/// values are those that the plug-in stores with the maps: each time course is rescaled to 0..1. Throws Failure
/// (kOther).
void writeMixingTable(const std::filesystem::path& file, const VolumeMaps& maps);

/// Writes the predictors with which the time courses were compared as a tab-separated table: their names, then one row
/// per volume. Tabs and line breaks in a name become blanks. Throws Failure (kOther).
void writeDesignTable(const std::filesystem::path& file, const DesignMatrix& design);

} // namespace zn::headless
