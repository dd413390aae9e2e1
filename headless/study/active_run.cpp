#include "headless/study/active_run.h"

#include "headless/result/hidden_folder.h"
#include "headless/study/last_message.h"

#include <charconv>
#include <csignal>
#include <cstring>
#include <string>
#include <system_error>
#include <utility>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

std::string gibText(std::int64_t bytes) {
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, static_cast<double>(bytes) / 1073741824.0).ptr;
    return {text, end};
}

std::vector<std::string> argumentsOf(const PlannedRun& run, const StudyOptions& options, const fs::path& result,
                                     int threads, std::int64_t memory) {
    std::vector<std::string> arguments = {
        "run",       run.image.string(),      "--out",    result.string(), "--verbose",
        "--threads", std::to_string(threads), "--memory", gibText(memory)};
    for (std::string& setting : runSettings(run, options)) arguments.push_back(std::move(setting));
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

ActiveRun::ActiveRun(const PlannedRun& run, const StudyOptions& options, const StudyFolder& folder, int threads,
                     std::int64_t memory, std::int64_t needed)
    : run_(&run), log_(emptied(folder.log(run.name))), work_(makeHiddenFolder(folder.path(), run.name)),
      needed_(needed), process_(argumentsOf(run, options, result(), threads, memory), log_) {}

ActiveRun::ActiveRun(ActiveRun&& other) noexcept
    : run_(other.run_), log_(std::move(other.log_)), work_(std::exchange(other.work_, fs::path())),
      needed_(other.needed_), since_(other.since_), process_(std::move(other.process_)) {}

ActiveRun::~ActiveRun() {
    process_.end();
    std::error_code error;
    if (!work_.empty()) fs::remove_all(work_, error);
}

std::optional<RunOutcome> ActiveRun::ended() {
    const auto end = process_.ended();
    if (!end) return std::nullopt;
    RunOutcome outcome;
    outcome.status = end->status;
    outcome.seconds = since_.seconds();
    outcome.peakBytes = end->peakBytes;
    // Of a successful run: that it has no report, for instance. The name of the hidden folder means nothing to the
    // user.
    outcome.message = replaced(lastMessage(log_), result().string(), work_.parent_path().string());
    if (outcome.status != 0 && (outcome.status > 128 || outcome.message.empty()))
        outcome.message = signalText(outcome.status);
    return outcome;
}

} // namespace zn::headless
