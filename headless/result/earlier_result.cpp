#include "headless/result/earlier_result.h"

#include "headless/result/result_names.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <set>
#include <string_view>
#include <system_error>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 5> kOfEveryResult = {"log.txt", "status.json", "report.html", ".bidsignore",
                                                            "dataset_description.json"};
constexpr std::array<std::string_view, 9> kAfterTheStem = {
    "_desc-ICA_components.nii.gz",  "_desc-ICA_mixing.tsv",    "_desc-ICA_metrics.tsv",
    "_desc-ICA_metrics.json",       "_desc-ICA_dimension.tsv", "_desc-ICA_design.tsv",
    "_desc-ICA_decomposition.json", "_desc-brain_mask.nii.gz", "_desc-mean_bold.nii.gz"};
constexpr std::array<std::string_view, 3> kOfThePlugin = {"ICA.vox", "Covariance.txt", "ParamsMatrix.txt"};
constexpr std::array<std::string_view, 2> kAfterTheImage = {".eig", "_ICA.rtc"};
constexpr std::array<std::string_view, 9> kOfASample = {"truth.json",
                                                        "sub-sim_task-blocks_bold.nii.gz",
                                                        "sub-sim_task-blocks_bold.json",
                                                        "sub-sim_task-blocks_desc-brain_mask.nii.gz",
                                                        "sub-sim_task-blocks_desc-truth_components.nii.gz",
                                                        "sub-sim_task-blocks_desc-truth_mixing.tsv",
                                                        "sub-sim_task-blocks_desc-sources_dseg.nii.gz",
                                                        "sub-sim_task-blocks_desc-sources_dseg.tsv",
                                                        "sub-sim_task-blocks_desc-task_design.tsv"};

template <class Names> bool contains(const Names& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

nlohmann::json jsonIn(const fs::path& file) {
    std::ifstream stream(file);
    return nlohmann::json::parse(stream, nullptr, false);
}

bool isMadeByZnica(const fs::path& folder) {
    const auto description = jsonIn(folder / "dataset_description.json");
    const auto generators = description.is_object() ? description.find("GeneratedBy") : description.end();
    if (!description.is_object() || generators == description.end()) return false;
    return std::any_of(generators->begin(), generators->end(), [](const auto& generator) {
        return generator.is_object() && generator.contains("Name") && generator["Name"] == "znica";
    });
}

bool isSample(const fs::path& folder) {
    const auto truth = jsonIn(folder / "truth.json");
    return truth.is_object() && truth.contains("sources") && truth.contains("seed");
}

// Names in ascending order; a folder's name ends in a slash.
std::set<std::string> namesIn(const fs::path& folder) {
    std::set<std::string> names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const bool isFolder = entry.symlink_status(error).type() == fs::file_type::directory;
        names.insert(entry.path().filename().string() + (isFolder ? "/" : ""));
    }
    return names;
}

// What the names of a result begin with, from the file that every result has.
std::string stemOf(const std::set<std::string>& names) {
    constexpr std::string_view kRecord = "_desc-ICA_decomposition.json";
    for (const std::string& name : names) {
        if (name.ends_with(kRecord)) return name.substr(0, name.size() - kRecord.size());
    }
    return "";
}

bool isPluginFile(const std::string& name, const std::string& stem) {
    return contains(kOfThePlugin, name) ||
           std::any_of(kAfterTheImage.begin(), kAfterTheImage.end(), [&](std::string_view ending) {
               return name.ends_with(ending) && resultStem(name.substr(0, name.size() - ending.size())) == stem;
           });
}

bool isResultFile(const std::string& name, const std::string& stem) {
    return contains(kOfEveryResult, name) ||
           (!stem.empty() && name.starts_with(stem) && contains(kAfterTheStem, name.substr(stem.size())));
}

// The first name that does not belong to a result; empty when all do.
std::string strangerInResult(const fs::path& folder, const std::set<std::string>& names) {
    const std::string stem = stemOf(names);
    for (const std::string& name : names) {
        if (name != "plugin/" && !isResultFile(name, stem)) return name;
    }
    if (!names.contains("plugin/")) return "";
    for (const std::string& name : namesIn(folder / "plugin")) {
        if (!isPluginFile(name, stem)) return "plugin/" + name;
    }
    return "";
}

std::string strangerInSample(const std::set<std::string>& names) {
    for (const std::string& name : names) {
        if (!contains(kOfASample, name)) return name;
    }
    return "";
}

} // namespace

std::string whyNoEarlierResult(const fs::path& folder, const std::string& but) {
    std::set<std::string> names = namesIn(folder);
    names.erase(but + "/");
    const bool sample = isSample(folder);
    const std::string stranger = sample ? strangerInSample(names) : strangerInResult(folder, names);
    if (!stranger.empty()) return "holds " + stranger + ", which is no part of a result";
    if (!sample && !isMadeByZnica(folder)) return "has no dataset_description.json that names znica";
    return "";
}

} // namespace zn::headless
