#pragma once

#include "headless/host/session.h"
#include "headless/run/plugin_library.h"
#include "headless/run/run_log.h"

#include <filesystem>

namespace zn::headless {

/// Runs the plug-in once over the session, with `folder` (created here) as the current one, where it writes its own
/// files. Throws Failure with the plug-in's last message when it ends before its maps are saved: kMemory, kGaveUp when
/// it found no component, kOther when it did not start, otherwise kInput. Exceptions in host functions are rethrown.
void runPlugin(const PluginLibrary& library, Session& session, const RunLog& log, const std::filesystem::path& folder);

} // namespace zn::headless
