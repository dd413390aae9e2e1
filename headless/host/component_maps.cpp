// The volume maps of the current anatomical volume, into which the plug-in writes its components.
#include "headless/host/current_session.h"

#include <new>

namespace zn::headless {

extern "C" {

void znDeleteNRVMPsOfCurrentVMR() {
    currentSession().maps.clear();
}

void znCreateNRVMPsForCurrentVMR(int maps, int timePoints, int parameters, NRVMPsHeader* header) {
    guarded([&](Session& session) {
        try {
            session.maps.create(maps, timePoints, parameters, *header);
        } catch (const std::bad_alloc&) {
            session.events->outOfMemory();
        }
    });
}

void znGetNRVMPsOfCurrentVMR(NRVMPsHeader* header) {
    currentSession().maps.describe(*header);
}

float* znGetNRVMPOfCurrentVMR(int index, NRVMPMap* map) {
    return currentSession().maps.describe(index, *map);
}

void znSetNRVMPParametersOfCurrentVMR(int index, NRVMPMap* map) {
    currentSession().maps.setParameters(index, *map);
}

void znSetNRVMPsParamsDisplayRange(NRVMPsHeader* header) {
    currentSession().maps.setDisplayRange(*header);
}

void znSaveNRVMPsOfCurrentVMR(const char* fileName) {
    guarded([&](Session& session) { session.events->saveMaps(session.maps, fileName); });
}

} // extern "C"

} // namespace zn::headless
