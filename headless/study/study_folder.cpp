#include "headless/study/study_folder.h"

#include "headless/failure/failure.h"
#include "headless/result/earlier_result.h"
#include "headless/text/text_file.h"
#include "headless/text/unfinished_name.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <unistd.h>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

constexpr char kIgnored[] = "*_desc-ICA_*\n*_desc-dualreg_*\ngroup/\n*.html\nlogs/\nruns.tsv\nruns.json\n";

bool isIn(const fs::path& folder, const fs::path& above) {
    return std::mismatch(above.begin(), above.end(), folder.begin(), folder.end()).first == above.end();
}

// Relative to a dataset, "derivatives/..." is where BIDS puts results.
bool isDerivativeOf(const fs::path& folder, const fs::path& dataset) {
    const fs::path below = folder.lexically_relative(dataset);
    return below.begin() != below.end() && *below.begin() == "derivatives" &&
           std::distance(below.begin(), below.end()) > 1;
}

void requireApart(const fs::path& folder, const fs::path& dataset) {
    std::error_code error;
    const fs::path out = fs::weakly_canonical(folder, error);
    const fs::path in = fs::weakly_canonical(dataset, error);
    const std::string advice = "; name another folder, such as " + (in / "derivatives/znica").string() + ".";
    if (out == in) {
        throw Failure(ExitStatus::kUsage, "OUT_DIR and the dataset are the same folder, " + in.string() + advice);
    }
    if (isIn(out, in) && !isDerivativeOf(out, in)) {
        throw Failure(ExitStatus::kUsage,
                      "OUT_DIR " + out.string() + " lies inside the dataset " + in.string() + advice);
    }
    if (isIn(in, out)) {
        throw Failure(ExitStatus::kUsage,
                      "the dataset " + in.string() + " lies inside OUT_DIR " + out.string() + advice);
    }
}

void requireOwn(const fs::path& folder) {
    std::error_code error;
    if (!fs::exists(folder / "dataset_description.json", error) || isMadeByZnica(folder)) return;
    throw Failure(ExitStatus::kInput, folder.string() + " is a dataset that znica did not make (see its "
                                                        "dataset_description.json); name another folder.");
}

void makeFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (!error && access(folder.c_str(), W_OK | X_OK) != 0) error = {errno, std::generic_category()};
    if (!error) return;
    throw Failure(ExitStatus::kOther, folder.string() + " cannot be written to: " + error.message() + ".");
}

std::string description(const StudyOptions& options) {
    nlohmann::ordered_json json = {
        {"Name", "Spatial independent component analysis"},
        {"BIDSVersion", "1.8.0"},
        {"DatasetType", "derivative"},
        {"GeneratedBy", nlohmann::ordered_json::array({{{"Name", "znica"}, {"Version", ZNICA_VERSION}}})}};
    nlohmann::ordered_json links = {{"raw", "file://" + options.dataset.string()}};
    for (const Derivatives& derivatives : options.derivatives) {
        links[derivatives.name] = "file://" + derivatives.folder.string();
    }
    json["DatasetLinks"] = links;
    return json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

} // namespace

void StudyFolder::prepare(const StudyOptions& options) const {
    requireApart(folder_, options.dataset);
    for (const Derivatives& derivatives : options.derivatives) requireApart(folder_, derivatives.folder);
    std::error_code error;
    if (fs::exists(folder_, error) && !fs::is_directory(folder_, error)) {
        throw Failure(ExitStatus::kOther, folder_.string() + " is not a folder; name another one.");
    }
    requireOwn(folder_);
    makeFolder(folder_);
    makeFolder(logs());
    for (const fs::path& leftover : leftoversIn(folder_)) fs::remove_all(leftover, error);
    replaceTextFile(folder_ / "dataset_description.json", description(options));
    replaceTextFile(folder_ / ".bidsignore", kIgnored);
}

} // namespace zn::headless
