#include "headless/failure/failure.h"
#include "headless/report/write_report.h"
#include "headless/result/partial_result.h"
#include "headless/result/result_folder.h"
#include "headless/cli/score_command.h"
#include "headless/cli/simulate_command.h"
#include "headless/cli/command_line.h"
#include "headless/cli/info_command.h"
#include "headless/cli/interrupts.h"
#include "headless/run/run_driver.h"
#include "headless/cli/standard_output.h"

#include <algorithm>
#include <cstdio>
#include <new>
#include <string>
#include <utility>

namespace {

using zn::headless::ExitStatus;

int complain(ExitStatus status, std::string text) {
    text = zn::headless::ResultFolder::asWanted(std::move(text));
    std::replace(text.begin(), text.end(), '\n', ' '); // one line, whatever a file is called
    std::fflush(stdout);
    std::fprintf(stderr, "znica: %s%s\n", text.c_str(), zn::headless::markPartial("failed", static_cast<int>(status)).c_str());
    return static_cast<int>(status);
}

// The commands whose output is all that they do.
ExitStatus print(const zn::headless::CommandLine& line) {
    const ExitStatus status = line.app.got_subcommand(line.score)
                                  ? zn::headless::scoreCommand(line.scoreOptions.result, line.scoreOptions.truth)
                              : line.app.got_subcommand(line.info) ? zn::headless::infoCommand(line.infoPlugin)
                                                                   : zn::headless::compareCommand(line.compareOptions);
    zn::headless::requirePrinted();
    return status;
}

ExitStatus carryOut(const zn::headless::CommandLine& line) {
    if (line.app.got_subcommand(line.simulate)) return zn::headless::simulateCommand(line.simulateOptions);
    if (line.app.got_subcommand(line.report)) return zn::headless::reportCommand(line.reportFolder);
    if (line.app.got_subcommand(line.run)) return zn::headless::runCommand(line.runOptions);
    return print(line);
}

} // namespace

int main(int argc, char** argv) {
    zn::headless::CommandLine line;
    try {
        line.app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return line.app.exit(error); // help and version
        return complain(ExitStatus::kUsage, line.complaint(error, argc, argv));
    }
    try {
        zn::headless::watchInterrupts();
        return static_cast<int>(carryOut(line));
    } catch (const zn::headless::Failure& failure) {
        return complain(failure.status(), failure.what());
    } catch (const std::bad_alloc&) {
        return complain(ExitStatus::kMemory, "there is not enough memory for data of this size.");
    } catch (const std::exception& error) {
        return complain(ExitStatus::kOther, error.what());
    }
}
