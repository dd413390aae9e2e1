#include "headless/study/runs_together.h"

#include "headless/failure/as_failure.h"
#include "headless/group/steps/run_problems.h"
#include "headless/run/repetition_time.h"
#include "headless/text/text_file.h"

#include <cstdio>
#include <exception>

namespace zn::headless {

namespace {

std::string cellOr(const std::string& text) {
    return text.empty() ? "n/a" : cellText(text);
}

std::string row(const PlannedRun& run, const StudyOptions& options) {
    std::string problem = run.problem;
    std::string seconds;
    std::string volumes;
    try {
        if (problem.empty()) {
            const ImageHeader header = readImageHeader(run.image);
            const auto time = repetitionTime(options.run.secondsPerVolume, header, run.sidecars);
            seconds = cellText(static_cast<float>(time.seconds));
            volumes = std::to_string(header.volumes - run.dummyScans);
        }
    } catch (const std::exception& error) {
        problem = asFailure(error).what();
    }
    std::string text = run.name;
    for (const std::string& cell :
         {seconds, volumes, run.mask.string(), run.image.string(), (options.out / run.folder).string(), problem}) {
        text += '\t' + cellOr(cell);
    }
    return text;
}

} // namespace

std::vector<ListedRun> runsTogether(const StudyPlan& plan, const StudyFolder& study) {
    std::vector<ListedRun> runs;
    RunProblems problems;
    for (const PlannedRun& run : plan.runs) {
        if (!run.problem.empty()) problems.add(run.name + " cannot take part: " + run.problem);
        runs.push_back({run.name, run.image, run.mask, study.path() / run.folder});
    }
    problems.throwIfAny();
    return runs;
}

void listRunsTogether(const StudyPlan& plan, const StudyOptions& options) {
    std::printf("name\trepetition_time\tvolumes\tmask\timage\tresults\tproblem\n");
    for (const PlannedRun& run : plan.runs) std::printf("%s\n", row(run, options).c_str());
}

} // namespace zn::headless
