#pragma once

#include <string>

namespace zn::headless {

/// When an unfinished folder was left on purpose: writes into it a status.json that says so, and returns the sentence
/// " The partial files are in FOLDER." Else returns nothing.
///
///   how         "failed" or "interrupted"
///   exitStatus  that the process is about to end with
std::string markPartial(const char* how, int exitStatus);

} // namespace zn::headless
