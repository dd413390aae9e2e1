#include "headless/cli/help_pages.h"

#include <sstream>
#include <vector>

namespace zn::headless {

namespace {

constexpr std::size_t kWidth = 80; // of a terminal
constexpr std::size_t kOptionColumn = 28;
constexpr std::size_t kCommandColumn = 12;

// "--tr SECONDS", "-h,--help", "BOLD"
std::string synopsis(const CLI::Option& option) {
    const std::string name = option.get_name(option.get_positional());
    const bool valued = !option.get_positional() && option.get_type_size() > 0;
    return valued ? name + " " + option.get_type_name() : name;
}

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

std::vector<const CLI::Option*> shownOptions(const CLI::App& app) {
    return app.get_options([](const CLI::Option* option) { return !option->get_group().empty(); });
}
std::vector<const CLI::App*> shownCommands(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

class CompactHelp : public CLI::Formatter {
public:
    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override {
        const bool all = mode == CLI::AppFormatMode::All;
        std::string text = wrapped("", app->get_description(), 0);
        if (app->get_parent()) name = app->get_parent()->get_name() + " " + app->get_name();
        text += "Usage: " + name;
        for (const auto* option : shownOptions(*app)) {
            if (option->get_required()) text += " " + synopsis(*option);
        }
        const auto commands = shownCommands(*app);
        text += commands.empty() ? " [option...]\n" : " COMMAND [option...]\n";
        for (const auto* option : shownOptions(*app)) {
            if (option->get_group() == kRareOptions && !all) continue;
            text += row(synopsis(*option), option->get_description(), kOptionColumn);
        }
        if (!commands.empty()) text += "Commands (each has its own --help):\n";
        for (const auto* command : commands) {
            text += row(command->get_name(), command->get_description(), kCommandColumn);
        }
        return text + app->get_footer();
    }
};

// A leading dot or apostrophe and every backslash and hyphen are special to roff.
std::string roff(const std::string& text) {
    std::string result;
    for (const char c : text) {
        const bool lineStart = result.empty() || result.back() == '\n';
        if (lineStart && (c == '.' || c == '\'')) result += "\\&";
        result += c == '\\' ? "\\e" : c == '-' ? "\\-" : std::string(1, c);
    }
    return result;
}

void describeOptions(const CLI::App& app, std::ostringstream& page) {
    for (const auto* option : shownOptions(app)) {
        page << ".TP\n.B " << roff(synopsis(*option)) << '\n' << roff(option->get_description()) << '\n';
    }
}

// The footer verbatim, line by line.
void describeFooter(const CLI::App& app, std::ostringstream& page) {
    if (!app.get_footer().empty()) page << ".PP\n.nf\n" << roff(app.get_footer()) << "\n.fi\n";
}

} // namespace

std::shared_ptr<CLI::FormatterBase> compactHelp() {
    return std::make_shared<CompactHelp>();
}

std::string manualPage(const CLI::App& app, const std::string& version) {
    std::ostringstream page;
    const std::string& name = app.get_name();
    page << ".TH ZNICA 1 \"\" \"" << name << ' ' << version << "\"\n.SH NAME\n"
         << name << " \\- spatial independent component analysis of functional MRI data\n"
         << ".SH SYNOPSIS\n.B " << name << "\nCOMMAND [option...]\n"
         << ".SH DESCRIPTION\n"
         << roff(app.get_description()) << "\n.SH OPTIONS\n";
    describeOptions(app, page);
    page << ".SH COMMANDS\n";
    for (const auto* command : shownCommands(app)) {
        page << ".SS " << name << ' ' << command->get_name() << '\n' << roff(command->get_description()) << '\n';
        describeOptions(*command, page);
        describeFooter(*command, page);
    }
    page << ".SH EXIT STATUS\n";
    describeFooter(app, page);
    return page.str();
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
