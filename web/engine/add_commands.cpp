#include "headless/cli/commands.h"
#include "preview.h"

namespace zn::headless {

void addCommands(CLI::App& app, Action& action) {
    addRunCommand(app, action);
    addPreviewCommand(app, action);
    addSimulateCommand(app, action);
    addReportCommand(app, action);
}

} // namespace zn::headless
