#pragma once

#include "headless/cli/compare_command.h"
#include "headless/simulate/simulate_options.h"
#include "headless/run/run_options.h"

#include <filesystem>

#include <CLI/CLI.hpp>

namespace zn::headless {

/// `znica score` compares a result with the truth of a simulated sample.
struct ScoreOptions {
    std::filesystem::path result;
    std::filesystem::path truth;
};

/// The command's arguments, its help and its checks. Which command was given: `app.got_subcommand(run)`.
struct CommandLine {
    CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    CLI::App app;
    CLI::App* run;
    CLI::App* simulate;
    CLI::App* score;
    CLI::App* info;
    CLI::App* compare;
    CLI::App* report;
    RunOptions runOptions;
    SimulateOptions simulateOptions;
    ScoreOptions scoreOptions;
    std::filesystem::path infoPlugin; ///< empty: the one that belongs to the command
    CompareOptions compareOptions;
    std::filesystem::path reportFolder;

    /// What the user is told about arguments that do not parse, in one sentence.
    std::string complaint(const CLI::ParseError& error, int count, const char* const* arguments) const;

private:
    void addRun();
    void addSimulate();
    void addScore();
    void addInfo();
    void addCompare();
    void addReport();
};

} // namespace zn::headless
