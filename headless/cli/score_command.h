#pragma once

#include "headless/failure/failure.h"

#include <filesystem>

namespace zn::headless {

/// `znica score`: prints, for every source of a simulated sample, the component of a result whose map is most like it
/// and the absolute spatial correlation of the two. Throws Failure (kInput) when one of the folders lacks its files.
ExitStatus scoreCommand(const std::filesystem::path& result, const std::filesystem::path& truth);

} // namespace zn::headless
