#include "cli/command.h"

#include "files.h"

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <string_view>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zn::test {

namespace {

std::filesystem::path freshFile(const char* kind) {
    static std::atomic<int> count = 0;
    return std::filesystem::temp_directory_path() /
           ("znica-test-" + std::to_string(getpid()) + "-" + std::to_string(++count) + kind);
}

// The test's own environment with the wanted definitions in place of those of the same name. Which of two definitions
// counts would be up to the program that looks.
std::vector<std::string> environmentWith(const std::vector<std::string>& wanted) {
    const auto name = [](std::string_view definition) { return definition.substr(0, definition.find('=')); };
    std::vector<std::string> result = wanted;
    for (char** entry = environ; *entry; ++entry) {
        const auto replaces = [&](const std::string& definition) { return name(definition) == name(*entry); };
        if (std::none_of(wanted.begin(), wanted.end(), replaces)) result.emplace_back(*entry);
    }
    return result;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts) result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

} // namespace

RunningCommand::RunningCommand(const std::vector<std::string>& arguments, const Surroundings& surroundings)
    : out_(freshFile(".out")), err_(freshFile(".err")) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, out_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, err_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (!surroundings.folder.empty()) posix_spawn_file_actions_addchdir_np(&actions, surroundings.folder.c_str());

    // Signals have their usual effect in the command, whatever started the tests ignores.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t usual;
    sigfillset(&usual);
    posix_spawnattr_setsigdefault(&attributes, &usual);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);

    std::vector<std::string> texts = {"sh", "-c", surroundings.shellPrefix + " exec \"$0\" \"$@\"", ZNICA_FILE};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<std::string> environment = environmentWith(surroundings.environment);
    const int failed =
        posix_spawn(&process_, "/bin/sh", &actions, &attributes, pointers(texts).data(), pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    if (failed != 0) throw std::runtime_error("posix_spawn");
}

CommandResult RunningCommand::wait() {
    int status = 0;
    waitpid(process_, &status, 0);
    CommandResult result;
    result.status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    result.out = textOf(out_);
    result.err = textOf(err_);
    std::filesystem::remove(out_);
    std::filesystem::remove(err_);
    return result;
}

void RunningCommand::signal(int number) {
    kill(process_, number);
}

CommandResult RunningCommand::end(int number) {
    signal(number);
    return wait();
}

CommandResult znica(const std::vector<std::string>& arguments, const Surroundings& surroundings) {
    return RunningCommand(arguments, surroundings).wait();
}

} // namespace zn::test
