#pragma once

#include <filesystem>
#include <string>

namespace zn::headless {

/// The last sentence in a run's log that begins with "znica: ", without that; empty when there is none.
std::string lastMessage(const std::filesystem::path& log);

} // namespace zn::headless
