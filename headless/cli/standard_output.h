#pragma once

namespace zn::headless {

/// Throws Failure (kOther) unless everything printed so far reached its reader; for commands that only print. A reader
/// that has exited, as head does after its lines, has what it wanted and is not a failure.
void requirePrinted();

} // namespace zn::headless
