// The anatomical volume, the functional time courses linked to it, and the mask.
#include "headless/host/current_session.h"

#include <cstring>

namespace zn::headless {

namespace {

// Field by field: the plug-in's record may be shorter than ours beyond the fields that the contract names.
void fillHeader(const Session& session, VtcHeader& header) {
    header.validity = 0;
    header.volumes = session.series.volumes;
    header.repetitionTime = session.millisecondsPerVolume;
    header.xStart = header.yStart = header.zStart = 0;
    header.xEnd = session.grid[0]; // the box starts at 0 and its voxels are those of the grid
    header.yEnd = session.grid[1];
    header.zEnd = session.grid[2];
    header.resolution = 1;
    header.dataType = session.series.isFloat() ? kFloatData : 1;
    const std::string& name = session.dialog.texts[0];
    std::memcpy(header.name, name.c_str(), name.size() + 1); // at most 204 characters, see readInputs()
}

} // namespace

extern "C" {

// The grid's sizes stand in for the volume's; any non-null address means that there is a volume.
void* znGetCurrentVMR(int* first, int* second, int* third) {
    Session& session = currentSession();
    *first = session.grid[0];
    *second = session.grid[1];
    *third = session.grid[2];
    return &session;
}

int znLinkVTCToCurrentVMR(const char* fileName, int) {
    const Session& session = currentSession();
    return session.dialog.texts[0] == fileName && session.series.volumes > 0 ? 1 : 0;
}

void znGetHeaderOfVTCOfCurrentVMR(VtcHeader* header) {
    fillHeader(currentSession(), *header);
}

float* znGetVTCFloatDataOfCurrentVMR() {
    return currentSession().series.floats.get();
}

short* znGetVTCIntDataOfCurrentVMR() {
    return currentSession().series.shorts.get();
}

int znLoadMaskToCurrentVMR(const char* fileName) {
    Session& session = currentSession();
    session.maskLoaded = session.dialog.texts[1] == fileName && !session.mask.empty();
    return session.maskLoaded ? 1 : 0;
}

unsigned char* znGetMaskOfCurrentVMR() {
    Session& session = currentSession();
    return session.maskLoaded ? session.mask.data() : nullptr;
}

} // extern "C"

} // namespace zn::headless
