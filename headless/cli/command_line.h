#pragma once

#include "headless/failure/failure.h"
#include "headless/result/unfinished_work.h"

#include <functional>
#include <string>

#include <CLI/CLI.hpp>

namespace zn::headless {

/// What a command does once its arguments have been read.
using Action = std::function<ExitStatus(UnfinishedWork&)>;

/// The command-line arguments of znica, with their help texts and checks.
struct CommandLine {
    CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    CLI::App app;
    Action action; ///< of the command that was given

    /// Parses the arguments, of which the first is the program's name; "help COMMAND" is "COMMAND --help". Throws as
    /// CLI::App::parse() does.
    void parse(int count, const char* const* arguments);

    /// One sentence for the user about arguments that do not parse.
    std::string complaint(const CLI::ParseError& error, int count, const char* const* arguments) const;
};

} // namespace zn::headless
