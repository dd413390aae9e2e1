#include "headless/cli/commands.h"

namespace zn::headless {

void addCommands(CLI::App& app, Action& action) {
    addRunCommand(app, action);
    addBidsCommand(app, action);
    addDenoiseCommand(app, action);
    addGroupCommand(app, action);
    addSimulateCommand(app, action);
    addScoreCommand(app, action);
    addInfoCommand(app, action);
    addCompareCommand(app, action);
    addReportCommand(app, action);
}

} // namespace zn::headless
