#pragma once

#include <filesystem>
#include <string>

namespace zn::test {

/// The file that a host names with these 8-bit characters: in the user's code page on Windows, byte for byte
/// elsewhere.
std::filesystem::path hostPath(const std::string& name);

} // namespace zn::test
