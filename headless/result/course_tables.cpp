#include "headless/result/course_tables.h"

#include "headless/result/result_names.h"
#include "headless/text/text_file.h"

#include <span>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

struct Column {
    std::string name;
    std::span<const float> values; // [volume]
};

void writeColumns(const std::filesystem::path& file, const std::vector<Column>& columns) {
    std::string text;
    for (const Column& column : columns) text += (&column == &columns.front() ? "" : "\t") + column.name;
    text += '\n';
    const std::size_t volumes = columns.empty() ? 0 : columns.front().values.size();
    for (std::size_t t = 0; t < volumes; ++t) {
        const char* separator = "";
        for (const Column& column : columns) {
            text += separator + cellText(column.values[t]);
            separator = "\t";
        }
        text += '\n';
    }
    writeTextFile(file, text);
}

} // namespace

void writeMixingTable(const std::filesystem::path& file, const VolumeMaps& maps) {
    std::vector<Column> columns;
    for (const VolumeMap& map : maps.maps()) {
        columns.push_back({componentName(static_cast<int>(columns.size())), map.timeCourse});
    }
    writeColumns(file, columns);
}

void writeTimeSeriesTable(const std::filesystem::path& file, const ComponentCourses& courses) {
    std::vector<Column> columns;
    for (const auto& course : courses.courses) {
        columns.push_back({componentName(static_cast<int>(columns.size())), course});
    }
    columns.push_back({"spatial_mean", courses.spatialMean});
    writeColumns(file, columns);
}

void writeTimeSeriesDescription(const std::filesystem::path& file, int components) {
    constexpr char kUnits[] = "units of the analysed data, which are those of the input image unless it was scaled";
    nlohmann::ordered_json columns;
    for (int i = 0; i < components; ++i) {
        columns[componentName(i)] = {
            {"Description", "Time course of the component, not rescaled: the least-squares fit of all component maps "
                            "to each analysed volume. The sum of map times time course over the components, plus "
                            "spatial_mean, gives the analysed data back, apart from what the components leave out."},
            {"Units", std::string(kUnits) + ", per unit of the map"}};
    }
    columns["spatial_mean"] = {
        {"Description", "Mean over the analysed voxels, which is removed from each volume before the decomposition."},
        {"Units", kUnits}};
    writeTextFile(file, columns.dump(2) + "\n");
}

void writeDesignTable(const std::filesystem::path& file, const DesignMatrix& design) {
    std::vector<Column> columns;
    for (std::size_t i = 0; i < design.names.size(); ++i) {
        columns.push_back({cellText(design.names[i]), design.predictors[i]});
    }
    writeColumns(file, columns);
}

} // namespace zn::headless
