#include "headless/group/steps/run_list.h"

#include "headless/result/result_names.h"
#include "headless/text/input_file.h"
#include "headless/text/text_lines.h"
#include "headless/text/text_table.h"

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

// What is missing in the table becomes empty.
std::string cellOf(const TextTable& table, std::size_t row, const char* column) {
    const auto position = table.find(column);
    if (!position || isMissing(table.rows[row][*position])) return "";
    return table.rows[row][*position];
}

} // namespace

ListedRun listedRun(const fs::path& image) {
    return {resultStem(image), image, {}, {}};
}

std::vector<ListedRun> readRunList(const fs::path& file) {
    const TextTable table = parseTable(readLines(file), file.string());
    if (!table.find("image"))
        refuseFile(file, "has no column named image; it needs one, and may have name, mask and results.");
    const fs::path folder = file.parent_path();
    std::vector<ListedRun> runs;
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        const std::string image = cellOf(table, row, "image");
        if (image.empty()) refuseFile(table.place(row, *table.find("image")), "has no value; name an image.");
        ListedRun run = listedRun(folder / image);
        if (const std::string name = cellOf(table, row, "name"); !name.empty()) run.name = name;
        if (const std::string mask = cellOf(table, row, "mask"); !mask.empty()) run.mask = folder / mask;
        if (const std::string results = cellOf(table, row, "results"); !results.empty()) run.results = folder / results;
        runs.push_back(run);
    }
    return runs;
}

} // namespace zn::headless
