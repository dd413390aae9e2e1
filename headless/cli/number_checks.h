#pragma once

#include <cstdint>
#include <string>

#include <CLI/CLI.hpp>

namespace zn::headless {

/// Checks of an option's number: the whole text must be one, and not-a-number and infinities are none. The complaint is
/// "needs WANTED; got TEXT".
///
///   wanted   "a number above 0, in GiB"
///   fits     which finite numbers are accepted
CLI::Validator finiteNumber(const std::string& wanted, bool (*fits)(double));

/// The same for whole numbers from 0 to `most`, in decimal digits alone.
CLI::Validator wholeNumber(std::uint64_t most);

} // namespace zn::headless
