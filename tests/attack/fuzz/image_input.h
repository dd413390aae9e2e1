#pragma once

#include <filesystem>
#include <string_view>

namespace zn::test {

/// Writes an image under a name that fits its bytes: .nii.gz when they are compressed; .hdr and .img when the header
/// does not say that the data follow it; else .nii. Returns the file to name to a reader.
std::filesystem::path imageInput(std::string_view bytes);

} // namespace zn::test
