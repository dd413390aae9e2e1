#pragma once

#include "headless/host/volume_maps.h"

#include <filesystem>

namespace zn::headless {

/// Writes the components' time courses as a tab-separated table: columns ICA_00, ICA_01, ...; one row a volume. The
/// values are those that the plug-in gives the maps, each time course rescaled to 0..1. Throws Failure (kOther).
void writeMixingTable(const std::filesystem::path& file, const VolumeMaps& maps);

} // namespace zn::headless
