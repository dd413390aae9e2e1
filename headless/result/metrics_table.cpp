#include "headless/result/metrics_table.h"

#include "headless/result/metrics.h"
#include "headless/result/result_names.h"
#include "headless/text/text_file.h"

namespace zn::headless {

namespace {

float valueAt(const VolumeMap& map, std::size_t position) {
    return position < map.parameters.size() ? map.parameters[position] : NAN;
}

std::string cell(double value) {
    return "\t" + cellText(static_cast<float>(value));
}

std::string headerLine(const ComponentFacts& facts) {
    std::string text = "component";
    for (const Metric& metric : kMetrics) text += std::string("\t") + metric.column;
    text += "\texplained_variance\tmap_skewness\tmap_kurtosis";
    if (!facts.names.confounds.empty()) text += "\tconfound_max_corr\tconfound_name";
    text += "\tdm_pred_name\ttemplate_voi_name\tclassification";
    return text + (facts.stability.empty() ? "\n" : "\tstability_iq\tstability_runs\n");
}

std::string measureCells(const ComponentMeasures& measures, const std::vector<std::string>& confounds) {
    std::string text =
        cell(measures.explainedPercent) + cell(measures.moments.skewness) + cell(measures.moments.kurtosis);
    if (confounds.empty()) return text;
    const auto& [confound, r] = measures.confound;
    if (confound < 0) return text + "\tn/a\tn/a";
    return text + cell(std::fabs(r)) + "\t" + cellText(confounds[static_cast<std::size_t>(confound)]);
}

std::string stabilityCells(const Stability& stability) {
    return cell(stability.index) + "\t" + std::to_string(stability.runs);
}

} // namespace

std::string ReferenceNames::at(const std::vector<std::string>& names, float number) {
    const bool named = number >= 1.0f && number <= static_cast<float>(names.size());
    return named ? names[static_cast<std::size_t>(number) - 1] : "n/a";
}

void writeMetricsTable(const std::filesystem::path& file, const VolumeMaps& maps, const ComponentFacts& facts) {
    const ReferenceNames& names = facts.names;
    std::string text = headerLine(facts);
    for (std::size_t i = 0; i < maps.maps().size(); ++i) {
        const VolumeMap& map = maps.maps()[i];
        text += componentName(static_cast<int>(i));
        for (std::size_t position = 0; position < kMetrics.size(); ++position) {
            text += "\t" + cellText(valueAt(map, position));
        }
        text += measureCells(facts.measures[i], names.confounds);
        text += "\t" + cellText(ReferenceNames::at(names.predictors, valueAt(map, kPredictorIndex)));
        text += "\t" + cellText(ReferenceNames::at(names.regions, valueAt(map, kRegionIndex))) + "\tn/a";
        if (!facts.stability.empty()) text += stabilityCells(facts.stability[i]);
        text += '\n';
    }
    writeTextFile(file, text);
}

} // namespace zn::headless
