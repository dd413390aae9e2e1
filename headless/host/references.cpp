// What components are compared with: the predictors of a design matrix and regions of interest.
#include "headless/host/current_session.h"

namespace zn::headless {

extern "C" {

void znClearDesignMatrix() {
    currentSession().designLoaded = false;
}

int znLoadSingleStudyGLMDesignMatrix(const char* fileName) {
    Session& session = currentSession();
    session.designLoaded = session.dialog.texts[3] == fileName && !session.design.predictors.empty();
    return session.designLoaded ? 1 : 0;
}

float* znGetPredictor(int index) {
    Session& session = currentSession();
    auto& predictors = session.design.predictors;
    const bool exists = session.designLoaded && index >= 0 && static_cast<std::size_t>(index) < predictors.size();
    return exists ? predictors[static_cast<std::size_t>(index)].data() : nullptr;
}

int znLoadVOIs(const char* fileName) {
    Session& session = currentSession();
    session.regionsLoaded = session.dialog.texts[4] == fileName && !session.regions.empty();
    return session.regionsLoaded ? 1 : 0;
}

int znGetVOIs(VoiSetHeader* header) {
    const Session& session = currentSession();
    header->count = 0; // the named fields alone: the plug-in's record may end after them
    header->coordinateSpace = 0;
    if (!session.regionsLoaded) return 0;
    header->count = static_cast<std::int32_t>(session.regions.size());
    header->coordinateSpace = session.coordinateSpace;
    return 1;
}

int* znGetVOI(int index, VoiHeader* header) {
    header->voxels = 0;
    auto& regions = currentSession().regions;
    if (index < 0 || static_cast<std::size_t>(index) >= regions.size()) return nullptr;
    auto& coordinates = regions[static_cast<std::size_t>(index)].coordinates;
    header->voxels = static_cast<std::int32_t>(coordinates.size() / 3);
    return coordinates.data();
}

} // extern "C"

} // namespace zn::headless
