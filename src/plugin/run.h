#pragma once

#include "fingerprint/fingerprint.h"
#include "host/run_exit.h"
#include "ica/fastica.h"
#include "ica/reconstruction.h"
#include "ica/whitening.h"
#include "input/file_names.h"
#include "input/voi_templates.h"
#include "input/voxel_data.h"
#include "input/vtc.h"
#include "plugin/run_parameters.h"

namespace zn {

/// Everything that one run holds; leaving the run early releases all of it. The stages fill it from top to bottom and
/// release what no later stage needs.
struct Run {
    explicit Run(BusyCursor& busyCursor) : cursor(busyCursor) {}

    BusyCursor& cursor;

    FileNames names{};
    Vtc vtc{};
    VoiTemplates templates{};
    VoxelData voxelData{};
    RunParameters parameters{};
    ZeroedBlock centred{};     // X, V x T
    Eigenpairs eigen{};        // of the temporal covariance
    Whitening whitened{};      // Wh, DW, Z
    Separation separation{};   // M, Q
    Components components{};   // maps and time courses
    Fingerprint fingerprint{}; // 16 values per component
};

} // namespace zn
