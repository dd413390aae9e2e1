#include "headless/result/metrics.h"

namespace zn::headless {

namespace {

constexpr char kShareOfPower[] = ", divided by the component's largest share and then by the largest value in this "
                                 "band across the components of the run.";
constexpr char kBandUnits[] = "rescaled to 0..1 across the components of the run";

} // namespace

const std::array<Metric, 16> kMetrics = {{
    {"dm_pred_max", "DM pred max",
     "Largest absolute correlation of the component's time course with a predictor of the design matrix; 0 if there is "
     "no design matrix.",
     "Pearson correlation, 0 to 1"},
    {"dm_pred_index", "DM pred index",
     "Number of that predictor, counted from 1; also 1 when there is no design matrix.", "predictor number"},
    {"rms", "RMS", "Sample standard deviation of the component's time course after rescaling to 0..1.",
     "range of the time course"},
    {"template_max_corr", "Spatial Template (max corr)",
     "Largest absolute correlation of the component's map with a region of interest (1 inside, 0 outside) over the "
     "analysed voxels; 0 without regions.",
     "Pearson correlation, 0 to 1"},
    {"template_voi_index", "Spatial Template (VOI index)",
     "Number of that region in ascending order of the labels, counted from 1; 0 if none.", "region number"},
    {"degree_of_clustering", "Degree of Clustering",
     "Fraction of the voxels beyond the z threshold, of either sign, that lie in clusters of at least the minimum "
     "size; n/a when no voxel exceeds the threshold; 0 when clustering was skipped.",
     "fraction, 0 to 1"},
    {"skewness", "Skewness",
     "Absolute skewness of the map values: logarithm of its ratio to the smallest in the run, divided by the largest "
     "such logarithm.",
     "rescaled to 0..1 across the components of the run"},
    {"kurtosis", "Kurtosis",
     "Excess kurtosis of the map values: absolute logarithm, rescaled; n/a where the kurtosis is negative, and in the "
     "entire column when that of the first component is negative.",
     "rescaled to 0..1 across the components of the run"},
    {"spatial_entropy", "Spatial Entropy", "Histogram entropy of the map values: absolute logarithm, rescaled.",
     "rescaled to 0..1 across the components of the run"},
    {"lag1_autocorr", "1-Lag Autocorr", "Absolute autocorrelation of the time course at a lag of one volume.",
     "correlation"},
    {"temporal_entropy", "Temporal Entropy", "Histogram entropy of the time course: exponential, rescaled.",
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
    const std::string note = band == 2 ? " The plug-in gives it the same name as the first band." : "";
    if (!bands.defined()) {
        return "Not defined: the plug-in truncates the repetition time to whole seconds, and it is below one. " +
               std::string(band == 1 ? "1 for every component." : "n/a for every component.") + note;
    }
    if (band > bands.used) return "Not in use at this repetition time; n/a for every component." + note;
    return "Share of the time course's power " + bands.range(band) + kShareOfPower + note;
}

} // namespace zn::headless
