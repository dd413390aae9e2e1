#pragma once

#include "attack/faults/fault_record.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace zn::test {

/// Which call of a command to disturb, and how; see injector.h for the kinds.
struct Fault {
    Call call = Call::kOpen;
    std::uint64_t at = 0; ///< from 1; 0: none, so that calls are only counted
    std::string kind;     ///< "fail", "kill" and so on
    int number = 0;       ///< errno, or a signal
    bool onwards = false; ///< all calls from there on

    std::string text() const; ///< as in the environment
};

/// How a disturbed command ended.
struct Ending {
    int status = -1; ///< exit status; -1: it did not exit by itself
    int signal = 0;  ///< that ended it
    bool hung = false;
    std::string out;
    std::string err;
    std::vector<std::uint64_t> calls; ///< [Call]
    std::uint64_t injected = 0;
    int process = 0;
};

/// Where a command runs.
struct Stage {
    std::filesystem::path folder;               ///< current folder
    std::vector<std::filesystem::path> watched; ///< the calls on files in these count
    std::filesystem::path log = {};             ///< for the counted calls; empty: none
    std::filesystem::path pauseStem = {};       ///< for a pause
    std::filesystem::path program = ZNICA_FILE;
};

/// Starts znica, or another program, with the injector; wait() waits for its end. A command that takes a minute has
/// hung and is killed.
class DisturbedCommand {
public:
    DisturbedCommand(const std::vector<std::string>& arguments, const Stage& stage, const Fault& fault);
    ~DisturbedCommand();
    DisturbedCommand(const DisturbedCommand&) = delete;
    DisturbedCommand& operator=(const DisturbedCommand&) = delete;

    int process() const { return process_; }
    Ending wait();

private:
    int out_ = -1; // descriptors of files in memory
    int err_ = -1;
    int recordFile_ = -1;
    FaultRecord* record_ = nullptr;
    int process_ = 0;
};

Ending runDisturbed(const std::vector<std::string>& arguments, const Stage& stage, const Fault& fault);

} // namespace zn::test
