#pragma once

#include "ica/fastica.h"
#include "ica/separation.h"
#include "ica/whitening.h"

#include <optional>

namespace zn {

/// Lets the host find the components, if it can: see host_separation.def. Nothing when it has no such function or
/// declines. Logs nothing.
///
/// The host's vectors are checked, because maps and time courses follow from them: a wrong number of components, or a
/// vector whose length is not 1, ends the run through nrerror. Throws std::bad_alloc.
std::optional<Separation> separateInHost(const Whitening& whitened, int voxels, int volumes,
                                         const FastIcaSettings& settings);

} // namespace zn
