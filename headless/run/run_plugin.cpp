#include "headless/run/run_plugin.h"

#include "headless/failure/failure.h"
#include "headless/host/current_session.h"

#include <exception>
#include <string>
#include <system_error>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

class CurrentFolder {
public:
    explicit CurrentFolder(const fs::path& folder) : before_(fs::current_path()) {
        fs::create_directory(folder);
        fs::current_path(folder);
    }
    ~CurrentFolder() {
        std::error_code ignored;
        fs::current_path(before_, ignored);
    }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

private:
    fs::path before_;
};

class AttachedSession {
public:
    explicit AttachedSession(Session& session) { attachSession(&session); }
    ~AttachedSession() { attachSession(nullptr); }
    AttachedSession(const AttachedSession&) = delete;
    AttachedSession& operator=(const AttachedSession&) = delete;
};

[[noreturn]] void explainEarlyEnd(const RunLog& log, bool initialised) {
    const std::string said = log.messages().empty() ? "it gave no reason." : log.messages().back();
    if (log.facts().ranOutOfMemory()) {
        throw Failure(ExitStatus::kMemory,
                      "the plug-in ended the analysis: " + said + " Use a mask, or request fewer components.");
    }
    if (!initialised) throw Failure(ExitStatus::kOther, "the plug-in did not start: " + said);
    if (log.facts().foundNone()) {
        throw Failure(ExitStatus::kGaveUp, "no component converged; allow more iterations with --max-iterations or a "
                                           "larger threshold with --epsilon.");
    }
    throw Failure(ExitStatus::kInput, "the plug-in ended the analysis: " + said);
}

} // namespace

void runPlugin(const PluginLibrary& library, Session& session, const RunLog& log, const fs::path& folder) {
    const AttachedSession attached(session);
    const CurrentFolder current(folder);
    const auto plugin = library.create();
    const bool initialised = plugin->initPlugin();
    const bool ended = initialised && plugin->execute();
    if (session.failure) std::rethrow_exception(session.failure);
    if (!ended || !log.mapsSaved()) explainEarlyEnd(log, initialised);
}

} // namespace zn::headless
