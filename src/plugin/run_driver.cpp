#include "plugin/run_driver.h"

#include "host/host_api.h"
#include "ica/separate_in_host.h"
#include "numeric/nrerror.h"
#include "output/file_beside_vtc.h"
#include "output/rtc_file.h"
#include "output/text_matrix.h"
#include "plugin/fatal_error.h"
#include "plugin/fingerprint_stage.h"
#include "plugin/map_output.h"
#include "plugin/quiet_floating_point.h"
#include "plugin/run.h"

#include <exception>
#include <new>
#include <utility>

using namespace zn;

namespace {

MaybeStop checkAnatomicalVolume() {
    int unread[3] = {}; // the host returns more than is needed here
    if (host().znGetCurrentVMR(&unread[0], &unread[1], &unread[2])) return std::nullopt;
    host().znLogText("// Plugin>  Could not get VMR!");
    return Stop{false};
}

void extractData(Run& run) {
    run.templates = VoiTemplates::fetch(run.names.voisLoaded, run.vtc);
    run.voxelData = extractVoxels(run.vtc, run.templates);
    writeVoxelTable("ICA.vox", run.voxelData.list.get(), run.vtc.voxels + 1, 3);
    run.voxelData.list.release();
    run.templates.finish();

    run.parameters = readRunParameters(run.vtc.volumes());
    run.centred = removeSpatialMean(run.voxelData.timeCourses, run.vtc.voxels, run.vtc.volumes());
}

void decompose(Run& run) {
    auto covariance = computeCovariance(run.centred.get(), run.vtc.voxels, run.vtc.volumes());
    run.eigen = decomposeCovariance(covariance, run.vtc.volumes(), run.names.vtc.data());
}

void reduceAndWhiten(Run& run) {
    run.whitened = whiten(run.centred.get(), run.vtc.voxels, run.vtc.volumes(), run.eigen,
                          run.parameters.firstEigenvalue, run.parameters.lastEigenvalue);
}

// The dialog can switch the FastICA stage off; then there are no components.
MaybeStop findComponents(Run& run) {
    if (run.parameters.runFastIca) {
        const FastIcaSettings& settings = run.parameters.fastIca;
        auto byHost = separateInHost(run.whitened, run.vtc.voxels, run.vtc.volumes(), settings);
        run.separation =
            byHost ? std::move(*byHost) : separate(run.whitened, run.vtc.voxels, run.vtc.volumes(), settings);
    }
    run.whitened = Whitening{};
    if (run.separation.found > 0) return std::nullopt;

    run.cursor.stopIfShown();
    host().znLogText("// Plugin>  No components found. Exiting plugin.");
    host().znUpdateActiveWindow();
    return Stop{true};
}

void buildMapsAndTimeCourses(Run& run) {
    run.components = reconstruct(run.centred, run.vtc.voxels, run.vtc.volumes(), run.separation);
    writeRtcDesignMatrix(fileBesideVtc(run.names.vtc.data(), "_ICA.rtc").c_str(), run.components.timeCourses.get(),
                         run.vtc.volumes(), run.components.count);
}

Stop finish(BusyCursor& cursor) {
    cursor.stop();
    host().znLogText("// Plugin>  ICA Plugin completed!");
    host().znLogText(" ");
    return Stop{true};
}

MaybeStop runStages(BusyCursor& cursor) {
    Run run(cursor);
    if (auto stop = checkAnatomicalVolume()) return stop;
    if (auto stop = readFileNames(run.names)) return stop;            // dialog texts, VOI file
    if (auto stop = openVtc(run.names, cursor, run.vtc)) return stop; // VTC, mask, voxel count
    extractData(run);                                                 // "ICA.vox", parameters, X (V x T)
    decompose(run);                                                   // "Covariance.txt", ".eig", eigenpairs
    reduceAndWhiten(run);                                             // Wh (n x T), DW (T x n), Z (n x V)
    if (auto stop = findComponents(run)) return stop;                 // M (T x n), Q (n x T)
    buildMapsAndTimeCourses(run);                                     // S (K x V), A (T x K), B; "_ICA.rtc"
    computeFingerprint(run);                                          // 16 values per component; "ParamsMatrix.txt"
    outputMaps(run);                                                  // the host's maps, saved
    return std::nullopt;
}

constexpr char kHostFailed[] = "A function of the host failed";

// The host's exceptions may be of any class, also of one that has no text.
const char* textOf(const std::exception& error) {
    const char* text = error.what();
    return text ? text : kHostFailed;
}

// Whatever ends a run early, the user is told. An exception of another kind comes from a host function.
Stop runToAnEnd(BusyCursor& cursor) {
    try {
        if (auto stop = runStages(cursor)) return *stop;
        return finish(cursor);
    } catch (const FatalNumericError& error) {
        return stopAfterFatalError(cursor, error.what());
    } catch (const std::bad_alloc&) {
        return stopWithMemoryFull(cursor);
    } catch (const std::exception& error) {
        return stopAfterFatalError(cursor, textOf(error));
    } catch (...) {
        return stopAfterFatalError(cursor, kHostFailed);
    }
}

} // namespace

bool executeRun() noexcept {
    if (!isHostBound()) return false;
    const QuietFloatingPoint quiet;
    const UnwindFatalErrors unwind;
    BusyCursor cursor;
    try {
        return runToAnEnd(cursor).result;
    } catch (...) {
        return false; // not even the message could be shown
    }
}
