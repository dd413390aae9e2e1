#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zn::headless {

/// A measure of the runs of a study, a column of runs.tsv and of the page.
struct OverviewColumn {
    const char* name;   ///< in runs.tsv
    const char* title;  ///< on the page
    const char* units;  ///< empty: none
    const char* member; ///< of the record
    double scale;       ///< from the record's unit
    const char* description;
};

/// All of them, in the order of the table.
inline constexpr std::array kOverviewColumns = {
    OverviewColumn{"components_asked", "asked", "", "ComponentsAsked", 1.0, "Number of components requested"},
    OverviewColumn{"components_found", "found", "", "ComponentsFound", 1.0, "Number of components found"},
    OverviewColumn{"voxels", "voxels", "", "Voxels", 1.0, "Number of voxels analysed"},
    OverviewColumn{"volumes", "volumes", "", "Volumes", 1.0, "Number of volumes analysed"},
    OverviewColumn{"repetition_time", "TR", "s", "RepetitionTime", 1.0, "Time between volumes"},
    OverviewColumn{"variance_percent", "variance", "%", "VariancePercent", 1.0,
                   "Variance over time that the retained eigenvalues account for"},
    OverviewColumn{"stability", "stability", "", "Stability", 1.0,
                   "Mean stability index of the components; only with --repeats"},
    OverviewColumn{"seconds", "time", "s", "Seconds", 1.0, "Duration of the run"},
    OverviewColumn{"peak_memory_mib", "memory", "MiB", "PeakMemoryBytes", 1.0 / 1048576.0, "Peak memory of the run"},
};

/// One run as the overview shows it.
struct OverviewRun {
    std::string name;
    std::string participant;
    std::string session; ///< empty: none
    std::string task;
    std::string status; ///< "done", "fewer components", "no result", "no record"
    std::optional<int> exitStatus;
    std::string message;
    std::vector<std::string> notes;
    std::array<std::optional<double>, kOverviewColumns.size()> values; ///< [column]
    std::array<bool, kOverviewColumns.size()> outlying{};              ///< [column]
    bool report = false;                                               ///< there is "NAME.html"
    std::string thumbnail;                                             ///< pixels; see thumbnail.h
};

/// The runs of a study in alphabetical order, from its records alone: logs/NAME.json, and logs/NAME.log without a
/// record for runs that are under way or were killed. A damaged record counts as none. Throws Failure (kInput) when the
/// folder has neither.
std::vector<OverviewRun> readOverviewRuns(const std::filesystem::path& folder);

} // namespace zn::headless
