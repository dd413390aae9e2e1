#include "headless/cli/command_line.h"

#include "headless/cli/commands.h"
#include "headless/cli/help_pages.h"
#include "headless/cli/manual_pages.h"
#include "headless/cli/nearest_word.h"
#include "headless/cli/parser_complaint.h"
#include "headless/failure/failure.h"
#include "headless/text/text_file.h"

#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace zn::headless {

namespace {

constexpr char kAbout[] =
    "Spatial independent component analysis of functional MRI data, using the same plug-in as the desktop host.";

constexpr char kVersion[] = "znica " ZNICA_VERSION;

constexpr char kExitStatus[] = "Exit status:\n"
                               "  0    done\n"
                               "  1    the result cannot be written, or any other failure\n"
                               "  2    wrong usage\n"
                               "  3    an input or a setting cannot be used\n"
                               "  4    fewer components found than requested (the result is partial)\n"
                               "  5    not enough memory\n"
                               "  129  hung up, as when the terminal closes (128 + signal number)\n"
                               "  130  interrupted\n"
                               "  143  terminated\n";

std::string suggestion(const std::string& nearest) {
    return nearest.empty() ? "" : "; did you mean " + nearest + "?";
}

std::vector<std::string> commandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        names.push_back(command->get_name());
    }
    return names;
}

std::vector<std::string> optionNames(const CLI::App& app) {
    std::vector<std::string> names;
    const auto mayBeMeant = [&](const CLI::Option* o) { return !o->get_group().empty() || o == app.get_version_ptr(); };
    for (const CLI::Option* option : app.get_options(mayBeMeant)) {
        for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
    return names;
}

// The first argument that looks like an option and is none; empty when there is no such argument. Required options
// that are missing are complained about earlier than this, though its misspelling is often the reason.
std::string unknownOption(const CLI::App& command) {
    for (const std::string& argument : command.remaining()) {
        if (argument == "--") break; // what follows are names
        if (argument.starts_with('-')) return argument.substr(0, argument.find('='));
    }
    return "";
}

std::string hintOnFile(const std::string& option) {
    std::error_code error;
    return std::filesystem::exists(option, error) ? "; for the file of this name, write ./" + option : "";
}

bool isFlag(const CLI::Option& option) {
    return option.get_items_expected_max() == 0;
}

// --quiet=1 would be read as a number, of which CLI11 converts only some without an exception of another kind.
void refuseValuesOfFlags(CLI::App& command) {
    for (CLI::Option* option : command.get_options([](const CLI::Option* o) { return isFlag(*o); })) {
        option->disable_flag_override();
    }
}

// Also where it is the same as --help, and is not listed then.
void acceptHelpAll(CLI::App& command) {
    if (!command.get_help_all_ptr()) command.set_help_all_flag("--help-all")->group("");
}

// The first flag that is given a value; empty when there is no such argument.
std::string flagWithValue(const CLI::App& command, int count, const char* const* arguments) {
    for (int i = 1; i < count; ++i) {
        const std::string argument = arguments[i];
        std::string name = argument.substr(0, argument.find('='));
        if (name == argument || !name.starts_with('-')) continue;
        const CLI::Option* option = command.get_option_no_throw(name);
        if (option && isFlag(*option)) return name;
    }
    return "";
}

// For the installation: the manual pages as files in an existing folder.
[[noreturn]] void writeManualPages(const CLI::App& app, const std::filesystem::path& folder) {
    try {
        for (const auto& [file, text] : manualPages(app, ZNICA_VERSION)) writeTextFile(folder / file, text);
    } catch (const Failure& failure) {
        throw CLI::ValidationError("--manual-pages", failure.what());
    }
    throw CLI::Success();
}

} // namespace

CommandLine::CommandLine() : app(kAbout, "znica") {
    app.require_subcommand(1);
    app.set_version_flag("--version", kVersion);
    app.footer(kExitStatus);
    app.formatter(compactHelp()); // before the commands, which inherit it
    app.add_option_function<std::string>("--manual-pages",
                                         [this](const std::string& into) { writeManualPages(app, into); })
        ->group("");
    app.add_flag_callback("--bash-completion", [this] { throw CLI::CallForVersion(bashCompletion(app), 0); })
        ->group("");
    addCommands(app, action);
    refuseValuesOfFlags(app);
    acceptHelpAll(app);
    for (CLI::App* command : app.get_subcommands([](CLI::App*) { return true; })) {
        command->set_version_flag("--version", kVersion)->group(""); // listed once, in the first help
        refuseValuesOfFlags(*command);
        acceptHelpAll(*command);
    }
}

void CommandLine::parse(int count, const char* const* arguments) {
    const bool help = count > 1 && std::string_view(arguments[1]) == "help";
    if (!help) return app.parse(count, arguments);
    const std::array<const char*, 3> instead = {arguments[0], count > 2 ? arguments[2] : "--help", "--help"};
    app.parse(count > 2 ? 3 : 2, instead.data());
}

std::string CommandLine::complaint(const CLI::ParseError& error, int count, const char* const* arguments) const {
    const bool named = !app.get_subcommands().empty();
    const CLI::App& command = named ? *app.get_subcommands().front() : app;
    const std::string program = "znica" + (named ? " " + command.get_name() : "");
    const std::string help = " (see " + program + " --help)";
    const std::string option = unknownOption(command);
    if (!option.empty()) {
        return option + " is not an option of " + program + suggestion(nearestWord(option, optionNames(command))) +
               hintOnFile(option) + help;
    }
    if (error.get_name() == "ArgumentMismatch") {
        const std::string flag = flagWithValue(command, count, arguments);
        if (!flag.empty()) return flag + " takes no value" + help;
    }
    if (named || error.get_name() != "RequiredError") return parserComplaint(error, command) + help;
    const auto names = commandNames(app);
    std::string commands;
    for (const std::string& name : names) commands += (commands.empty() ? "" : ", ") + name;
    if (count < 2) return "name a command: " + commands + help;
    return std::string(arguments[1]) + " is not a command" + suggestion(nearestWord(arguments[1], names)) +
           "; the commands are " + commands + help;
}

} // namespace zn::headless
