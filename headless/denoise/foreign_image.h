#pragma once

#include <filesystem>
#include <string>

namespace zn::headless {

/// A note on an image whose name contradicts that of the result with which it is denoised: another subject, session,
/// task, run, acquisition, phase-encoding direction or echo. Empty without a contradiction, also when one of the two
/// lacks the entity or is not named as in BIDS. Other versions of an image have other labels of space, res and desc,
/// which do not count.
///
///   stem   of the result, "sub-01_task-rest_run-1"
std::string noteOnForeignImage(const std::filesystem::path& image, const std::string& stem);

} // namespace zn::headless
