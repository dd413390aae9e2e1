#include "headless/group/steps/study_place.h"

#include "headless/failure/failure.h"
#include "headless/group/steps/batch_files.h"
#include "headless/group/steps/group_mean.h"
#include "headless/group/steps/group_study.h"
#include "headless/group/steps/step_files.h"
#include "headless/text/unfinished_name.h"

#include <set>
#include <string>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

bool belongs(const std::string& name) {
    const std::set<std::string> known = {studyFile(""),       studyMask(""), groupMeanFile(""),
                                         reductionFolder(""), "ica",         kDualRegression};
    return known.contains(name) || name.starts_with("desc-groupICA_") || isUnfinishedName(name);
}

} // namespace

void requireStudyPlace(const fs::path& folder) {
    if (!fs::exists(folder)) return;
    if (!fs::is_directory(folder)) {
        throw Failure(ExitStatus::kOther,
                      folder.string() + " is not a folder; name the folder of the study before the images.");
    }
    if (anyRecord(studyFile(folder))) return;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (belongs(name)) continue;
        throw Failure(ExitStatus::kOther, folder.string() + " is not empty and holds no study of a group, but " + name +
                                              "; name another folder.");
    }
}

} // namespace zn::headless
