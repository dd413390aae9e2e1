#pragma once

#include "headless/run/run.h"

namespace zn::headless {

/// Runs the plug-in on the session, which then holds its maps, and writes them as an image with their time courses
/// beside it while the plug-in waits; the log file begins with the notes. Throws Failure as runPlugin() does, and
/// (kOther) when a file cannot be written.
void separate(Run& run);

} // namespace zn::headless
