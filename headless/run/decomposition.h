#pragma once

#include "headless/dimension/component_estimate.h"
#include "headless/failure/failure.h"
#include "headless/host/session.h"
#include "headless/mask/voxel_summary.h"
#include "headless/nifti/image_header.h"
#include "headless/result/plugin_log.h"
#include "headless/run/plugin_library.h"
#include "headless/run/repeat_runs.h"
#include "headless/run/repetition_time.h"
#include "headless/run/run_options.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// Everything that is known about a run at its end; points to what its owners keep.
struct RunFacts {
    const RunOptions* options = nullptr;
    const ImageHeader* functional = nullptr;
    const Session* session = nullptr;
    const RepetitionTime* repetition = nullptr;
    std::vector<std::string> inputNotes;         ///< sentences that the user was told about the input
    LeftVoxels left;                             ///< the mask, because they cannot be analysed
    const ComponentEstimate* estimate = nullptr; ///< null: the number of components was given
    const PluginLibrary* library = nullptr;
    const PluginLog* log = nullptr;
    std::filesystem::path pluginFolder;   ///< where the plug-in's own files are
    const RepeatFacts* repeats = nullptr; ///< null after a single run
    std::uint32_t seed = 0;               ///< of the plug-in's random numbers
    int threads = 1;                      ///< of the matrix products
    double secondsReading = 0.0;
    double secondsPlugin = 0.0;  ///< all runs, without the writing of maps in their midst
    double secondsWriting = 0.0; ///< component maps and time courses
    double secondsTotal = 0.0;   ///< up to the moment of writing this down
    std::int64_t peakMemoryBytes = 0;
    std::int64_t predictedMemoryBytes = 0;

    int found() const { return static_cast<int>(session->maps.maps().size()); }
    std::int64_t voxels() const { return log->voxels().value_or(0); }
};

/// The most memory this process ever had in use.
std::int64_t peakMemoryBytes();

/// Writes settings, versions, eigenvalues, the components with their iterations and parameters, and the costs of a run
/// as JSON. A number that is none (not-a-number, infinity) is null. Throws Failure (kOther).
void writeDecomposition(const std::filesystem::path& file, const RunFacts& facts);

/// Writes in few words how the run ended: {"status": "done" or "gave up", "exit_status": 0 or 4,
/// "partial": whether components are missing, ...}.
void writeStatus(const std::filesystem::path& file, const RunFacts& facts, ExitStatus status);

} // namespace zn::headless
