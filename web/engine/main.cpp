// znica without signals, threads and a terminal: the same commands, messages and exit statuses, and one more command,
// whose output the page shows before a run.
#include "headless/cli/command_line.h"
#include "headless/failure/as_failure.h"
#include "headless/result/unfinished_work.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

using zn::headless::ExitStatus;
using zn::headless::UnfinishedWork;

int complain(UnfinishedWork& unfinished, ExitStatus status, std::string text) {
    text = unfinished.asWanted(std::move(text));
    std::replace(text.begin(), text.end(), '\n', ' ');
    std::fflush(stdout);
    std::fprintf(stderr, "znica: %s\n", text.c_str());
    unfinished.discard();
    return static_cast<int>(status);
}

} // namespace

int main(int argc, char** argv) {
    UnfinishedWork unfinished;
    zn::headless::CommandLine line;
    try {
        line.app.parse(argc, argv);
        return static_cast<int>(line.action(unfinished));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return line.app.exit(error);
        return complain(unfinished, ExitStatus::kUsage, line.complaint(error, argc, argv));
    } catch (const std::exception& error) {
        const zn::headless::Failure failure = zn::headless::asFailure(error);
        return complain(unfinished, failure.status(), failure.what());
    }
}
