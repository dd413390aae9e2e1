#include "headless/study/write_overview.h"

#include "headless/failure/failure.h"
#include "headless/group/steps/group_page.h"
#include "headless/report/report_page.h"
#include "headless/study/overview_runs.h"
#include "headless/study/runs_table.h"
#include "headless/study/study_summary.h"
#include "headless/text/text_file.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <system_error>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

// Those of denoising only if some run has a value: many studies have no confounds.
std::vector<std::size_t> shownColumns(const std::vector<OverviewRun>& runs) {
    std::vector<std::size_t> shown;
    for (std::size_t i = 0; i < kOverviewColumns.size(); ++i) {
        const auto hasValue = [i](const OverviewRun& run) { return run.values[i].has_value(); };
        const bool always = kOverviewColumns[i].kind == OverviewKind::kAnalysis;
        if (always || std::any_of(runs.begin(), runs.end(), hasValue)) shown.push_back(i);
    }
    return shown;
}

Json columnsOf(const std::vector<std::size_t>& shown) {
    Json columns = Json::array();
    for (const std::size_t i : shown) {
        const OverviewColumn& column = kOverviewColumns[i];
        columns.push_back({{"title", column.title},
                           {"units", column.units},
                           {"description", column.description},
                           {"kind", column.kind == OverviewKind::kDenoising ? "denoising" : "analysis"}});
    }
    return columns;
}

// Four significant digits are what the page shows.
Json rounded(const std::optional<double>& value) {
    if (!value || !std::isfinite(*value)) return nullptr;
    if (*value == std::floor(*value)) return *value;
    const double unit = std::pow(10.0, std::floor(std::log10(std::fabs(*value))) - 3.0);
    return std::round(*value / unit) * unit;
}

Json denoisedOf(const OverviewRun& run) {
    if (!run.denoised) return nullptr;
    return {{"failed", run.denoised->exitStatus != 0},
            {"message", run.denoised->message},
            {"method", run.denoised->method},
            {"notes", run.denoised->notes},
            {"report", run.denoised->report}};
}

Json pageRun(const OverviewRun& run, const std::vector<std::size_t>& shown) {
    Json values = Json::array();
    Json outlying = Json::array();
    for (std::size_t column = 0; column < shown.size(); ++column) {
        values.push_back(rounded(run.values[shown[column]]));
        if (run.outlying[shown[column]]) outlying.push_back(column);
    }
    return {{"name", run.name},
            {"status", run.status},
            {"message", run.message},
            {"notes", run.notes},
            {"values", values},
            {"outlying", outlying},
            {"report", run.report},
            {"thumbnail", run.thumbnail},
            {"denoised", denoisedOf(run)},
            {"exitStatus", run.exitStatus ? Json(*run.exitStatus) : Json(nullptr)}};
}

// The page of the study's group analysis, relative to the overview; null if there is none.
Json groupPage(const fs::path& folder) {
    const fs::path page = fs::path("group") / kGroupPage;
    std::error_code error;
    return fs::exists(folder / page, error) ? Json(page.generic_string()) : Json(nullptr);
}

// False, with a message, where the template of the page is not installed.
bool writePage(const fs::path& folder, const std::vector<OverviewRun>& runs) {
    const fs::path page = findReportTemplate(kStudyTemplate);
    if (page.empty()) {
        std::fprintf(stderr, "znica: no index.html was written because its template is not installed.\n");
        return false;
    }
    const std::vector<std::size_t> shown = shownColumns(runs);
    Json list = Json::array();
    for (const OverviewRun& run : runs) list.push_back(pageRun(run, shown));
    const Json data = {{"name", fs::absolute(folder).filename().string()},
                       {"version", ZNICA_VERSION},
                       {"group", groupPage(folder)},
                       {"columns", columnsOf(shown)},
                       {"runs", std::move(list)}};
    ReportPage report(page);
    report.add("study", data.dump(-1, ' ', false, Json::error_handler_t::replace));
    report.write(folder / "index.html");
    return true;
}

std::string summaryOf(const std::vector<OverviewRun>& runs) {
    StudySummary summary(runs.size());
    const bool denoises = std::any_of(runs.begin(), runs.end(), [](const auto& run) { return run.denoised; });
    for (const OverviewRun& run : runs) {
        RunOutcome outcome;
        outcome.status = run.exitStatus.value_or(static_cast<int>(ExitStatus::kOther));
        summary.add(run.name, outcome);
        if (!run.denoised) {
            if (denoises) summary.addNeverDenoised(run.name);
            continue;
        }
        outcome.status = run.denoised->exitStatus;
        summary.addDenoised(run.name, outcome);
    }
    return summary.text();
}

} // namespace

std::string writeOverview(const fs::path& folder) {
    const std::vector<OverviewRun> runs = readOverviewRuns(folder);
    replaceTextFile(folder / "runs.tsv", runsTable(runs));
    replaceTextFile(folder / "runs.json", runsDescription());
    const fs::path overview = folder / (writePage(folder, runs) ? "index.html" : "runs.tsv");
    return summaryOf(runs) + "; overview: " + overview.string();
}

void refreshOverview(const fs::path& folder) {
    std::error_code error;
    if (!fs::exists(folder / "index.html", error)) return;
    try {
        writeOverview(folder);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "znica: the overview was not updated: %s\n", failure.what());
    }
}

} // namespace zn::headless
