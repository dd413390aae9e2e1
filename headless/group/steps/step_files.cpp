#include "headless/group/steps/step_files.h"

#include "headless/result/hidden_folder.h"
#include "headless/result/output_place.h"
#include "headless/result/sync_files.h"
#include "headless/text/input_file.h"
#include "headless/text/text_file.h"

namespace zn::headless {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

StepFiles::StepFiles(UnfinishedWork& unfinished, const fs::path& folder, const std::string& record)
    : unfinished_(unfinished), folder_(outputPlace(folder)), record_(record) {
    created_ = fs::create_directories(folder_);
    removeLeftovers(folder_);
    hidden_ = unfinished.begin(folder_, folder_); // messages name the files as they will be called
}

StepFiles::~StepFiles() {
    unfinished_.discard();
    std::error_code ignored;
    if (created_) fs::remove(folder_, ignored); // unless it holds something
}

void StepFiles::commit(const std::string& record) {
    writeTextFile(hidden_ / record_, record);
    syncTree(hidden_);
    unfinished_.finish([this] { handOver(); });
}

void StepFiles::handOver() {
    std::vector<fs::path> names;
    for (const auto& entry : fs::directory_iterator(hidden_)) names.push_back(entry.path().filename());
    for (const fs::path& earlier : superseded_) removeAtOnce(earlier);
    fs::remove(folder_ / record_); // from here on the earlier step does not count as done
    for (const fs::path& name : names) {
        if (name != record_) fs::rename(hidden_ / name, folder_ / name);
    }
    syncFolder(folder_);
    fs::rename(hidden_ / record_, folder_ / record_);
    syncFolder(folder_);
    fs::remove_all(hidden_);
}

// A folder in one step, so that no part of it is taken for something else after a kill.
void StepFiles::removeAtOnce(const fs::path& earlier) {
    if (fs::is_directory(fs::symlink_status(earlier))) {
        fs::rename(earlier, hidden_ / (".superseded-" + earlier.filename().string()));
    } else {
        fs::remove(earlier);
    }
}

std::optional<Json> anyRecord(const fs::path& file) {
    if (!fs::is_regular_file(file)) return std::nullopt;
    const Json record = Json::parse(readWholeFile(file), nullptr, false);
    const bool valid = record.is_object() && record.contains("Basis") && record["Basis"].is_string();
    return valid ? std::optional(record) : std::nullopt;
}

std::optional<Json> recordOf(const fs::path& file, const std::string& basis) {
    auto record = anyRecord(file);
    return record && (*record)["Basis"] == basis ? record : std::nullopt;
}

} // namespace zn::headless
