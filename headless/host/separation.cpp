// The optional function through which the plug-in lets the host find the components.
#include "headless/host/current_session.h"

namespace zn::headless {

extern "C" {

// An exception is kept in the session, and the plug-in ends the run because there is no component.
int znSeparateWhitenedData(const double* z, const double* dewhitening, int volumes, int components, int voxels,
                           int nonlinearity, double epsilon, int iterationLimit, double* vectors) {
    return guarded(0, [&](Session& session) {
        if (!session.separator) return -1;
        return session.separator->separate(
            {z, dewhitening, volumes, components, voxels, nonlinearity, epsilon, iterationLimit}, vectors);
    });
}

} // extern "C"

} // namespace zn::headless
