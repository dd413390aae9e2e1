#pragma once

#include "attack/faults/scenario.h"

#include <string>

namespace zn::test {

/// What is found in the place of the result after a disturbed command.
enum class Found {
    kEarlier,     ///< what was there before, or nothing as before, byte for byte
    kNew,         ///< the complete new result
    kWithoutPage, ///< the complete new result but for its page
    kMoving,      ///< the current folder of a killed command, which is filled entry by entry; nothing is lost, and the
                  ///< next run completes or undoes it
    kNeither,     ///< a mixture, or something incomplete
};

struct Verdict {
    Found found = Found::kNeither;
    bool leftovers = false; ///< hidden folders or files stayed behind
    std::string complaint;  ///< what is wrong; empty: nothing
};

/// Judges a disturbed command: the earlier or the new result is there, entire; the exit status and the message say
/// which; nothing else changed; nothing is left behind unless the command was killed or kept from removing it.
Verdict judge(const Scenario& scenario, const Fault& fault, const Ending& ending);

} // namespace zn::test
