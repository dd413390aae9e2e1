#pragma once

#include <cstdint>
#include <string>

#include <CLI/CLI.hpp>

namespace zn::headless {

/// Checks the number given to an option: the entire text must be a finite number. The complaint is "needs WANTED; got
/// TEXT".
///
///   wanted   "a number above 0, in GiB"
///   fits     which finite numbers are accepted
CLI::Validator finiteNumber(const std::string& wanted, bool (*fits)(double));

/// The same for whole numbers from 0 to `maximum`, in decimal digits only.
CLI::Validator wholeNumber(std::uint64_t maximum);

} // namespace zn::headless
