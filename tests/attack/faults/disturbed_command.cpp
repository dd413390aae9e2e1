#include "attack/faults/disturbed_command.h"

#include <csignal>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zn::test {

namespace {

constexpr int kPatienceMilliseconds = 60'000;

int fileInMemory(const char* name) {
    const int descriptor = memfd_create(name, MFD_CLOEXEC);
    if (descriptor < 0) throw std::runtime_error("memfd_create");
    return descriptor;
}

std::string contents(int descriptor) {
    std::string text(static_cast<std::size_t>(lseek(descriptor, 0, SEEK_END)), '\0');
    if (pread(descriptor, text.data(), text.size(), 0) != static_cast<ssize_t>(text.size())) return "?";
    return text;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts) result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

// One thread, so that a run makes the same calls each time. Leaks after a failure inside a library are not looked for.
std::vector<std::string> environmentFor(const Stage& stage, const Fault& fault, int recordFile) {
    std::string folders;
    for (const auto& folder : stage.watched) folders += (folders.empty() ? "" : ":") + folder.string();
    std::vector<std::string> environment = {"PATH=/usr/bin:/bin",
                                            "LC_ALL=C",
                                            "OPENBLAS_NUM_THREADS=1",
                                            "ASAN_OPTIONS=detect_leaks=0",
                                            std::string("LD_PRELOAD=") + FAULT_INJECTOR_FILE,
                                            "ZN_FAULT_FOLDERS=" + folders,
                                            "ZN_FAULT_RECORD=/proc/" + std::to_string(getpid()) + "/fd/" +
                                                std::to_string(recordFile)};
    if (!stage.log.empty()) environment.push_back("ZN_FAULT_LOG=" + stage.log.string());
    if (!stage.pauseStem.empty()) environment.push_back("ZN_FAULT_PAUSE=" + stage.pauseStem.string());
    if (fault.at > 0) environment.push_back("ZN_FAULT=" + fault.text());
    return environment;
}

} // namespace

std::string Fault::text() const {
    return std::string(kCallNames[static_cast<std::size_t>(call)]) + ":" + std::to_string(at) + ":" + kind + ":" +
           std::to_string(number) + (onwards ? ":1" : ":0");
}

DisturbedCommand::DisturbedCommand(const std::vector<std::string>& arguments, const Stage& stage, const Fault& fault)
    : out_(fileInMemory("out")), err_(fileInMemory("err")), recordFile_(fileInMemory("record")) {
    if (ftruncate(recordFile_, sizeof(FaultRecord)) != 0) throw std::runtime_error("ftruncate");
    void* shared = mmap(nullptr, sizeof(FaultRecord), PROT_READ, MAP_SHARED, recordFile_, 0);
    if (shared == MAP_FAILED) throw std::runtime_error("mmap");
    record_ = static_cast<FaultRecord*>(shared);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, out_, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err_, STDERR_FILENO);
    posix_spawn_file_actions_addchdir_np(&actions, stage.folder.c_str());
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t usual; // whatever the caller of the tests ignores
    sigfillset(&usual);
    posix_spawnattr_setsigdefault(&attributes, &usual);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);

    std::vector<std::string> texts = {stage.program.string()};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<std::string> environment = environmentFor(stage, fault, recordFile_);
    const int failed = posix_spawn(&process_, texts.front().c_str(), &actions, &attributes, pointers(texts).data(),
                                   pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    if (failed != 0) throw std::runtime_error("posix_spawn");
}

DisturbedCommand::~DisturbedCommand() {
    munmap(record_, sizeof(FaultRecord));
    for (const int descriptor : {out_, err_, recordFile_}) close(descriptor);
}

Ending DisturbedCommand::wait() {
    Ending ending;
    int status = 0;
    for (int waited = 0; waitpid(process_, &status, WNOHANG) == 0; ++waited) {
        if (waited == 2 * kPatienceMilliseconds) {
            ending.hung = true;
            kill(process_, SIGKILL);
        }
        usleep(500);
    }
    if (WIFEXITED(status)) ending.status = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) ending.signal = WTERMSIG(status);
    ending.out = contents(out_);
    ending.err = contents(err_);
    for (const auto& count : record_->calls) ending.calls.push_back(count);
    ending.injected = record_->injected;
    ending.process = process_;
    return ending;
}

Ending runDisturbed(const std::vector<std::string>& arguments, const Stage& stage, const Fault& fault) {
    return DisturbedCommand(arguments, stage, fault).wait();
}

} // namespace zn::test
