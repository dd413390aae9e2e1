#include "headless/design/read_design.h"

#include "headless/design/feat_matrix.h"
#include "headless/design/number_columns.h"
#include "headless/design/predictor_table.h"
#include "headless/design/rtc_text.h"
#include "headless/events/event_predictor.h"
#include "headless/failure/failure.h"
#include "headless/text/text_lines.h"

#include <algorithm>
#include <set>
#include <string>

namespace zn::headless {

namespace {

constexpr char kEvents[] = "BIDS events";
constexpr char kFormats[] =
    "a design is a BIDS events file, a table (TSV, CSV) with a header, FEAT's design.mat, AFNI's "
    ".1D or RTC text.";

Design fromEvents(const TextTable& table, const AnalysedVolumes& volumes) {
    Design design{{}, kEvents, 0, {}};
    for (const auto& [name, events] : conditionsIn(table)) {
        design.matrix.names.push_back(name);
        design.matrix.predictors.push_back(predictorOf(events, volumes));
        const auto& values = design.matrix.predictors.back();
        if (std::any_of(values.begin(), values.end(), [](float value) { return value != 0.0f; })) continue;
        design.notes.push_back("Design: no event of " + name + " affects the analysed volumes.");
    }
    return design;
}

Design parse(const std::vector<std::string>& lines, const std::string& file, const AnalysedVolumes& volumes) {
    if (isRtc(lines)) return {parseRtc(lines, file), "RTC text", 0, {}};
    if (isFeatMatrix(lines)) return {parseFeatMatrix(lines, file), "FEAT design matrix", 0, {}};
    if (areNumberColumns(lines)) return {parseNumberColumns(lines, file), "number columns", 0, {}};
    const TextTable table = parseTable(lines, file);
    if (isEventTable(table)) return fromEvents(table, volumes);
    refusePartOfAnEventTable(table);
    return {predictorTable(table), "table", 0, {}};
}

// The file may be of another kind altogether, so the message on what is wrong also says what a design can be.
Design parseAny(const std::vector<std::string>& lines, const std::string& file, const AnalysedVolumes& volumes) {
    try {
        return parse(lines, file, volumes);
    } catch (const Failure& failure) {
        std::string text = failure.what();
        if (text.ends_with('.')) text.pop_back();
        refuseInput(text + "; " + kFormats);
    }
}

void requireCount(const Design& design, const std::string& file) {
    const std::size_t count = design.matrix.names.size();
    if (count <= kMaxPredictors) return;
    const bool events = design.format == kEvents;
    refuseInput(file + " has " + std::to_string(count) + (events ? " trial types" : " predictors") +
                "; the plug-in accepts at most " + std::to_string(kMaxPredictors) +
                (events ? " predictors; name fewer of them in trial_type." : "; keep only the columns that matter."));
}

void noteEqualNames(Design& design) {
    std::set<std::string> names;
    for (const std::string& name : design.matrix.names) {
        if (names.insert(name).second) continue;
        design.notes.push_back("Design: two predictors are named " + name + ", which the results do not distinguish.");
    }
}

void noteConstants(Design& design) {
    for (std::size_t i = 0; i < design.matrix.names.size(); ++i) {
        const auto& values = design.matrix.predictors[i];
        const bool varies = std::any_of(values.begin(), values.end(), [&](float value) { return value != values[0]; });
        if (varies) continue;
        design.notes.push_back("Design: " + design.matrix.names[i] +
                               " is constant over the analysed volumes, so it correlates with nothing.");
    }
}

void fitRows(Design& design, const AnalysedVolumes& volumes, const std::string& file) {
    const std::size_t rows = design.matrix.predictors.front().size();
    if (rows == static_cast<std::size_t>(volumes.count())) return;
    if (rows == static_cast<std::size_t>(volumes.inImage)) {
        design.omittedRows = volumes.omitted;
        for (auto& predictor : design.matrix.predictors) {
            predictor.erase(predictor.begin(), predictor.begin() + volumes.omitted);
        }
        return;
    }
    const std::string without =
        volumes.omitted > 0 ? " (" + std::to_string(volumes.count()) + " without the dummy scans)" : "";
    refuseInput(file + " has " + std::to_string(rows) + " rows of predictor values, but the data have " +
                std::to_string(volumes.inImage) + " volumes" + without +
                "; provide one row per volume, or the events with their times as a BIDS events file.");
}

} // namespace

Design readDesign(const std::filesystem::path& file, const AnalysedVolumes& volumes) {
    Design design = parseAny(readLines(file), file.string(), volumes);
    requireCount(design, file.string());
    noteEqualNames(design);
    fitRows(design, volumes, file.string());
    if (design.format != kEvents) noteConstants(design);
    return design;
}

} // namespace zn::headless
