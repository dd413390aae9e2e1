#include "headless/study/active_run.h"

#include "headless/result/hidden_folder.h"
#include "headless/study/last_message.h"

#include <csignal>
#include <cstring>
#include <string>
#include <system_error>
#include <utility>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

std::vector<std::string> withOutput(std::vector<std::string> arguments, const fs::path& result) {
    arguments.emplace_back("--out");
    arguments.push_back(result.string());
    return arguments;
}

// A log begins again with every try.
fs::path emptied(const fs::path& log) {
    std::error_code error;
    fs::remove(log, error);
    return log;
}

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size())) {
        text.replace(at, what.size(), by);
    }
    return text;
}

std::string signalText(int status) {
    if (status <= 128) return "it ended without a message; see its log.";
    const int signal = status - 128;
    const char* name = strsignal(signal);
    return "ended by signal " + std::to_string(signal) + " (" + (name ? name : "unknown") + ")" +
           (signal == SIGKILL ? ", which usually means that memory ran out." : ".");
}

} // namespace

ActiveRun::ActiveRun(const PlannedRun& run, const StudyFolder& folder, const fs::path& log,
                     std::vector<std::string> arguments, std::int64_t needed)
    : run_(&run), log_(emptied(log)), work_(new fs::path(makeHiddenFolder(folder.path(), run.name))), needed_(needed),
      process_(withOutput(std::move(arguments), result()), log_) {}

void ActiveRun::RemoveFolder::operator()(const fs::path* folder) const {
    std::error_code error;
    fs::remove_all(*folder, error);
    delete folder;
}

std::optional<RunOutcome> ActiveRun::ended() {
    const auto end = process_.ended();
    if (!end) return std::nullopt;
    RunOutcome outcome;
    outcome.status = end->status;
    outcome.seconds = since_.seconds();
    outcome.peakBytes = end->peakBytes;
    // The name of the hidden folder means nothing to the user.
    outcome.message = replaced(lastMessage(log_), result().string(), work_->parent_path().string());
    // A successful run can only lack its report. Other lines in its log are what the plug-in asked and was answered.
    if (outcome.status == 0 && !outcome.message.starts_with("no report.html was written")) outcome.message.clear();
    if (outcome.status != 0 && (outcome.status > 128 || outcome.message.empty()))
        outcome.message = signalText(outcome.status);
    return outcome;
}

} // namespace zn::headless
