#pragma once

namespace zn::headless {

/// Opens whichever of standard input, output and error is closed on the null device. A file opened later would take its
/// number, and messages would end up in that file.
void openStandardDescriptors();

/// Throws Failure (kOther) unless everything printed so far reached its reader; for commands that only print. A reader
/// that has exited, as head does after its lines, has what it wanted and is not a failure.
void requirePrinted();

} // namespace zn::headless
