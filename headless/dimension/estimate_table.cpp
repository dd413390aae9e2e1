#include "headless/dimension/estimate_table.h"

#include "headless/text/text_file.h"

#include <charconv>
#include <string>

namespace zn::headless {

namespace {

std::string cell(const std::vector<double>& curve, std::size_t index) {
    if (index >= curve.size()) return "n/a";
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, curve[index]).ptr};
}

} // namespace

void writeEstimateTable(const std::filesystem::path& file, const ComponentEstimate& estimate) {
    std::string text = "components\teigenvalue\tmdl\tlaplace\n";
    for (std::size_t i = 0; i < estimate.eigenvalues.size(); ++i) {
        text += std::to_string(i + 1) + '\t' + cell(estimate.eigenvalues, i) + '\t' + cell(estimate.mdl, i) + '\t' +
                cell(estimate.laplace, i) + '\n';
    }
    writeTextFile(file, text);
}

} // namespace zn::headless
