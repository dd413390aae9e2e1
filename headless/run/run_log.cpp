#include "headless/run/run_log.h"

#include "headless/failure/failure.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace zn::headless {

RunLog::RunLog(const std::filesystem::path& file, bool verbose, Progress& progress, SaveMaps saveMaps,
               UnfinishedWork& unfinished)
    : path_(file), file_(file, std::ios::app), verbose_(verbose), progress_(progress), saveMaps_(std::move(saveMaps)),
      unfinished_(unfinished) {}

void RunLog::keep(std::string_view line) {
    file_ << line << '\n' << std::flush; // so that a crashed run leaves its last line
}

void RunLog::requireWritten() {
    if (file_.flush()) return;
    throw Failure(ExitStatus::kOther,
                  path_.string() + " cannot be written; check the permissions and the free disk space.");
}

void RunLog::logLine(std::string_view line) {
    keep(line);
    if (verbose_) {
        std::printf("%.*s\n", static_cast<int>(line.size()), line.data());
        std::fflush(stdout);
    }
    facts_.add(line);
    progress_.logLine(line);
}

void RunLog::message(std::string_view text) {
    std::string line(text);
    std::replace(line.begin(), line.end(), '\n', ' ');
    messages_.push_back(line);
    logLine("[message] " + line);
}

void RunLog::saveMaps(const VolumeMaps& maps, std::string_view) {
    saveMaps_(maps);
    mapsSaved_ = true;
}

void RunLog::outOfMemory() {
    const auto status = static_cast<int>(ExitStatus::kMemory);
    std::fprintf(stderr,
                 "znica: there is not enough memory for the component maps; request fewer with --components.%s\n",
                 unfinished_.end("failed", status).c_str());
    std::_Exit(status);
}

} // namespace zn::headless
