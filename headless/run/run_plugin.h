#pragma once

#include "headless/host/session.h"
#include "headless/run/plugin_library.h"
#include "headless/run/run_log.h"

#include <filesystem>

namespace zn::headless {

/// Runs the plug-in once over the session, with `folder` (made here) as the current one, where it leaves its own files.
/// Throws Failure when it ends before its maps are kept, in the words that it had for the user: kMemory, kGaveUp when
/// it found no component, kOther when it did not start, else kInput. What a host function met goes on as it was thrown.
void runPlugin(const PluginLibrary& library, Session& session, const RunLog& log, const std::filesystem::path& folder);

} // namespace zn::headless
