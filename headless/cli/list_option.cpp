#include "headless/cli/list_option.h"

#include <algorithm>

#include <CLI/CLI.hpp>

namespace zn::headless {

std::vector<std::string> listIn(const std::string& option, const std::string& text, const std::string& example) {
    const std::string complaint = "needs names separated by commas, such as " + example + "; got " + text;
    std::vector<std::string> names;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(',', start), text.size());
        const std::string name = CLI::detail::trim_copy(text.substr(start, end - start));
        if (name.empty()) throw CLI::ValidationError(option, complaint);
        names.push_back(name);
        start = end + 1;
    }
    return names;
}

} // namespace zn::headless
