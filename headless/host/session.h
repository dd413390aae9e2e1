#pragma once

#include "headless/blas/matrix_products.h"
#include "headless/design/design_matrix.h"
#include "headless/host/volume_maps.h"
#include "headless/nifti/time_series.h"

#include <array>
#include <cstdint>
#include <exception>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace zn::headless {

/// The fields of the host's ICA dialog, by the index under which the plug-in asks for them.
struct DialogFields {
    std::array<std::string, 5> texts; ///< VTC, mask, output maps, design matrix, VOIs; empty: not given
    std::array<int, 10> integers{};
    std::array<float, 1> floats{};
};

/// What the prompts of a run are answered with; nothing means that the user cancels.
struct PromptAnswers {
    std::optional<int> clusterSize = 10;
    float zThreshold = 2.5f;
    std::optional<std::string> label;
};

/// A region of interest: its voxels as three coordinates each in the space that the session's code names.
struct Region {
    std::string name;
    std::vector<std::int32_t> coordinates;
};

/// What a run tells its surroundings while it goes on. Called on the thread that runs the plug-in.
class SessionEvents {
public:
    virtual ~SessionEvents() = default;

    /// A line for the log: the plug-in's, or the host's own notes.
    virtual void logLine(std::string_view line) = 0;
    /// The plug-in had a matrix, transposed or not, multiplied with a vector: what an iteration consists of.
    virtual void vectorProduct(bool transposed) { (void)transposed; }
    /// A message box: the user should see it.
    virtual void message(std::string_view text) = 0;
    /// The maps are complete; the plug-in wants them kept under this name.
    virtual void saveMaps(const VolumeMaps& maps, std::string_view name) = 0;
    /// Memory for the maps is short. The plug-in would write through whatever it is given, so this must not return.
    [[noreturn]] virtual void outOfMemory() = 0;
};

/// Everything the host knows during one run of a plug-in: data, answers, and the maps that come out. The functions that
/// the module exports read and write the session that is attached, on the one thread that runs the plug-in.
///
/// File names are mere names here: the data behind them are in the session, and a name that differs from the one in
/// the dialog is a file that does not exist.
struct Session {
    DialogFields dialog;
    PromptAnswers answers;

    std::array<int, 3> grid{}; ///< voxels along x, y, z
    int millisecondsPerVolume = 0;
    TimeSeries series;
    std::vector<unsigned char> mask; ///< one byte a voxel; empty: no mask
    bool maskLoaded = false;

    std::vector<Region> regions;
    std::int32_t coordinateSpace = 0; ///< what VoiSetHeader::coordinateSpace says
    bool regionsLoaded = false;

    DesignMatrix design;
    bool designLoaded = false;

    VolumeMaps maps; ///< what the plug-in hands back

    MatrixProducts* products = nullptr; ///< not owned; never null while the session is attached
    SessionEvents* events = nullptr;    ///< not owned; never null while the session is attached
    std::exception_ptr failure;         ///< the first exception that a host function met; none may cross the plug-in
    std::set<std::string> unavailable;  ///< functions that the plug-in called although this host lacks them
};

} // namespace zn::headless
