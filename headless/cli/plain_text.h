#pragma once

#include <string>
#include <string_view>

namespace zn::headless {

/// Light HTML as plain UTF-8 text: tags go (a line break and the start of a paragraph end the line), character
/// references become their letters, runs of white space one blank. An unknown reference stays as it is.
std::string plainText(std::string_view html);

} // namespace zn::headless
