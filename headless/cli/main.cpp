#include "headless/cli/command_line.h"
#include "headless/cli/interrupts.h"
#include "headless/cli/standard_output.h"

#include <algorithm>
#include <cstdio>
#include <new>
#include <string>
#include <utility>

namespace {

using zn::headless::ExitStatus;
using zn::headless::UnfinishedWork;

int complain(UnfinishedWork& unfinished, ExitStatus status, std::string text) {
    text = unfinished.asWanted(std::move(text));
    std::replace(text.begin(), text.end(), '\n', ' '); // one line, whatever the file names contain
    std::fflush(stdout);
    std::fprintf(stderr, "znica: %s%s\n", text.c_str(), unfinished.end("failed", static_cast<int>(status)).c_str());
    return static_cast<int>(status);
}

} // namespace

int main(int argc, char** argv) {
    zn::headless::openStandardDescriptors();
    static UnfinishedWork unfinished;
    zn::headless::CommandLine line;
    try {
        line.app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return line.app.exit(error); // help and version
        return complain(unfinished, ExitStatus::kUsage, line.complaint(error, argc, argv));
    }
    try {
        zn::headless::watchInterrupts(unfinished);
        return static_cast<int>(line.action(unfinished));
    } catch (const zn::headless::Failure& failure) {
        return complain(unfinished, failure.status(), failure.what());
    } catch (const std::bad_alloc&) {
        return complain(unfinished, ExitStatus::kMemory, "there is not enough memory for data of this size.");
    } catch (const std::exception& error) {
        return complain(unfinished, ExitStatus::kOther, error.what());
    }
}
