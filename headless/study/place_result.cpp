#include "headless/study/place_result.h"

#include "headless/failure/failure.h"
#include "headless/result/result_files.h"
#include "headless/result/sync_files.h"
#include "headless/study/failed_try.h"
#include "headless/study/result_descriptions.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <system_error>

#include <fcntl.h>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

struct Move {
    std::string name; ///< in the result's folder
    fs::path place;   ///< in the study, relative to it
};

// Where each file of a result belongs. The log and the status are in the study's own log and record.
std::vector<Move> movesOf(const PlannedRun& run) {
    std::vector<Move> moves;
    for (const ResultFileEntry& entry : resultFileList()) {
        const std::string name = entry.in(run.name);
        if (entry.isOfRun() && entry.name.starts_with('_')) moves.push_back({name, run.folder / name});
    }
    for (const std::string& name : descriptionNames(run.name)) moves.push_back({name, run.folder / name});
    moves.push_back({"plugin", run.folder / (run.name + "_desc-ICA_plugin")});
    moves.push_back({"report.html", run.name + ".html"});
    return moves;
}

// The courses of a denoised image have the name of those of the result, which stay.
std::vector<Move> denoisedMovesOf(const PlannedRun& run) {
    std::vector<Move> moves;
    for (const ResultFileEntry& entry : resultFileList()) {
        const std::string name = entry.in(run.name);
        if (entry.place == ResultPlace::kDenoised) moves.push_back({name, run.folder / name});
    }
    for (const char* ending : {"timeseries.tsv", "timeseries.json"}) {
        moves.push_back({run.name + "_desc-ICA_" + ending, run.folder / (run.name + "_desc-denoise_" + ending)});
    }
    moves.push_back({"report.html", run.name + "_denoised.html"});
    return moves;
}

[[noreturn]] void fail(const fs::path& file, int error) {
    throw Failure(ExitStatus::kOther, file.string() + " cannot be written: " + std::strerror(error) + ".");
}

// A folder cannot take the name of one that is not empty, but the two can change names.
void moveOver(const fs::path& from, const fs::path& to) {
    if (rename(from.c_str(), to.c_str()) == 0) return;
    if (errno != ENOTEMPTY && errno != EEXIST) fail(to, errno);
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_EXCHANGE) == 0) return;
    std::error_code error;
    fs::remove_all(to, error); // file systems without exchange
    if (rename(from.c_str(), to.c_str()) != 0) fail(to, errno);
}

std::vector<std::string> place(const std::vector<Move>& moves, const PlannedRun& run, const fs::path& result,
                               const StudyFolder& study) {
    std::error_code error;
    fs::create_directories(study.path() / run.folder, error);
    if (error) fail(study.path() / run.folder, error.value());
    std::vector<std::string> files;
    for (const Move& move : moves) {
        const fs::path place = study.path() / move.place;
        if (fs::exists(result / move.name, error)) {
            moveOver(result / move.name, place);
            files.push_back(move.place.string());
        } else {
            fs::remove_all(place, error);
        }
    }
    syncFolder(study.path() / run.folder);
    return files;
}

// A new result has other components.
void removeDenoised(const PlannedRun& run, const StudyFolder& study) {
    std::error_code error;
    fs::remove(study.denoiseRecord(run.name), error);
    forgetFailedTry(study.denoiseRecord(run.name));
    fs::remove(study.denoiseLog(run.name), error);
    for (const Move& move : denoisedMovesOf(run)) fs::remove(study.path() / move.place, error);
}

} // namespace

std::vector<std::string> placeResult(const PlannedRun& run, const fs::path& result, const StudyFolder& study) {
    writeDescriptions(run, result);
    removeDenoised(run, study);
    return place(movesOf(run), run, result, study);
}

std::vector<std::string> placeDenoised(const PlannedRun& run, const fs::path& result, const StudyFolder& study) {
    return place(denoisedMovesOf(run), run, result, study);
}

} // namespace zn::headless
