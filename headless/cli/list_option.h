#pragma once

#include <string>
#include <vector>

namespace zn::headless {

/// The names in a list separated by commas, without blanks around them. Throws CLI::ValidationError for one that is
/// empty.
///
///   option    for the message: "--columns"
///   example   such as "trans_x,rot_z"
std::vector<std::string> listIn(const std::string& option, const std::string& text, const std::string& example);

} // namespace zn::headless
