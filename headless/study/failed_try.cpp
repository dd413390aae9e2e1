#include "headless/study/failed_try.h"

#include "headless/failure/failure.h"
#include "headless/result/sync_files.h"
#include "headless/text/text_file.h"

#include <system_error>

namespace zn::headless {

namespace fs = std::filesystem;

fs::path failedTry(const fs::path& record) {
    return record.parent_path() / "failed" / record.filename();
}

void forgetResult(const fs::path& record) {
    std::error_code error;
    if (fs::remove(record, error)) syncFolder(record.parent_path());
}

void writeRecord(const fs::path& record, const RunOutcome& outcome, const nlohmann::ordered_json& json) {
    const bool keeps = !outcome.hasResult() && isOfResult(record);
    const fs::path file = keeps ? failedTry(record) : record;
    std::error_code error;
    if (keeps) fs::create_directory(file.parent_path(), error); // its absence is what writing complains about
    replaceTextFile(file, json.dump(1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n");
    if (!keeps) forgetFailedTry(record);
}

void forgetFailedTry(const fs::path& record) {
    std::error_code error;
    fs::remove(failedTry(record), error);
}

std::optional<RunOutcome> lastOutcome(const fs::path& record) {
    auto outcome = isOfResult(record) ? recordedOutcome(failedTry(record)) : std::nullopt;
    if (!outcome) return recordedOutcome(record);
    outcome->keepsEarlier = true;
    return outcome;
}

} // namespace zn::headless
