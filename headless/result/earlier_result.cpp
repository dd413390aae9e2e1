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
    return std::ranges::any_of(resultFileList(), [&](const ResultFileEntry& entry) {
        const bool lacksStem = stem.empty() && entry.name.starts_with('_');
        return !lacksStem && std::ranges::find(places, entry.place) != places.end() && name == entry.in(stem);
    });
}

nlohmann::json jsonIn(const fs::path& file) {
    if (!fs::is_regular_file(file)) return nullptr; // opening a pipe would wait for a writer
    return nlohmann::json::parse(readWholeFile(file), nullptr, false);
}

bool isMadeByZnica(const fs::path& folder) {
    const auto description = jsonIn(folder / nameOf(ResultFile::kDatasetDescription));
    const auto generators = description.is_object() ? description.find("GeneratedBy") : description.end();
    if (!description.is_object() || generators == description.end()) return false;
    return std::any_of(generators->begin(), generators->end(), [](const auto& generator) {
        return generator.is_object() && generator.contains("Name") && generator["Name"] == "znica";
    });
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

// The common stem of a result's names, taken from the file that every result has.
std::string stemOf(const std::set<std::string>& names) {
    const std::string_view record = nameOf(ResultFile::kDecomposition);
    for (const std::string& name : names) {
        if (name.ends_with(record)) return name.substr(0, name.size() - record.size());
    }
    return "";
}

// The plug-in names some files after the image; the names of the others are fixed.
bool isPluginFile(const std::string& name, const std::string& stem) {
    return isListed(name, "", {ResultPlace::kPlugin}) ||
           std::ranges::any_of(resultFileList(), [&](const ResultFileEntry& entry) {
               return entry.place == ResultPlace::kPluginImage && name.ends_with(entry.name) &&
                      resultStem(name.substr(0, name.size() - entry.name.size())) == stem;
           });
}

// The first name that does not belong to a result; empty when all do.
std::string foreignNameInResult(const fs::path& folder, const std::set<std::string>& names) {
    const std::string stem = stemOf(names);
    for (const std::string& name : names) {
        if (!isListed(name, stem, {ResultPlace::kRun, ResultPlace::kRunAndSample})) return name;
    }
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
    return std::ranges::all_of(namesIn(folder / subject / "func"), [&](const std::string& file) {
        return isListed(file, subject + "_task-rest", {ResultPlace::kSample});
    });
}

std::string foreignNameInSample(const fs::path& folder, const std::set<std::string>& names) {
    const auto truth = jsonIn(folder / nameOf(ResultFile::kTruth));
    for (const std::string& name : names) {
        if (name.ends_with('/') && isSubject(folder, name, truth)) continue;
        if (!isListed(name, kSampleStem, {ResultPlace::kSample, ResultPlace::kRunAndSample})) return name;
    }
    return "";
}

} // namespace

std::string whyNotAResult(const fs::path& folder, const std::string& but) {
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
    return "";
}

} // namespace zn::headless
