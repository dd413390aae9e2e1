#pragma once

#include "attack/faults/disturbed_command.h"
#include "attack/faults/snapshot.h"
#include "files.h"

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace zn::test {

/// A command of znica with everything around it, run again and again from the same state.
class Scenario {
public:
    /// What a command is about, relative to a temporary folder in which it all happens.
    struct Plan {
        std::string name;
        std::vector<std::string> arguments;                ///< "@" stands for the temporary folder
        std::string place;                                 ///< the folder or file that the command makes
        std::string folder;                                ///< current folder; empty: the temporary folder
        std::vector<std::vector<std::string>> before = {}; ///< commands that make what it starts from
        std::string earlierText = {};                      ///< bytes of the file in the place before, if any
        friend void PrintTo(const Plan& plan, std::ostream* out) { *out << plan.name; }
    };

    /// Makes the state before the command, and finds out what the command does when nothing disturbs it.
    explicit Scenario(const Plan& plan);

    /// Runs the command from the state before it.
    Ending run(const Fault& fault);
    /// Starts the command from the state before it; for pauses.
    std::unique_ptr<DisturbedCommand> start(const Fault& fault, const std::filesystem::path& pauseStem);
    /// The log of the calls of an undisturbed run.
    std::string log();
    /// Which of an undisturbed run's calls is the first, or another, whose line in the log ends in `ending`. 0: none.
    std::uint64_t numberOf(Call call, const std::string& ending, int occurrence = 1);
    /// Runs the command once more on whatever the last one left, with --force if `force`.
    Ending runAgain(bool force);

    const Plan& plan() const { return plan_; }
    const std::vector<std::uint64_t>& calls() const { return calls_; } ///< [Call] of an undisturbed run
    const Snapshot& before() const { return before_; }                 ///< the entire temporary folder
    const Snapshot& earlier() const { return earlier_; }               ///< what was in the place; empty: nothing
    const Snapshot& wanted() const { return wanted_; }                 ///< what has to be there, without times
    Snapshot now() const { return snapshotOf(world_.path()); }
    std::filesystem::path world() const { return world_.path(); }
    bool fillsCurrentFolder() const { return !plan_.folder.empty() && plan_.folder == plan_.place; }
    Stage stage() const;

private:
    std::vector<std::string> resolved(const std::vector<std::string>& arguments) const;

    Plan plan_;
    TemporaryFolder world_;
    std::vector<std::uint64_t> calls_;
    Snapshot before_;
    Snapshot earlier_;
    Snapshot wanted_;
};

/// One of the scenarios below.
Scenario::Plan planNamed(const std::string& name);

/// All scenarios; those with a page only where znica was built with its template.
std::vector<Scenario::Plan> scenarioPlans();

} // namespace zn::test
