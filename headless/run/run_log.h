#pragma once

#include "headless/host/session.h"
#include "headless/result/plugin_log.h"
#include "headless/result/unfinished_work.h"
#include "headless/run/progress.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace zn::headless {

/// Collects the output of a run: every line in the log file, the facts in these lines, and the messages for the user.
class RunLog : public SessionEvents {
public:
    using SaveMaps = std::function<void(const VolumeMaps&)>;

    ///   file         appended to if it exists
    ///   verbose      also print lines on standard output
    ///   progress     outlives this
    ///   saveMaps     called when the plug-in hands over its maps
    ///   unfinished   work to be removed when memory runs out in a host function; outlives this
    RunLog(const std::filesystem::path& file, bool verbose, Progress& progress, SaveMaps saveMaps,
           UnfinishedWork& unfinished);

    /// Writes a line to the file only.
    void keep(std::string_view line);
    void logLine(std::string_view line) override;
    void vectorProduct(bool transposed) override { progress_.vectorProduct(transposed); }
    void message(std::string_view text) override;
    void saveMaps(const VolumeMaps& maps, std::string_view name) override;
    [[noreturn]] void outOfMemory() override;

    /// Throws Failure (kOther) when a line did not reach the file.
    void requireWritten();

    const PluginLog& facts() const { return facts_; }
    const std::vector<std::string>& messages() const { return messages_; }
    bool mapsSaved() const { return mapsSaved_; }

private:
    std::filesystem::path path_;
    std::ofstream file_;
    bool verbose_;
    Progress& progress_;
    SaveMaps saveMaps_;
    UnfinishedWork& unfinished_;
    PluginLog facts_;
    std::vector<std::string> messages_;
    bool mapsSaved_ = false;
};

} // namespace zn::headless
