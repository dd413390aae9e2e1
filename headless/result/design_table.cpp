#include "headless/result/design_table.h"

#include "headless/text/text_file.h"

#include <algorithm>

namespace zn::headless {

void writeDesignTable(const std::filesystem::path& file, const DesignMatrix& design) {
    std::string text;
    for (std::string name : design.names) {
        std::replace_if(
            name.begin(), name.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
        text += (text.empty() ? "" : "\t") + name;
    }
    text += '\n';
    const std::size_t volumes = design.predictors.empty() ? 0 : design.predictors.front().size();
    for (std::size_t t = 0; t < volumes; ++t) {
        const char* separator = "";
        for (const auto& predictor : design.predictors) {
            text += separator + cellText(predictor[t]);
            separator = "\t";
        }
        text += '\n';
    }
    writeTextFile(file, text);
}

} // namespace zn::headless
