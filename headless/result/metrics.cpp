#include "headless/result/metrics.h"

namespace zn::headless {

namespace {

constexpr char kShareOfPower[] = ", divided by the component's own largest share, and then by the largest that a "
                                 "component of the run has in this band.";
constexpr char kBandUnits[] = "rescaled to 0..1 across the components of the run";

} // namespace

const std::array<Metric, 16> kMetrics = {{
    {"dm_pred_max", "DM pred max",
     "Largest absolute correlation of the component's time course with a predictor of the design matrix; 0 without "
     "one.",
     "Pearson correlation, 0 to 1"},
    {"dm_pred_index", "DM pred index",
     "Number of that predictor, counted from 1; 1 as well when there is no design matrix.", "predictor number"},
    {"rms", "RMS", "Sample standard deviation of the component's time course after its rescaling to 0..1.",
     "range of the time course"},
    {"template_max_corr", "Spatial Template (max corr)",
     "Largest absolute correlation of the component's map with a region of interest (1 inside, 0 outside) over the "
     "analysed voxels; 0 without regions.",
     "Pearson correlation, 0 to 1"},
    {"template_voi_index", "Spatial Template (VOI index)",
     "Number of that region in ascending order of the labels, counted from 1; 0 for none.", "region number"},
    {"degree_of_clustering", "Degree of Clustering",
     "Share of the voxels beyond the z threshold, of either sign, that lie in clusters of at least the minimum size; "
     "n/a when no voxel lies beyond it; 0 when clustering was skipped.",
     "fraction, 0 to 1"},
    {"skewness", "Skewness",
     "Absolute skewness of the map values; the logarithm of its ratio to the smallest one of the run, divided by the "
     "largest.",
     "rescaled to 0..1 across the components of the run"},
    {"kurtosis", "Kurtosis",
     "Excess kurtosis of the map values; absolute logarithm, rescaled; n/a where a kurtosis is negative, and in the "
     "whole column when the first one is.",
     "rescaled to 0..1 across the components of the run"},
    {"spatial_entropy", "Spatial Entropy", "Histogram entropy of the map values; absolute logarithm, rescaled.",
     "rescaled to 0..1 across the components of the run"},
    {"lag1_autocorr", "1-Lag Autocorr", "Absolute autocorrelation of the time course at a lag of one volume.",
     "correlation"},
    {"temporal_entropy", "Temporal Entropy", "Histogram entropy of the time course; exponential, rescaled.",
     "rescaled to 0..1 across the components of the run"},
    {"power_band_1", "Power Spectrum Band 1", kShareOfPower, kBandUnits},
    {"power_band_2", "Power Spectrum Band 1", kShareOfPower, kBandUnits},
    {"power_band_3", "Power Spectrum Band 3", kShareOfPower, kBandUnits},
    {"power_band_4", "Power Spectrum Band 4", kShareOfPower, kBandUnits},
    {"power_band_5", "Power Spectrum Band 5", kShareOfPower, kBandUnits},
}};

std::string metricDescription(std::size_t position, const FrequencyBands& bands) {
    if (position < kFirstBand) return kMetrics[position].description;
    const int band = static_cast<int>(position - kFirstBand) + 1;
    const std::string note = band == 2 ? " The plug-in names it like the first band." : "";
    if (!bands.defined()) {
        return "Not defined: the plug-in counts with whole seconds, and the repetition time is below one. " +
               std::string(band == 1 ? "1 for every component." : "n/a for every component.") + note;
    }
    if (band > bands.used) return "Not in use at this repetition time; n/a for every component." + note;
    return "Share of the time course's power " + bands.range(band) + kShareOfPower + note;
}

} // namespace zn::headless
