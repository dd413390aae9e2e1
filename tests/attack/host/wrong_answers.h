#pragma once

#include "host/scripted_host.h"

#include <functional>
#include <string>
#include <vector>

namespace zn::test {

/// One answer of the host that is wrong, or right and unusual.
struct WrongAnswer {
    std::string name; ///< what is wrong, for messages
    std::function<void(ScriptedHost& host)> apply;
};

/// Every integer that the host returns or fills in, with each extreme value.
std::vector<WrongAnswer> wrongIntegers();

/// Every floating-point number, those in the data, in the predictors and in the matrix products included.
std::vector<WrongAnswer> wrongNumbers();

/// Every text.
std::vector<WrongAnswer> wrongTexts();

/// Every pointer, returned or in a record, null at its first call or at a later one.
std::vector<WrongAnswer> wrongPointers();

/// Makes mask and data as large as the header says, because a host that states a size has to provide it. Above a few
/// hundred thousand values the host provides no mask and no data.
void provideStatedData(ScriptedHost& host);

} // namespace zn::test
