#include "headless/group/steps/run_metrics.h"

#include "headless/measures/map_moments.h"
#include "headless/result/result_names.h"
#include "headless/statistics/correlation.h"
#include "headless/text/text_file.h"

#include <span>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

std::string cell(double value) {
    return "\t" + cellText(static_cast<float>(value));
}

// Of a course with mean 0 and variance 1: the sum over t of c_t c_(t+1) over that of c_t squared.
double lagOne(std::span<const double> course) {
    double products = 0.0;
    double squares = 0.0;
    for (std::size_t t = 0; t < course.size(); ++t) {
        squares += course[t] * course[t];
        if (t > 0) products += course[t - 1] * course[t];
    }
    return products / squares;
}

constexpr char kDescription[] = R"({
  "component": {"Description": "Component of the group."},
  "amplitude": {"Description": "Standard deviation of the component's course before it was scaled to unit variance.",
                "Units": "units of the prepared data"},
  "group_similarity": {"Description": "Correlation of the run's effect map with the group's map over the mask."},
  "map_skewness": {"Description": "Skewness of the run's effect map, m3 / m2^1.5; not rescaled."},
  "map_kurtosis": {"Description": "Excess kurtosis of the run's effect map, m4 / m2^2 - 3; not rescaled."},
  "lag1_autocorr": {"Description": "Autocorrelation of the component's course at a lag of one volume."}
}
)";

} // namespace

void writeRunMetrics(const std::filesystem::path& table, const std::filesystem::path& description,
                     const DualRegression& regression, const GroupMaps& maps, int volumes) {
    const auto length = static_cast<std::size_t>(volumes);
    const std::size_t voxels = maps.values.size() / static_cast<std::size_t>(maps.count);
    const std::vector<unsigned char> all(voxels, 1);
    std::string text = "component\tamplitude\tgroup_similarity\tmap_skewness\tmap_kurtosis\tlag1_autocorr\n";
    for (std::size_t c = 0; c < static_cast<std::size_t>(maps.count); ++c) {
        const auto effect = std::span(regression.effect).subspan(c * voxels, voxels);
        const auto group = std::span(maps.values).subspan(c * voxels, voxels);
        const MapMoments moments = momentsOf(effect, all);
        text += componentName(static_cast<int>(c)) + cell(regression.amplitudes[c]) +
                cell(correlation(effect, group, [](std::size_t) { return true; })) + cell(moments.skewness) +
                cell(moments.kurtosis) + cell(lagOne(std::span(regression.courses).subspan(c * length, length))) + "\n";
    }
    writeTextFile(table, text);
    writeTextFile(description, kDescription);
}

} // namespace zn::headless
