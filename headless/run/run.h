#pragma once

#include "headless/blas/matrix_products.h"
#include "headless/confounds/confound_table.h"
#include "headless/dimension/component_estimate.h"
#include "headless/host/session.h"
#include "headless/mask/voxel_summary.h"
#include "headless/measures/component_courses.h"
#include "headless/measures/component_measures.h"
#include "headless/measures/kept_variance.h"
#include "headless/nifti/image_header.h"
#include "headless/result/result_files.h"
#include "headless/result/result_folder.h"
#include "headless/result/stability.h"
#include "headless/run/plugin_library.h"
#include "headless/run/progress.h"
#include "headless/run/repetition_time.h"
#include "headless/run/run_log.h"
#include "headless/run/run_notes.h"
#include "headless/run/run_options.h"
#include "headless/run/stopwatch.h"
#include "headless/run/symmetric_separator.h"

#include <cstdint>
#include <future>
#include <optional>
#include <vector>

namespace zn::headless {

/// The voxels that a run analyses.
struct RunMask {
    std::vector<unsigned char> voxels; ///< one byte per voxel of the grid
    std::int64_t count = 0;
    ExcludedVoxels excluded; ///< from those requested
    ExcludedVoxels excludedWhenPrepared;
};

/// What was done to the time courses before the analysis.
struct PreparationFacts {
    std::optional<std::array<double, 3>> smoothnessMm; ///< of the data as read, along x, y, z; nothing: not estimated
    double smoothedMm = 0.0;                           ///< full width at half maximum; 0: not smoothed
};

/// Where the design matrix came from.
struct DesignSource {
    std::filesystem::path file; ///< empty: none
    std::string format;
    int omittedRows = 0;
};

/// Elapsed seconds of the parts of a run.
struct RunTimes {
    double reading = 0.0;
    double plugin = 0.0;  ///< all runs of the plug-in, excluding the writing of maps in between
    double writing = 0.0; ///< component maps and time courses
};

/// A cluster of components over the runs, represented by its centrotype.
struct ClusterFacts {
    Stability stability;
    int components = 0; ///< in the cluster
    int run = 0;        ///< of the centrotype, from 0
    int component = 0;  ///< of that run, from 0
};

/// The outcome of running the plug-in several times on the same data.
struct RepeatFacts {
    std::vector<std::uint32_t> seeds;   ///< [run], including the first
    std::vector<int> found;             ///< [run], components found
    std::vector<Stability> stability;   ///< [component of the first run]
    std::vector<ClusterFacts> clusters; ///< the most stable first, in the order of the centrotypes' maps
    int converged = 0;                  ///< runs that found all components
};

/// The state of one `znica run`: each stage of the driver fills the members listed under its name and reads those
/// above.
struct Run {
    Run(const RunOptions& given, UnfinishedWork& work);

    const RunOptions& options; // as given; what is derived from them is below
    UnfinishedWork& unfinished;
    Stopwatch total;
    RunTimes seconds;
    RunNotes notes;
    Progress progress;

    // readInputs
    ImageHeader functional;
    RepetitionTime repetition;
    int volumes = 0;             // analysed, excluding the dummy scans
    EigenvalueRange eigenvalues; // an upper bound for --components auto until settleComponents
    int cosines = 0;             // removed by --high-pass
    Session session;
    DesignSource design;
    std::optional<Confounds> confounds;

    // checkBudget; the prediction is updated by settleMask
    std::optional<std::int64_t> budgetBytes; // nothing: free memory is unknown
    std::int64_t seriesBytes = 0;            // of the functional data as they are read
    std::int64_t predictedBytes = 0;

    // openResult
    std::optional<PluginLibrary> library;
    std::optional<ResultFolder> folder;
    std::optional<ResultFiles> files;

    // settleMask, prepareSeries, useMask, settleComponents
    RunMask mask;
    std::vector<float> mean; // over the volumes as read, NaN where one is not finite; empty without a report
    PreparationFacts preparation;
    std::optional<ComponentEstimate> estimate; // nothing: the number of components was given

    // separate, repeat
    std::optional<MatrixProducts> products;
    std::optional<RunLog> log;
    std::uint32_t seed = 0;                  // of the plug-in's random numbers, or of the symmetric estimate
    std::optional<SymmetricFacts> symmetric; // nothing with deflation
    std::optional<RepeatFacts> repeats;      // nothing after a single run
    std::future<double> mapsWriting;         // seconds it took; valid until finishMaps()

    // measureComponents
    ComponentCourses courses;
    std::vector<ComponentMeasures> measures; // [component]
    std::vector<double> temporalEigenvalues; // descending; empty when the plug-in left no file with them
    double keptPercent = 0.0;                // of the variance over time, by the eigenvalues kept; NaN if unknown

    int componentsFound() const { return static_cast<int>(session.maps.maps().size()); }
    std::int64_t voxelsAnalysed() const { return log->facts().voxels().value_or(0); } // as reported by the plug-in
    bool foundAll() const { return componentsFound() >= eigenvalues.count(); }
};

} // namespace zn::headless
