#include "headless/result/metrics_table.h"

#include "headless/result/metrics.h"
#include "headless/result/result_names.h"
#include "headless/text/text_file.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

float valueAt(const VolumeMap& map, std::size_t position) {
    return position < map.parameters.size() ? map.parameters[position] : NAN;
}

std::string stabilityCells(const Stability& stability) {
    return "\t" + cellText(static_cast<float>(stability.index)) + "\t" + std::to_string(stability.runs);
}

// {"1": "face", "2": "house"}
nlohmann::ordered_json levelsOf(const std::vector<std::string>& names) {
    auto levels = nlohmann::ordered_json::object();
    for (std::size_t i = 0; i < names.size(); ++i) levels[std::to_string(i + 1)] = names[i];
    return levels;
}

} // namespace

std::string ReferenceNames::at(const std::vector<std::string>& names, float number) {
    const bool named = number >= 1.0f && number <= static_cast<float>(names.size());
    return named ? names[static_cast<std::size_t>(number) - 1] : "n/a";
}

void writeMetricsTable(const std::filesystem::path& file, const VolumeMaps& maps, const ReferenceNames& names,
                       const std::vector<Stability>& stability) {
    std::string text = "component";
    for (const Metric& metric : kMetrics) text += std::string("\t") + metric.column;
    text += "\tdm_pred_name\ttemplate_voi_name\tclassification";
    text += stability.empty() ? "\n" : "\tstability_iq\tstability_runs\n";
    int index = 0;
    for (const VolumeMap& map : maps.maps()) {
        text += componentName(index++);
        for (std::size_t position = 0; position < kMetrics.size(); ++position) {
            text += "\t" + cellText(valueAt(map, position));
        }
        text += "\t" + cellText(ReferenceNames::at(names.predictors, valueAt(map, kPredictorIndex)));
        text += "\t" + cellText(ReferenceNames::at(names.regions, valueAt(map, kRegionIndex))) + "\tn/a";
        if (!stability.empty()) text += stabilityCells(stability[static_cast<std::size_t>(index) - 1]);
        text += '\n';
    }
    writeTextFile(file, text);
}

void writeMetricsDescription(const std::filesystem::path& file, const ReferenceNames& names,
                             const FrequencyBands& bands, bool withStability) {
    nlohmann::ordered_json columns;
    columns["component"] = {{"Description", "Component, in the order of extraction, counted from ICA_00."},
                            {"Units", "name"}};
    for (std::size_t position = 0; position < kMetrics.size(); ++position) {
        const Metric& metric = kMetrics[position];
        columns[metric.column] = {{"LongName", metric.pluginName},
                                  {"Description", metricDescription(position, bands)},
                                  {"Units", metric.units}};
    }
    if (!names.predictors.empty()) columns[kMetrics[kPredictorIndex].column]["Levels"] = levelsOf(names.predictors);
    if (!names.regions.empty()) columns[kMetrics[kRegionIndex].column]["Levels"] = levelsOf(names.regions);
    columns["dm_pred_name"] = {{"Description", "Name of the predictor in dm_pred_index; n/a without a design matrix."},
                               {"Units", "name"}};
    columns["template_voi_name"] = {{"Description", "Name of the region in template_voi_index; n/a without regions."},
                                    {"Units", "name"}};
    columns["classification"] = {{"Description", "To be filled in by the reader; n/a, as here, until then."},
                                 {"Levels",
                                  {{"signal", "the component is of neuronal origin or otherwise of interest"},
                                   {"noise", "the component is of no interest"},
                                   {"unsure", "the reader cannot decide"}}}};
    if (withStability) {
        columns["stability_iq"] = {
            {"LongName", "Stability index Iq"},
            {"Description", "Mean absolute spatial correlation within this component's cluster of components from all "
                            "runs, minus that with the components outside the cluster (Himberg et al. 2004); n/a "
                            "when no other component is in the cluster."},
            {"Units", "difference of correlations, at most 1"}};
        columns["stability_runs"] = {{"Description", "Runs that have a component in that cluster."}, {"Units", "runs"}};
    }
    writeTextFile(file, columns.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n");
}

} // namespace zn::headless
