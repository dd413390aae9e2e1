#include "headless/cli/command_line.h"
#include "headless/cli/interrupts.h"
#include "headless/cli/standard_output.h"
#include "headless/memory/available_memory.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
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

// Ends the process. Under a limit on address space the BLAS's own threads may wait for memory for ever, and with them
// the BLAS's clean-up at exit, which is therefore skipped.
int end(int status) {
    if (!zn::headless::addressSpaceLeftBytes()) return status;
    std::fflush(nullptr);
    std::_Exit(status);
}

} // namespace

int main(int argc, char** argv) {
    zn::headless::openStandardDescriptors();
    static UnfinishedWork unfinished;
    zn::headless::CommandLine line;
    try {
        line.app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return end(line.app.exit(error)); // help and version
        return end(complain(unfinished, ExitStatus::kUsage, line.complaint(error, argc, argv)));
    }
    try {
        zn::headless::watchInterrupts(unfinished);
        return end(static_cast<int>(line.action(unfinished)));
    } catch (const zn::headless::Failure& failure) {
        return end(complain(unfinished, failure.status(), failure.what()));
    } catch (const std::bad_alloc&) {
        return end(complain(unfinished, ExitStatus::kMemory, "there is not enough memory for data of this size."));
    } catch (const std::exception& error) {
        return end(complain(unfinished, ExitStatus::kOther, error.what()));
    }
}
