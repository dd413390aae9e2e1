#pragma once

#include "host/host_text.h"
#include "host/run_exit.h"

namespace zn {

/// The string parameters of the host's ICA dialog; empty means not given.
struct FileNames {
    HostText vtc{};          ///< functional time courses; required
    HostText mask{};         ///< voxel mask; without it every voxel of the VTC is used
    HostText maps{};         ///< where the component maps are saved; required
    HostText designMatrix{}; ///< predictors that time courses are compared with
    HostText vois{};         ///< volumes of interest that maps are compared with
    bool voisLoaded = false; ///< the host has loaded `vois`
};

/// Reads the five names in order and has the host load the VOI file. Without a VTC or an output file the dialog is
/// opened again and the run stops with false.
MaybeStop readFileNames(FileNames& names);

} // namespace zn
