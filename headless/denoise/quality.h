#pragma once

#include "headless/denoise/denoising.h"

#include <optional>
#include <vector>

namespace zn::headless {

/// A measure of the image before and after.
struct BeforeAfter {
    double before = 0.0;
    double after = 0.0;
};

/// The quality of an image before and after denoising, over the voxels of the mask and the analysed volumes.
struct Quality {
    BeforeAfter dvarsMean; ///< in units of the image
    BeforeAfter dvarsMedian;
    BeforeAfter tsnrMean; ///< mean over time by standard deviation over time
    BeforeAfter tsnrMedian;
    BeforeAfter variance;               ///< over time, per cent of that before
    BeforeAfter components;             ///< all, and those kept
    BeforeAfter degreesOfFreedom;       ///< volumes less one, and what the removal leaves of them
    std::optional<double> fdMean;       ///< framewise displacement, mm; nothing: the confounds have none
    std::optional<BeforeAfter> dvarsFd; ///< correlation of DVARS with framewise displacement
    int unlabelled = 0;                 ///< components without a label, which were kept; 0 for a list of rejected ones
};

Quality qualityOf(const Denoising& run);

/// A line of the table of measures.
struct QualityRow {
    const char* measure; ///< in tables
    const char* title;   ///< on the page
    const char* units;   ///< empty: none
    BeforeAfter values;
};

/// All measures that there are, in the order of the table.
std::vector<QualityRow> qualityRows(const Quality& quality);

} // namespace zn::headless
