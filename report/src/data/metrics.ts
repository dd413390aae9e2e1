/** The sixteen parameters of a component, in the plug-in's order. */
export interface Metric {
    column: string; // in the metrics table
    short: string; // beside a chart
    title: string; // in a list
}

export const METRICS: Metric[] = [
    { column: 'dm_pred_max', short: 'Predictor |r|', title: 'Design matrix: largest |r|' },
    { column: 'dm_pred_index', short: 'Predictor no.', title: 'Design matrix: predictor number' },
    { column: 'rms', short: 'RMS', title: 'Time-course spread (RMS)' },
    { column: 'template_max_corr', short: 'Template |r|', title: 'Spatial template: largest |r|' },
    { column: 'template_voi_index', short: 'Template no.', title: 'Spatial template: region number' },
    { column: 'degree_of_clustering', short: 'Clustering', title: 'Degree of clustering' },
    { column: 'skewness', short: 'Skewness', title: 'Skewness' },
    { column: 'kurtosis', short: 'Kurtosis', title: 'Kurtosis' },
    { column: 'spatial_entropy', short: 'Spatial entropy', title: 'Spatial entropy' },
    { column: 'lag1_autocorr', short: 'Lag-1 autocorr.', title: 'Lag-1 autocorrelation' },
    { column: 'temporal_entropy', short: 'Temporal entropy', title: 'Temporal entropy' },
    { column: 'power_band_1', short: 'Band\u00a01', title: 'Power band 1 (lowest)' },
    { column: 'power_band_2', short: 'Band\u00a02', title: 'Power band 2' },
    { column: 'power_band_3', short: 'Band\u00a03', title: 'Power band 3' },
    { column: 'power_band_4', short: 'Band\u00a04', title: 'Power band 4' },
    { column: 'power_band_5', short: 'Band\u00a05', title: 'Power band 5 (highest)' },
];

/** The fingerprint: the eleven parameters after the matches, always in this order. */
export const FINGERPRINT = METRICS.slice(5);
export const FINGERPRINT_START = 5;
