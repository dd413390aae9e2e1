#pragma once

#include "headless/failure/failure.h"

#include <filesystem>

namespace zn::headless {

/// `znica info`: prints the plug-in's name, version, author, description and file as plain text, and which of the
/// host's functions that its file names are there for it: those that work here, those that only say that this host
/// lacks them, and those that do not exist. `plugin` empty: the one that belongs to the command. Throws Failure.
ExitStatus infoCommand(const std::filesystem::path& plugin);

} // namespace zn::headless
