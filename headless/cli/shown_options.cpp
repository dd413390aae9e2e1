#include "headless/cli/shown_options.h"

namespace zn::headless {

std::vector<const CLI::Option*> shownOptions(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return !option->get_group().empty(); });
}

std::vector<const CLI::App*> shownCommands(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

std::string fullName(const CLI::App& app) {
    return app.get_parent() ? app.get_parent()->get_name() + " " + app.get_name() : app.get_name();
}

std::string synopsis(const CLI::Option& option) {
    const std::string name = option.get_name(option.get_positional());
    const bool valued = !option.get_positional() && option.get_type_size() > 0;
    return valued ? name + " " + option.get_type_name() : name;
}

std::string usage(const CLI::App& app) {
    std::string text = fullName(app);
    for (const auto* option : shownOptions(app)) {
        if (option->get_required()) text += " " + synopsis(*option);
    }
    return text + (shownCommands(app).empty() ? " [option...]" : " COMMAND [option...]");
}

} // namespace zn::headless
