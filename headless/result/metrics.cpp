#include "headless/result/metrics.h"

namespace zn {

// Bands in fractions of the Nyquist frequency, which is half the sampling rate in whole seconds of the TR.
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
     "0 when clustering was skipped.",
     "fraction, 0 to 1"},
    {"skewness", "Skewness",
     "Skewness of the map values; the logarithm of its ratio to the smallest one of the run, divided by the largest.",
     "rescaled to 0..1 across the components of the run"},
    {"kurtosis", "Kurtosis",
     "Excess kurtosis of the map values; absolute logarithm, rescaled; n/a where a kurtosis is negative.",
     "rescaled to 0..1 across the components of the run"},
    {"spatial_entropy", "Spatial Entropy", "Histogram entropy of the map values; absolute logarithm, rescaled.",
     "rescaled to 0..1 across the components of the run"},
    {"lag1_autocorr", "1-Lag Autocorr", "Absolute autocorrelation of the time course at a lag of one volume.",
     "correlation"},
    {"temporal_entropy", "Temporal Entropy", "Histogram entropy of the time course; exponential, rescaled.",
     "rescaled to 0..1 across the components of the run"},
    {"power_band_1", "Power Spectrum Band 1",
     "Share of the time course's power from 0 to 0.032 of the Nyquist frequency.",
     "rescaled to 0..1 across the components of the run"},
    {"power_band_2", "Power Spectrum Band 1",
     "Share of the time course's power from 0.032 to 0.08 of the Nyquist frequency. The plug-in names it like the "
     "first "
     "band.",
     "rescaled to 0..1 across the components of the run"},
    {"power_band_3", "Power Spectrum Band 3",
     "Share of the time course's power from 0.08 to 0.2 of the Nyquist frequency.",
     "rescaled to 0..1 across the components of the run"},
    {"power_band_4", "Power Spectrum Band 4",
     "Share of the time course's power from 0.2 to 0.4 of the Nyquist frequency.",
     "rescaled to 0..1 across the components of the run"},
    {"power_band_5", "Power Spectrum Band 5",
     "Share of the time course's power from 0.4 of the Nyquist frequency upwards.",
     "rescaled to 0..1 across the components of the run"},
}};

} // namespace zn
