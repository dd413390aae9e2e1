#pragma once

#include "headless/run/run.h"

#include <filesystem>

namespace zn::headless {

/// Where the plug-in puts one of its files, whose names partly follow the image's.
std::filesystem::path pluginFile(const Run& run, ResultFile file);

/// Throws Failure (kOther) when a file that the plug-in leaves in its folder is missing or shorter than it should be:
/// the plug-in itself passes over files that cannot be opened or written. A plug-in that left none of these files is
/// another one.
///
///   ICA.vox            one line per voxel, and one with their number
///   Covariance.txt     one line per volume
///   ParamsMatrix.txt   one line per component
///   .eig               8 (T + T T) bytes for T volumes
///   _ICA.rtc           six lines, and one per volume
void requireCompletePluginFiles(const Run& run);

} // namespace zn::headless
