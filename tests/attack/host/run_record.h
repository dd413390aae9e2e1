#pragma once

#include "host/scripted_host.h"

#include <string>

namespace zn::test {

/// The host's maps with their names and values.
std::string recordOfMaps(const ScriptedHost& host);

/// Everything that a run has left: the maps, the log without its elapsed times, and
/// the plug-in's text files in the current directory. Equal runs have equal records.
std::string recordOfRun(const ScriptedHost& host);

} // namespace zn::test
