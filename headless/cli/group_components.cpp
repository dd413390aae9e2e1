#include "headless/cli/group_components.h"

#include <charconv>

namespace zn::headless {

void addGroupComponents(CLI::App& command, const std::string& name, const std::string& about,
                        std::optional<int>& components) {
    const auto set = [name, &components](const std::string& text) {
        components.reset();
        if (text == "auto") return;
        int number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size() || number < 2 || number > 1000) {
            throw CLI::ValidationError(name, "needs a number from 2 to 1000, or auto; got " + text);
        }
        components = number;
    };
    command.add_option_function<std::string>(name, set, about)->type_name("K|auto");
}

} // namespace zn::headless
