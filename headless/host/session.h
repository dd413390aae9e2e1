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

/// The fields of the host's ICA dialog, by the index with which the plug-in requests them.
struct DialogFields {
    std::array<std::string, 5> texts; ///< VTC, mask, output maps, design matrix, VOIs; empty: not given
    std::array<int, 10> integers{};
    std::array<float, 1> floats{};
};

/// The answers to the prompts of a run; no value means that the user cancels.
struct PromptAnswers {
    std::optional<int> clusterSize = 10;
    float zThreshold = 2.5f;
    std::optional<std::string> label;
};

/// A region of interest: its voxels as three coordinates each, in the space given by Session::coordinateSpace.
struct Region {
    std::string name;
    std::vector<std::int32_t> coordinates;
};

/// Events of a run. Called on the thread that runs the plug-in.
class SessionEvents {
public:
    virtual ~SessionEvents() = default;

    /// A line for the log, from the plug-in or from the host.
    virtual void logLine(std::string_view line) = 0;
    /// The plug-in requested a product of a matrix, transposed or not, with a vector: an iteration consists of these.
    virtual void vectorProduct(bool transposed) { (void)transposed; }
    /// A message box, meant for the user.
    virtual void message(std::string_view text) = 0;
    /// The maps are complete; the plug-in wants them saved under this name.
    virtual void saveMaps(const VolumeMaps& maps, std::string_view name) = 0;
    /// There is not enough memory for the maps. The plug-in would write through any pointer it is given, so this must
    /// not return.
    [[noreturn]] virtual void outOfMemory() = 0;
};

/// Whitened data whose components the plug-in lets the host find; see host/host_separation.def.
struct SeparationRequest {
    const double* z;           ///< n x V, row-major
    const double* dewhitening; ///< T x n, row-major
    int volumes;               ///< T
    int components;            ///< n
    int voxels;                ///< V
    int nonlinearity;          ///< 0: tanh, 1: gaussian, 2: cube
    double epsilon;
    int iterationLimit;
};

/// Finds components in place of the plug-in.
class Separator {
public:
    virtual ~Separator() = default;

    /// Writes the unit vector of component k into row k of `vectors` (n x n) and returns the number of components.
    virtual int separate(const SeparationRequest& request, double* vectors) = 0;
};

/// Everything the host knows during one run of a plug-in: data, answers, and the resulting maps. The functions that the
/// module exports read and write the attached session, on the one thread that runs the plug-in.
///
/// File names are only labels here: their data are in the session, and a name that differs from the one in the dialog
/// is treated as a file that does not exist.
struct Session {
    DialogFields dialog;
    PromptAnswers answers;

    std::array<int, 3> grid{}; ///< voxels along x, y, z
    int millisecondsPerVolume = 0;
    TimeSeries series;
    std::vector<unsigned char> mask; ///< one byte per voxel; empty: no mask
    bool maskLoaded = false;

    std::vector<Region> regions;
    std::int32_t coordinateSpace = 0; ///< value of VoiSetHeader::coordinateSpace
    bool regionsLoaded = false;

    DesignMatrix design;
    bool designLoaded = false;

    VolumeMaps maps; ///< what the plug-in hands back

    MatrixProducts* products = nullptr; ///< not owned; never null while the session is attached
    SessionEvents* events = nullptr;    ///< not owned; never null while the session is attached
    Separator* separator = nullptr;     ///< not owned; null: the plug-in finds the components itself
    std::exception_ptr failure;         ///< the first exception in a host function; none may cross the plug-in
    std::set<std::string> unavailable;  ///< functions that the plug-in called but this host lacks
};

} // namespace zn::headless
