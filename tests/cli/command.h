#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zn::test {

/// How a command ended and what it wrote.
struct CommandResult {
    int status = -1; ///< exit status; 128 + signal when a signal ended it
    std::string out;
    std::string err;
};

/// Where and how the command runs.
struct Surroundings {
    std::filesystem::path folder;         ///< current folder; empty: the test's own
    std::vector<std::string> environment; ///< "NAME=value"; replaces the test's own variable of that name
    std::string shellPrefix;              ///< shell commands before it, such as "ulimit -f 100;"
};

/// A shell prefix: standard output is a pipe that nobody reads any more.
inline constexpr char kToNobody[] = "p=$(mktemp -u); mkfifo \"$p\"; exec 9<>\"$p\" >\"$p\" 9<&-; rm \"$p\";";

/// Runs the real znica and waits for it.
CommandResult znica(const std::vector<std::string>& arguments, const Surroundings& surroundings = {});

/// Starts the real znica; signal() sends a signal, end() does so and waits.
class RunningCommand {
public:
    RunningCommand(const std::vector<std::string>& arguments, const Surroundings& surroundings);
    CommandResult wait();
    void signal(int number);
    CommandResult end(int number);

private:
    std::filesystem::path out_;
    std::filesystem::path err_;
    int process_ = 0;
};

} // namespace zn::test
