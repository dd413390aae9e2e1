#include "plugin/map_output.h"

#include "host/host_api.h"
#include "output/component_maps.h"

namespace zn {

void outputMaps(const Run& run) {
    host().znLogText("// Plugin>  Saving computed Independent Components... ");
    host().znUpdateActiveWindow();

    const Fingerprint& f = run.fingerprint;
    const ComponentResults results{
        .components = run.components.count,
        .volumes = run.vtc.volumes(),
        .gridX = run.vtc.grid.x,
        .gridY = run.vtc.grid.y,
        .gridZ = run.vtc.grid.z,
        .mask = run.vtc.mask,
        .maps = run.components.maps.get(),
        .timeCourses = run.components.timeCourses.get(),
        .parameters = {f.designCorrelation.get(), f.designIndex.get(), f.rms.get(), f.templateCorrelation.get(),
                       f.templateIndex.get(), f.clustering.get(), f.skewness.get(), f.kurtosis.get(),
                       f.spatialEntropy.get(), f.autocorrelation.get(), f.temporalEntropy.get()},
        .bands = f.bands.get(),
    };
    handMapsToHost(*run.vtc.header, results, {run.names.vtc.data(), run.vtc.header->name, run.names.vois.data()});
    host().znSaveNRVMPsOfCurrentVMR(run.names.maps.data());
}

} // namespace zn
