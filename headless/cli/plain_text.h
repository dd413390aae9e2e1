#pragma once

#include <string>
#include <string_view>

namespace zn::headless {

/// Converts simple HTML to plain UTF-8 text: tags are removed (line breaks and paragraph starts end the line),
/// character references become characters, and runs of white space one blank. Unknown references stay as they are.
std::string plainText(std::string_view html);

} // namespace zn::headless
