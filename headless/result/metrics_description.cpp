#include "headless/result/metrics_description.h"

#include "headless/result/metrics.h"
#include "headless/text/text_file.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

using Json = nlohmann::ordered_json;

// {"1": "face", "2": "house"}
Json levelsOf(const std::vector<std::string>& names) {
    auto levels = Json::object();
    for (std::size_t i = 0; i < names.size(); ++i) levels[std::to_string(i + 1)] = names[i];
    return levels;
}

void describeParameters(Json& columns, const ReferenceNames& names, const FrequencyBands& bands) {
    for (std::size_t position = 0; position < kMetrics.size(); ++position) {
        const Metric& metric = kMetrics[position];
        columns[metric.column] = {{"LongName", metric.pluginName},
                                  {"Description", metricDescription(position, bands)},
                                  {"Units", metric.units}};
    }
    if (!names.predictors.empty()) columns[kMetrics[kPredictorIndex].column]["Levels"] = levelsOf(names.predictors);
    if (!names.regions.empty()) columns[kMetrics[kRegionIndex].column]["Levels"] = levelsOf(names.regions);
}

void describeMeasures(Json& columns) {
    columns["explained_variance"] = {
        {"LongName", "Explained variance"},
        {"Description", "Share of the variance over time that the component explains: sum of squares of its map times "
                        "its time course in desc-ICA_timeseries.tsv, without the mean over time, divided by that of "
                        "the analysed data without the means over time and over voxels. The shares of the components "
                        "add up to that of all of them."},
        {"Units", "%"}};
    columns["map_skewness"] = {
        {"LongName", "Skewness of the map"},
        {"Description", "Skewness of the map values over the analysed voxels, m3 / m2^1.5; not rescaled. Its sign is "
                        "that of the map's longer tail."},
        {"Units", "none; 0 for a normal distribution"}};
    columns["map_kurtosis"] = {
        {"LongName", "Excess kurtosis of the map"},
        {"Description", "Kurtosis of the map values over the analysed voxels, m4 / m2^2 - 3; not rescaled."},
        {"Units", "none; 0 for a normal distribution"}};
}

void describeConfounds(Json& columns) {
    columns["confound_max_corr"] = {
        {"LongName", "Confound (max corr)"},
        {"Description", "Largest absolute correlation of the component's time course with a confound, over the volumes "
                        "in which the confound has a value."},
        {"Units", "Pearson correlation, 0 to 1"}};
    columns["confound_name"] = {{"Description", "Name of that confound; its column in the file of --confounds."},
                                {"Units", "name"}};
}

void describeStability(Json& columns) {
    columns["stability_iq"] = {
        {"LongName", "Stability index Iq"},
        {"Description", "Mean absolute spatial correlation within this component's cluster of components from all "
                        "runs, minus that with the components outside the cluster (Himberg et al. 2004); n/a "
                        "when no other component is in the cluster."},
        {"Units", "difference of correlations, at most 1"}};
    columns["stability_runs"] = {{"Description", "Runs that have a component in that cluster."}, {"Units", "runs"}};
}

} // namespace

void writeMetricsDescription(const std::filesystem::path& file, const ComponentFacts& facts,
                             const FrequencyBands& bands) {
    Json columns;
    columns["component"] = {{"Description", "Component, in the order of the maps, counted from ICA_00."},
                            {"Units", "name"}};
    describeParameters(columns, facts.names, bands);
    describeMeasures(columns);
    if (!facts.names.confounds.empty()) describeConfounds(columns);
    columns["dm_pred_name"] = {{"Description", "Name of the predictor in dm_pred_index; n/a without a design matrix."},
                               {"Units", "name"}};
    columns["template_voi_name"] = {{"Description", "Name of the region in template_voi_index; n/a without regions."},
                                    {"Units", "name"}};
    columns["classification"] = {{"Description", "To be filled in by the reader; n/a, as here, until then."},
                                 {"Levels",
                                  {{"signal", "the component is of neuronal origin or otherwise of interest"},
                                   {"noise", "the component is of no interest"},
                                   {"unsure", "the reader cannot decide"}}}};
    if (!facts.stability.empty()) describeStability(columns);
    writeTextFile(file, columns.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
}

} // namespace zn::headless
