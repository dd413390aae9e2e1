#include "headless/cli/help_pages.h"

#include "headless/cli/shown_options.h"

#include <sstream>

namespace zn::headless {

namespace {

constexpr std::size_t kWidth = 80; // of a terminal
constexpr std::size_t kOptionColumn = 28;
constexpr std::size_t kCommandColumn = 12;

// `begin` and the words of the text in lines of at most kWidth; lines after the first are indented to `column`.
std::string wrapped(std::string begin, const std::string& text, std::size_t column) {
    std::istringstream words(text);
    std::string result;
    bool fresh = true; // no word in this line yet
    for (std::string word; words >> word; fresh = false) {
        if (!fresh && begin.size() + 1 + word.size() > kWidth) {
            result += begin + "\n";
            begin.assign(column, ' ');
            fresh = true;
        }
        begin += (fresh ? "" : " ") + word;
    }
    return result + begin + "\n";
}

std::string row(const std::string& left, const std::string& right, std::size_t column) {
    std::string begin = "  " + left;
    begin.resize(std::max(begin.size() + 1, column), ' ');
    return wrapped(begin, right, column);
}

class CompactHelp : public CLI::Formatter {
public:
    std::string make_help(const CLI::App* app, std::string /*name*/, CLI::AppFormatMode mode) const override {
        const bool all = mode == CLI::AppFormatMode::All;
        std::string text = wrapped("", app->get_description(), 0) + "Usage: " + usage(*app) + "\n";
        for (const auto* option : shownOptions(*app)) {
            if (option->get_group() == kRareOptions && !all) continue;
            text += row(synopsis(*option), option->get_description(), kOptionColumn);
        }
        const auto commands = shownCommands(*app);
        if (!commands.empty()) text += "Commands (each has its own --help):\n";
        for (const auto* command : commands) {
            text += row(command->get_name(), command->get_description(), kCommandColumn);
        }
        return text + app->get_footer();
    }
};

} // namespace

std::shared_ptr<CLI::FormatterBase> compactHelp() {
    return std::make_shared<CompactHelp>();
}

std::string bashCompletion(const CLI::App& app) {
    std::ostringstream script;
    const auto words = [](const CLI::App& command) {
        std::string text;
        for (const auto* option : shownOptions(command)) {
            for (const std::string& name : option->get_lnames()) text += (text.empty() ? "--" : " --") + name;
        }
        return text;
    };
    std::string commands;
    std::ostringstream cases;
    for (const auto* command : shownCommands(app)) {
        commands += command->get_name() + " ";
        cases << "        " << command->get_name() << ") words='" << words(*command) << "' ;;\n";
    }
    script << "# bash completion of " << app.get_name() << "\n_znica() {\n"
           << "    local word=${COMP_WORDS[COMP_CWORD]} words=''\n    COMPREPLY=()\n"
           << "    case ${COMP_WORDS[1]} in\n"
           << cases.str() << "    esac\n"
           << "    [ \"$COMP_CWORD\" -gt 1 ] || words='" << commands << words(app) << "'\n"
           << "    if [ \"$COMP_CWORD\" -eq 1 ] || [[ $word == -* ]]; then\n"
           << "        COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n    fi\n}\n"
           << "complete -o default -F _znica " << app.get_name() << '\n';
    return script.str();
}

} // namespace zn::headless
