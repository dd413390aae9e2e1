#include "headless/study/runs_table.h"

#include "headless/text/text_file.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

std::string textCell(const std::string& text) {
    return text.empty() ? "n/a" : cellText(text);
}

std::string joined(const std::vector<std::string>& texts, const char* between) {
    std::string all;
    for (const std::string& text : texts) all += (all.empty() ? "" : between) + text;
    return all;
}

std::string row(const OverviewRun& run) {
    std::string text = run.name;
    for (const std::string* cell : {&run.participant, &run.session, &run.task, &run.status})
        text += "\t" + textCell(*cell);
    text += "\t" + (run.exitStatus ? std::to_string(*run.exitStatus) : "n/a");
    std::vector<std::string> outliers;
    for (std::size_t column = 0; column < kOverviewColumns.size(); ++column) {
        text += "\t" + (run.values[column] ? cellText(static_cast<float>(*run.values[column])) : "n/a");
        if (run.outlying[column]) outliers.emplace_back(kOverviewColumns[column].name);
    }
    for (const std::string& cell : {joined(outliers, ","), joined(run.notes, " "), run.message}) {
        text += "\t" + textCell(cell);
    }
    return text + "\n";
}

} // namespace

std::string runsTable(const std::vector<OverviewRun>& runs) {
    std::string text = "run\tparticipant_id\tsession\ttask\tstatus\texit_status";
    for (const OverviewColumn& column : kOverviewColumns) text += std::string("\t") + column.name;
    text += "\toutliers\tnotes\tmessage\n";
    for (const OverviewRun& run : runs) text += row(run);
    return text;
}

std::string runsDescription() {
    nlohmann::ordered_json json;
    json["run"] = {{"Description", "Name of the run: the entities of its image"}};
    json["status"] = {{"Description", "What the run has"},
                      {"Levels",
                       {{"done", "A result with all components"},
                        {"fewer components", "A result with fewer components than requested"},
                        {"no result", "Nothing; the message says why"},
                        {"no record", "Unknown: it is under way, was killed, or its record is damaged"}}}};
    json["exit_status"] = {{"Description", "Exit status of znica run; 128 + signal when a signal ended it"}};
    for (const OverviewColumn& column : kOverviewColumns) {
        json[column.name] = {{"Description", column.description}};
        if (*column.units != '\0') json[column.name]["Units"] = column.units;
    }
    json["outliers"] = {{"Description", "Columns whose value is more than three median absolute deviations (x 1.4826) "
                                        "from the median over all runs"}};
    json["notes"] = {{"Description", "Remarks on the input"}};
    json["message"] = {{"Description", "Why a result is missing or incomplete"}};
    return json.dump(2) + "\n";
}

} // namespace zn::headless
