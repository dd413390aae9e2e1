#include "headless/cli/commands.h"

#include "headless/report/write_report.h"
#include "headless/result/result_files.h"

#include <cstdio>
#include <filesystem>
#include <memory>

namespace zn::headless {

void addReportCommand(CLI::App& app, Action& action) {
    const auto folder = std::make_shared<std::filesystem::path>();
    const auto compared = std::make_shared<std::filesystem::path>();
    auto* report = app.add_subcommand("report", "Recreate report.html from the files of a result.");
    report->add_option("DIR", *folder, "folder created by znica run")->required()->type_name("DIR");
    report->add_option("--compare", *compared, "show matching components of this result beside them")->type_name("DIR");
    report->footer("Examples:\n  znica report result\n  znica report seed1 --compare seed2\n");
    report->callback([folder, compared, &action] {
        action = [folder, compared](UnfinishedWork& unfinished) {
            const ResultFiles files = ResultFiles::in(*folder);
            const ReportPage page = makeReport(files, {}, *compared);
            unfinished.deliver([&] { page.write(files[ResultFile::kReport]); });
            std::printf("%s\n", files[ResultFile::kReport].c_str());
            return ExitStatus::kDone;
        };
    });
}

} // namespace zn::headless
