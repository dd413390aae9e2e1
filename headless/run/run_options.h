#pragma once

#include "headless/run/run_control.h"

#include <filesystem>
#include <optional>
#include <string>

namespace zn::headless {

/// The third member of each pair is what the plug-in takes when neither of its two switches is set.
enum class Nonlinearity { kTanh, kGauss, kCube };

/// Which voxels are analysed.
enum class MaskSource { kAutomatic, kFile, kNone };

/// Who says how many components there are: the options, the eigenvalues, or the number of volumes.
enum class ComponentCount { kGiven, kEstimated, kMost };

/// What `znica run` is asked to do.
struct RunOptions {
    std::filesystem::path functional; ///< 4D image
    std::filesystem::path out;
    MaskSource maskSource = MaskSource::kAutomatic;
    std::filesystem::path mask;        ///< of kFile
    std::filesystem::path design;      ///< empty: none
    std::filesystem::path regions;     ///< label image; empty: none
    std::filesystem::path regionNames; ///< empty: the labels' numbers
    std::filesystem::path plugin;      ///< empty: the one that belongs to the command
    int firstEigenvalue = 1;           ///< counted from 1, the largest
    int lastEigenvalue = 20;
    ComponentCount componentCount = ComponentCount::kGiven; ///< otherwise lastEigenvalue is settled later
    int dummyScans = 0;                                     ///< volumes left out at the beginning
    std::optional<double> memoryGib;                        ///< most memory to use; nothing: what is free
    bool dryRun = false;
    Nonlinearity nonlinearity = Nonlinearity::kTanh;
    float epsilon = 1e-4f;
    int maxIterations = 500;
    std::optional<int> clusterSize = 10; ///< nothing: the degree of clustering is skipped
    float zThreshold = 2.5f;
    std::optional<std::string> label;
    std::optional<double> secondsPerVolume; ///< instead of the header's
    bool force = false;
    RunControl control;

    int components() const { return lastEigenvalue - firstEigenvalue + 1; }
};

} // namespace zn::headless
