#pragma once

namespace zn::headless {

/// Throws Failure (kOther) unless everything printed so far reached its reader: for a command whose output is all that
/// it does. A reader that has gone, as head does after its lines, has what it wanted and is no failure.
void requirePrinted();

} // namespace zn::headless
