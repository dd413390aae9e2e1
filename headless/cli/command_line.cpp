#include "headless/cli/command_line.h"

#include "headless/cli/commands.h"
#include "headless/cli/help_pages.h"

namespace zn::headless {

namespace {

constexpr char kAbout[] =
    "Spatial independent component analysis of functional MRI data, using the same plug-in as the desktop host.";

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

} // namespace

CommandLine::CommandLine() : app(kAbout, "znica") {
    app.require_subcommand(1);
    app.set_version_flag("--version", "znica " ZNICA_VERSION);
    app.footer(kExitStatus);
    app.formatter(compactHelp()); // before the commands, which inherit it
    app.add_flag_callback("--manual-page", [this] { throw CLI::CallForVersion(manualPage(app, ZNICA_VERSION), 0); })
        ->group("");
    app.add_flag_callback("--bash-completion", [this] { throw CLI::CallForVersion(bashCompletion(app), 0); })
        ->group("");
    addRunCommand(app, action);
    addSimulateCommand(app, action);
    addScoreCommand(app, action);
    addInfoCommand(app, action);
    addCompareCommand(app, action);
    addReportCommand(app, action);
}

std::string CommandLine::complaint(const CLI::ParseError& error, int count, const char* const* arguments) const {
    if (!app.get_subcommands().empty()) {
        return std::string(error.what()) + " (see znica " + app.get_subcommands().front()->get_name() + " --help)";
    }
    const std::string help = " (see znica --help)";
    if (error.get_name() != "RequiredError") return error.what() + help;
    std::string commands;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        commands += (commands.empty() ? "" : ", ") + command->get_name();
    }
    if (count < 2) return "name a command: " + commands + help;
    return std::string(arguments[1]) + " is not a command; the commands are " + commands + help;
}

} // namespace zn::headless
