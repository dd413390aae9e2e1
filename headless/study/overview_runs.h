#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zn::headless {

/// What the value of a column belongs to.
enum class OverviewKind { kAnalysis, kDenoising };

/// A measure of the runs of a study, a column of runs.tsv and of the page.
struct OverviewColumn {
    const char* name;   ///< in runs.tsv
    const char* title;  ///< on the page
    const char* units;  ///< empty: none
    const char* member; ///< JSON pointer into the record of the analysis or of the denoising
    double scale;       ///< from the record's unit
    const char* description;
    OverviewKind kind = OverviewKind::kAnalysis;
};

/// All of them, in the order of the table.
inline constexpr std::array kOverviewColumns = {
    OverviewColumn{"components_asked", "asked", "", "/ComponentsAsked", 1.0, "Number of components requested"},
    OverviewColumn{"components_found", "found", "", "/ComponentsFound", 1.0, "Number of components found"},
    OverviewColumn{"voxels", "voxels", "", "/Voxels", 1.0, "Number of voxels analysed"},
    OverviewColumn{"volumes", "volumes", "", "/Volumes", 1.0, "Number of volumes analysed"},
    OverviewColumn{"repetition_time", "TR", "s", "/RepetitionTime", 1.0, "Time between volumes"},
    OverviewColumn{"variance_percent", "variance", "%", "/VariancePercent", 1.0,
                   "Variance over time that the retained eigenvalues account for"},
    OverviewColumn{"stability", "stability", "", "/Stability", 1.0,
                   "Mean stability index of the components; only with --repeats"},
    OverviewColumn{"seconds", "time", "s", "/Seconds", 1.0, "Duration of the run"},
    OverviewColumn{"peak_memory_mib", "memory", "MiB", "/PeakMemoryBytes", 1.0 / 1048576.0, "Peak memory of the run"},
    OverviewColumn{"dvars_before", "DVARS before", "", "/Quality/dvars_median/Before", 1.0,
                   "Median DVARS before denoising, in units of the image", OverviewKind::kDenoising},
    OverviewColumn{"dvars_after", "DVARS after", "", "/Quality/dvars_median/After", 1.0,
                   "Median DVARS after denoising, in units of the image", OverviewKind::kDenoising},
    OverviewColumn{"tsnr_before", "tSNR before", "", "/Quality/tsnr_median/Before", 1.0,
                   "Median temporal signal-to-noise ratio before denoising", OverviewKind::kDenoising},
    OverviewColumn{"tsnr_after", "tSNR after", "", "/Quality/tsnr_median/After", 1.0,
                   "Median temporal signal-to-noise ratio after denoising", OverviewKind::kDenoising},
    OverviewColumn{"framewise_displacement", "FD", "mm", "/Quality/framewise_displacement_mean/Before", 1.0,
                   "Mean framewise displacement, which denoising does not change", OverviewKind::kDenoising},
    OverviewColumn{"dvars_fd_before", "r(DVARS, FD) before", "", "/Quality/dvars_fd_correlation/Before", 1.0,
                   "Correlation of DVARS with framewise displacement before denoising", OverviewKind::kDenoising},
    OverviewColumn{"dvars_fd_after", "r(DVARS, FD) after", "", "/Quality/dvars_fd_correlation/After", 1.0,
                   "Correlation of DVARS with framewise displacement after denoising", OverviewKind::kDenoising},
    OverviewColumn{"degrees_of_freedom_after", "df after", "", "/Quality/degrees_of_freedom/After", 1.0,
                   "Degrees of freedom that denoising leaves of the time courses", OverviewKind::kDenoising},
};

/// What the overview shows of the denoising of a run, besides its measures.
struct DenoisedRun {
    int exitStatus = 0;
    std::string message; ///< why it failed
    std::string method;  ///< "nonaggr", ...
    std::vector<std::string> notes;
    bool report = false; ///< there is "NAME_denoised.html"
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
    std::optional<DenoisedRun> denoised;                               ///< nothing: it was not denoised
};

/// The runs of a study in alphabetical order, from its records alone: logs/NAME.json, logs/denoise/NAME.json for
/// its denoised image, and logs/NAME.log without a record for runs that are under way or were killed. A damaged record
/// counts as none. Throws Failure (kInput) when the folder has neither.
std::vector<OverviewRun> readOverviewRuns(const std::filesystem::path& folder);

} // namespace zn::headless
