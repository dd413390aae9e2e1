#include "plugin/map_output.h"

#include "host/host_api.h"
#include "output/component_maps.h"
#include "output/text_matrix.h"

namespace zn {

void computeFingerprint(Run& run) {
    host().znLogText("// Plugin>  Computing parameters of the Independent Components... ");
    host().znUpdateActiveWindow();
    run.cursor.stop(); // the questions that follow want a free mouse

    run.parameterMatrix = OffsetMatrix<float>(0, run.components.count - 1, 0, kMapParameters - 1);
    run.parameterMatrix.fill(0.0F);
    writeFloatMatrix("ParamsMatrix.txt", run.parameterMatrix.get(), run.components.count, 11);
}

void outputMaps(Run& run) {
    host().znLogText("// Plugin>  Saving computed Independent Components... ");
    host().znUpdateActiveWindow();

    OffsetVector<float> zeros(0, run.components.count - 1);
    zeros.fill(0.0F);
    ComponentResults results{};
    results.components = run.components.count;
    results.volumes = run.vtc.volumes();
    results.gridX = run.vtc.grid.x;
    results.gridY = run.vtc.grid.y;
    results.gridZ = run.vtc.grid.z;
    results.mask = run.vtc.mask;
    results.maps = run.components.maps.get();
    results.timeCourses = run.components.timeCourses.get();
    results.parameters.fill(zeros.get());
    results.bands = run.parameterMatrix.get();
    handMapsToHost(*run.vtc.header, results, {run.names.vtc.data(), run.vtc.header->name, run.names.vois.data()});
    host().znSaveNRVMPsOfCurrentVMR(run.names.maps.data());
}

} // namespace zn
