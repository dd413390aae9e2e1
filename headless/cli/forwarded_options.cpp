#include "headless/cli/forwarded_options.h"

namespace zn::headless {

std::vector<std::string> forwardedOptions(const std::vector<const CLI::Option*>& options) {
    std::vector<std::string> arguments;
    for (const CLI::Option* option : options) {
        if (option->count() == 0) continue;
        arguments.push_back("--" + option->get_lnames().front());
        if (option->get_expected_min() == 0) continue; // a flag
        for (const std::string& value : option->results()) arguments.push_back(value);
    }
    return arguments;
}

} // namespace zn::headless
