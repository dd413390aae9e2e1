#include "headless/result/earlier_result.h"

#include "headless/result/result_files.h"
#include "headless/result/result_names.h"
#include "headless/text/input_file.h"
#include "headless/text/unfinished_name.h"

#include <algorithm>
#include <initializer_list>
#include <set>
#include <string_view>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

// Whether a file of this name belongs in one of the places. Names that follow a stem count only when there is a stem.
bool isListed(const std::string& name, const std::string& stem, std::initializer_list<ResultPlace> places) {
    const auto& list = resultFileList();
    return std::any_of(list.begin(), list.end(), [&](const ResultFileEntry& entry) {
        const bool lacksStem = stem.empty() && entry.name.starts_with('_');
        return !lacksStem && std::find(places.begin(), places.end(), entry.place) != places.end() &&
               name == entry.in(stem);
    });
}

nlohmann::json jsonIn(const fs::path& file) {
    if (!fs::is_regular_file(file)) return nullptr; // opening a pipe would wait for a writer
    return nlohmann::json::parse(readWholeFile(file), nullptr, false);
}

bool isSample(const fs::path& folder) {
    const auto truth = jsonIn(folder / nameOf(ResultFile::kTruth));
    return truth.is_object() && truth.contains("sources") && truth.contains("seed");
}

// Names in ascending order; a folder's name ends in a slash.
std::set<std::string> namesIn(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const bool isFolder = entry.symlink_status().type() == fs::file_type::directory;
        names.insert(entry.path().filename().string() + (isFolder ? "/" : ""));
    }
    return names;
}

// The common stem of a result's names, taken from the file `key` that every result of its kind has; empty without it.
std::string stemOf(const std::set<std::string>& names, ResultFile key) {
    const std::string_view ending = nameOf(key);
    for (const std::string& name : names) {
        if (name.ends_with(ending)) return name.substr(0, name.size() - ending.size());
    }
    return "";
}

// The plug-in names some files after the image; the names of the others are fixed.
bool isPluginFile(const std::string& name, const std::string& stem) {
    const auto& list = resultFileList();
    return isListed(name, "", {ResultPlace::kPlugin}) ||
           std::any_of(list.begin(), list.end(), [&](const ResultFileEntry& entry) {
               return entry.place == ResultPlace::kPluginImage && name.ends_with(entry.name) &&
                      resultStem(name.substr(0, name.size() - entry.name.size())) == stem;
           });
}

ResultKind kindOf(bool sample, const std::set<std::string>& names) {
    if (sample) return ResultKind::kSample;
    const bool denoised =
        stemOf(names, ResultFile::kDecomposition).empty() && !stemOf(names, ResultFile::kDenoiseQc).empty();
    return denoised ? ResultKind::kDenoised : ResultKind::kRun;
}

const char* nameOfKind(ResultKind kind) {
    if (kind == ResultKind::kSample) return "a simulated sample";
    return kind == ResultKind::kDenoised ? "a denoised image" : "a result of znica run";
}

// The first name that does not belong in these places; empty when all do.
std::string foreignNameIn(const std::set<std::string>& names, const std::string& stem,
                          std::initializer_list<ResultPlace> places) {
    for (const std::string& name : names) {
        if (!isListed(name, stem, places)) return name;
    }
    return "";
}

// The same for a result of a run, with the plug-in's folder in it, or a denoised image.
std::string foreignNameInResult(const fs::path& folder, const std::set<std::string>& names) {
    const std::string stem = stemOf(names, ResultFile::kDecomposition);
    if (kindOf(false, names) == ResultKind::kDenoised) {
        return foreignNameIn(
            names, stemOf(names, ResultFile::kDenoiseQc),
            {ResultPlace::kDenoised, ResultPlace::kRunAndDenoised, ResultPlace::kRunSampleAndDenoised});
    }
    std::string foreign = foreignNameIn(names, stem,
                                        {ResultPlace::kRun, ResultPlace::kRunAndSample, ResultPlace::kRunAndDenoised,
                                         ResultPlace::kRunSampleAndDenoised});
    if (!foreign.empty()) return foreign;
    const std::string plugin(nameOf(ResultFile::kPluginFolder));
    if (!names.contains(plugin)) return "";
    for (const std::string& name : namesIn(folder / plugin)) {
        if (!isPluginFile(name, stem)) return plugin + name;
    }
    return "";
}

// The subjects of a simulated study: each has a folder "sub-01/func/" with a measurement.
bool isSubject(const fs::path& folder, const std::string& name, const nlohmann::json& truth) {
    const std::string subject = name.substr(0, name.find('/'));
    if (!truth.contains("subjects") || !truth["subjects"].is_array()) return false;
    const auto isIt = [&](const auto& known) { return known == subject; };
    if (std::none_of(truth["subjects"].begin(), truth["subjects"].end(), isIt)) return false;
    const std::set<std::string> inside = namesIn(folder / subject);
    if (inside.empty()) return true;
    if (inside != std::set<std::string>{"func/"}) return false;
    return foreignNameIn(namesIn(folder / subject / "func"), subject + "_task-rest", {ResultPlace::kSample}).empty();
}

std::string foreignNameInSample(const fs::path& folder, const std::set<std::string>& names) {
    const auto truth = jsonIn(folder / nameOf(ResultFile::kTruth));
    for (const std::string& name : names) {
        if (name.ends_with('/') && isSubject(folder, name, truth)) continue;
        if (!isListed(name, kSampleStem,
                      {ResultPlace::kSample, ResultPlace::kRunAndSample, ResultPlace::kRunSampleAndDenoised}))
            return name;
    }
    return "";
}

} // namespace

bool isMadeByZnica(const fs::path& folder) {
    const auto description = jsonIn(folder / nameOf(ResultFile::kDatasetDescription));
    const auto generators = description.is_object() ? description.find("GeneratedBy") : description.end();
    if (!description.is_object() || generators == description.end()) return false;
    return std::any_of(generators->begin(), generators->end(), [](const auto& generator) {
        return generator.is_object() && generator.contains("Name") && generator["Name"] == "znica";
    });
}

const char* namesOfKind(ResultKind kind) {
    if (kind == ResultKind::kSample) return "simulated samples";
    return kind == ResultKind::kDenoised ? "denoised images" : "results of znica run";
}

std::string whyNotAResult(const fs::path& folder, ResultKind kind, const std::string& but) {
    std::set<std::string> names = namesIn(folder);
    names.erase(but + "/");
    const bool sample = isSample(folder);
    const std::string foreign = sample ? foreignNameInSample(folder, names) : foreignNameInResult(folder, names);
    if (isUnfinishedName(foreign.substr(0, foreign.find('/')))) {
        return "holds " + foreign +
               ", the unfinished work of another process; wait for it, or remove it if it was killed";
    }
    if (!foreign.empty()) return "holds " + foreign + ", which does not belong to a result";
    if (!sample && !isMadeByZnica(folder)) return "has no dataset_description.json that names znica";
    const ResultKind found = kindOf(sample, names);
    return found == kind ? "" : std::string("holds ") + nameOfKind(found);
}

} // namespace zn::headless
