// Fuzz target: the report of a result of one component and three volumes. An input replaces the record if it is JSON,
// the tables if they are separated by form feeds (see result_tables.cpp), and otherwise all three images.

#include "attack/fuzz/input.h"

#include "cli/nifti_bytes.h"

#include "headless/report/write_report.h"
#include "headless/result/metrics.h"

namespace {

using zn::test::inputFile;

constexpr char kRecord[] = R"({
"GeneratedBy": {"Version": "2", "Plugin": {"Version": "1"}}, "ComponentsFound": 1, "PeakMemoryBytes": 1,
"Input": {"Volumes": 3, "RepetitionTimeMilliseconds": 2000, "File": "x.nii", "Size": [3, 2, 2]},
"Settings": {"Components": 1, "FirstEigenvalue": 1, "LastEigenvalue": 1, "Epsilon": 0.1, "MaxIterations": 9,
"ZThreshold": 2, "ClusterSize": 10, "Nonlinearity": "tanh"}, "ElapsedSeconds": {"Total": 1}, "RetainedVariancePercent": null,
"Predictors": [], "Regions": [], "Components": [{"Name": "ICA_00"}], "Eigenvalues": [3, 2, 1]})";

std::string metrics() {
    std::string header = "component";
    std::string row = "ICA_00";
    for (const zn::headless::Metric& metric : zn::headless::kMetrics) {
        header += std::string("\t") + metric.column;
        row += "\t0.5";
    }
    return header + "\n" + row + "\n";
}

// A map of 3 x 2 x 2 voxels.
std::string map() {
    zn::test::NiftiBytes image;
    image.dim = {3, 3, 2, 2, 1, 1, 1, 1};
    image.dataType = 16;
    image.bitsPerVoxel = 32;
    for (int i = 0; i < 12; ++i) image.append(static_cast<float>(i * i % 7) + 0.5f);
    return image.bytes();
}

void writeTables(const std::vector<std::string>& tables) {
    inputFile("report/x_desc-ICA_metrics.tsv", tables[0]);
    inputFile("report/x_desc-ICA_mixing.tsv", tables[1]);
    inputFile("report/x_desc-ICA_design.tsv", tables[2]);
}

void writeImages(std::string_view image) {
    for (const char* name : {"x_desc-ICA_components.nii.gz", "x_desc-brain_mask.nii.gz", "x_desc-mean_bold.nii.gz"}) {
        inputFile(std::string("report/") + name, image);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto page = inputFile("template.html", "<!-- the data of the run -->");
    const std::string text = zn::test::textInput(data, size);
    const auto tables = zn::test::piecesOf(text, '\f');
    const bool isRecord = text.starts_with('{') || text.starts_with('[');
    const bool isTables = !isRecord && tables.size() == 3;
    const auto record = inputFile("report/x_desc-ICA_decomposition.json", isRecord ? text : kRecord);
    inputFile("report/x_desc-ICA_metrics.json", "{}");
    writeTables(isTables ? tables : std::vector<std::string>{metrics(), "ICA_00\n0\n1\n0.5\n", "Task\n0\n1\n0\n"});
    writeImages(isRecord || isTables ? map() : text);
    zn::test::mayRefuse([&] { zn::headless::writeReport(record.parent_path(), page); });
    return 0;
}
