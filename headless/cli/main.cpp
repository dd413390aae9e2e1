#include "headless/cli/command_line.h"
#include "headless/cli/interrupts.h"
#include "headless/cli/standard_output.h"
#include "headless/failure/as_failure.h"
#include "headless/memory/available_memory.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
#include <string>
#include <utility>

#include <malloc.h>

namespace {

using zn::headless::ExitStatus;
using zn::headless::UnfinishedWork;

constexpr char kNoMemory[] = "znica: there is not enough memory for data of this size.\n";

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

std::atomic<bool> memoryRanOut = false;

[[noreturn]] void noteNoMemory() {
    memoryRanOut = true;
    throw std::bad_alloc();
}

// The destructors of the JSON library and the standard library's lists of folders may need memory where they must not
// throw. What is left behind, the next run removes.
[[noreturn]] void endWithoutMemory() {
    if (!memoryRanOut) std::abort();
    std::fputs(kNoMemory, stderr);
    std::_Exit(static_cast<int>(ExitStatus::kMemory));
}

// Freed blocks from this size on return to the system. By default the size adapts to what is freed, and the peak grows.
constexpr int kLargeBlock = 4 << 20;

int run(int argc, char** argv, UnfinishedWork& unfinished) {
    zn::headless::CommandLine line;
    try {
        line.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return line.app.exit(error); // help and version
        return complain(unfinished, ExitStatus::kUsage, line.complaint(error, argc, argv));
    }
    try {
        zn::headless::watchInterrupts(unfinished);
        return static_cast<int>(line.action(unfinished));
    } catch (const std::exception& error) {
        const zn::headless::Failure failure = zn::headless::asFailure(error);
        return complain(unfinished, failure.status(), failure.what());
    }
}

} // namespace

int main(int argc, char** argv) {
    mallopt(M_MMAP_THRESHOLD, kLargeBlock);
    std::set_new_handler(noteNoMemory);
    std::set_terminate(endWithoutMemory);
    zn::headless::openStandardDescriptors();
    static UnfinishedWork unfinished;
    try {
        return end(run(argc, argv, unfinished));
    } catch (const std::exception&) { // there is not even enough memory for a message that has to be put together
        unfinished.discard();
        std::fputs(kNoMemory, stderr);
        return end(static_cast<int>(ExitStatus::kMemory));
    }
}
