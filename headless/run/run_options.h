#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zn::headless {

/// The plug-in uses tanh when neither of its two switches is set.
enum class Nonlinearity { kTanh, kGauss, kCube };

/// How the components are found: one after another by the plug-in, or all at once by this command.
enum class Approach { kDeflation, kSymmetric };

/// Which voxels are analysed.
enum class MaskSource { kAutomatic, kFile, kNone };

/// What determines the number of components: the options, the eigenvalues, or the number of volumes.
enum class ComponentCount { kGiven, kEstimated, kMaximum };

/// The eigenvalues that are kept, counted from 1 in descending order; as many components are extracted.
struct EigenvalueRange {
    int first = 1;
    int last = 20;

    int count() const { return last - first + 1; }
};

/// The units of the analysed values.
enum class Scaling { kNone, kPercent, kUnitVariance };

/// What is done to the time courses before the analysis.
struct PreparationOptions {
    bool smoothIfNeeded = false;  ///< choose the width from the data; otherwise smoothMm holds
    double smoothMm = 0.0;        ///< full width at half maximum; 0: none
    double highPassSeconds = 0.0; ///< cut-off period; 0: none
    Scaling scaling = Scaling::kNone;

    bool any() const { return smoothIfNeeded || smoothMm > 0.0 || highPassSeconds > 0.0 || scaling != Scaling::kNone; }
};

/// How a run is carried out; none of it changes what is analysed.
struct RunControl {
    std::optional<std::uint32_t> seed; ///< nothing: a new one for every run
    std::optional<int> threads;        ///< nothing: those of the BLAS, at most the job's
    int repeats = 1;
    bool quiet = false;
    bool verbose = false;
    bool keepPartial = false;
    bool report = true; ///< write report.html
};

/// The options of `znica run`.
struct RunOptions {
    std::filesystem::path functional; ///< 4D image
    std::filesystem::path out;
    MaskSource maskSource = MaskSource::kAutomatic;
    std::filesystem::path mask;               ///< for kFile
    std::filesystem::path design;             ///< empty: none
    bool designBesideImage = false;           ///< the BIDS events file of the image, instead of `design`
    std::filesystem::path confounds;          ///< empty: none
    std::vector<std::string> confoundColumns; ///< empty: all
    std::filesystem::path regions;            ///< label image; empty: none
    std::filesystem::path regionNames;        ///< empty: regions are named by their labels
    std::filesystem::path plugin;             ///< empty: the one that belongs to the command
    PreparationOptions preparation{.smoothIfNeeded = true};
    ComponentCount componentCount = ComponentCount::kGiven;
    EigenvalueRange eigenvalues;     ///< for kGiven
    int dummyScans = 0;              ///< volumes to omit at the beginning
    std::optional<double> memoryGib; ///< limit on memory; nothing: what is free
    bool dryRun = false;
    Approach approach = Approach::kSymmetric;
    bool approachRequested = false; ///< otherwise a plug-in that has no such choice keeps its own
    int starts = 3;                 ///< for kSymmetric: random starts, of which the best is finished
    Nonlinearity nonlinearity = Nonlinearity::kTanh;
    float epsilon = 1e-4f;
    int maxIterations = 500;
    std::optional<int> clusterSize = 10; ///< nothing: the degree of clustering is skipped
    float zThreshold = 2.5f;
    std::optional<std::string> label;
    std::optional<double> secondsPerVolume;                     ///< instead of the sidecar's or the header's
    std::optional<std::vector<std::filesystem::path>> sidecars; ///< if known already, those that apply to the image
    bool force = false;
    RunControl control;
};

} // namespace zn::headless
