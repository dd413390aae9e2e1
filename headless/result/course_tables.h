#pragma once

#include "headless/design/design_matrix.h"
#include "headless/host/volume_maps.h"
#include "headless/measures/component_courses.h"

#include <filesystem>

namespace zn::headless {

/// Writes the components' time courses as a tab-separated table: columns ICA_00, ICA_01, ..., one row per volume. The
/// values are those that the plug-in stores with the maps: each time course is rescaled to 0..1. Throws Failure
/// (kOther).
void writeMixingTable(const std::filesystem::path& file, const VolumeMaps& maps);

/// Writes the time courses in units of the data as a tab-separated table: columns ICA_00, ICA_01, ..., then
/// spatial_mean, one row per volume. A volume is spatial_mean, plus the sum over the components of the map times the
/// value in its column, plus what the components leave out. Throws Failure (kOther).
void writeTimeSeriesTable(const std::filesystem::path& file, const ComponentCourses& courses);

/// Writes what the columns of that table mean, as a BIDS JSON sidecar. Throws Failure (kOther).
void writeTimeSeriesDescription(const std::filesystem::path& file, int components);

/// Writes the predictors with which the time courses were compared as a tab-separated table: their names, then one row
/// per volume. Tabs and line breaks in a name become blanks. Throws Failure (kOther).
void writeDesignTable(const std::filesystem::path& file, const DesignMatrix& design);

} // namespace zn::headless
