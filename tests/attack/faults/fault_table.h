#pragma once

#include "attack/faults/verdict.h"

#include <map>
#include <string>
#include <utility>

namespace zn::test {

/// Counts what became of the injected faults, by call and kind.
class FaultTable {
public:
    void add(const Fault& fault, const Ending& ending, const Verdict& verdict);
    /// The table as text, with a line of sums; empty when nothing was added.
    std::string text() const;

private:
    struct Row {
        long faults = 0;
        long passed = 0; ///< status 0
        long failed = 0; ///< another exit status
        long ended = 0;  ///< ended by the signal that was injected
        long earlier = 0;
        long fresh = 0;
        long withoutPage = 0;
        long moving = 0;
        long leftovers = 0;
        long complaints = 0;
    };
    std::map<std::pair<Call, std::string>, Row> rows_;
};

/// "write ENOSPC", "rename SIGTERM after" and the like.
std::string nameOf(const Fault& fault);

} // namespace zn::test
