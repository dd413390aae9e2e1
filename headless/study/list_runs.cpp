#include "headless/study/list_runs.h"

#include "headless/failure/as_failure.h"
#include "headless/run/run_driver.h"
#include "headless/text/text_file.h"

#include <cstdio>
#include <exception>
#include <optional>

namespace zn::headless {

namespace {

std::string cellOr(const std::filesystem::path& file) {
    return file.empty() ? "n/a" : cellText(file.string());
}

std::string line(const PlannedRun& run, const StudyOptions& options) {
    std::string problem = run.problem;
    std::optional<RunForecast> forecast;
    if (problem.empty()) {
        try {
            forecast = forecastRun(runOptions(run, options));
        } catch (const std::exception& error) {
            problem = asFailure(error).what();
        }
    }
    const auto number = [&](double value) { return forecast ? cellText(static_cast<float>(value)) : "n/a"; };
    const RunForecast known = forecast.value_or(RunForecast());
    constexpr std::int64_t kMebibyte = 1048576;
    std::string text = run.name;
    for (const std::string& cell :
         {number(known.secondsPerVolume), number(known.volumes),
          forecast ? std::to_string((known.peakBytes + kMebibyte - 1) / kMebibyte) : std::string("n/a"),
          std::to_string(run.dummyScans), cellOr(run.mask), cellOr(run.confounds), cellOr(run.events),
          cellText(run.image.string()), problem.empty() ? std::string("n/a") : cellText(problem)}) {
        text += "\t" + cell;
    }
    return text;
}

} // namespace

void listRuns(const StudyPlan& plan, const StudyOptions& options) {
    std::printf("run\trepetition_time\tvolumes\tmemory_mib\tdummy_scans\tmask\tconfounds\tevents\timage\tproblem\n");
    for (const PlannedRun& run : plan.runs) std::printf("%s\n", line(run, options).c_str());
}

} // namespace zn::headless
