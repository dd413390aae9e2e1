#include "headless/bids/functional_folders.h"

#include "headless/bids/read_folder.h"
#include "headless/bids/word_list.h"

#include <set>
#include <system_error>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

// Folders whose names begin with `prefix`, links to folders included.
std::vector<std::string> foldersIn(const fs::path& parent, const std::string& prefix) {
    std::vector<std::string> folders;
    for (std::string& name : namesIn(parent)) {
        std::error_code error;
        const bool named = name.starts_with(prefix) && name.size() > prefix.size();
        if (named && fs::is_directory(parent / name, error)) folders.push_back(std::move(name));
    }
    return folders;
}

std::set<std::string> prefixed(const std::vector<std::string>& labels, const std::string& prefix) {
    std::set<std::string> names;
    for (const std::string& label : labels) names.insert(label.starts_with(prefix) ? label : prefix + label);
    return names;
}

[[noreturn]] void refuseLabel(const fs::path& dataset, const std::string& wanted, const std::string& present) {
    throw Failure(ExitStatus::kInput,
                  "there is no " + wanted + " in " + dataset.string() + "; it has " + present + ".");
}

std::vector<std::string> chosenSubjects(const fs::path& dataset, const std::vector<std::string>& participants) {
    std::vector<std::string> all = foldersIn(dataset, "sub-");
    if (all.empty()) {
        throw Failure(ExitStatus::kInput,
                      dataset.string() + " has no folders sub-*; name the folder of a BIDS dataset.");
    }
    if (participants.empty()) return all;
    const std::set<std::string> wanted = prefixed(participants, "sub-");
    for (const std::string& name : wanted) {
        if (std::find(all.begin(), all.end(), name) == all.end()) refuseLabel(dataset, name, wordList(all));
    }
    return {wanted.begin(), wanted.end()};
}

} // namespace

std::vector<fs::path> functionalFolders(const fs::path& dataset, const std::vector<std::string>& participants,
                                        const std::vector<std::string>& sessions) {
    const std::set<std::string> wanted = prefixed(sessions, "ses-");
    std::set<std::string> present;
    std::vector<fs::path> folders;
    for (const std::string& subject : chosenSubjects(dataset, participants)) {
        if (wanted.empty()) folders.push_back(fs::path(subject) / "func");
        for (const std::string& session : foldersIn(dataset / subject, "ses-")) {
            present.insert(session);
            if (wanted.empty() || wanted.contains(session)) folders.push_back(fs::path(subject) / session / "func");
        }
    }
    for (const std::string& name : wanted) {
        const std::vector<std::string> all(present.begin(), present.end());
        if (!present.contains(name)) refuseLabel(dataset, name, all.empty() ? "no sessions" : wordList(all));
    }
    return folders;
}

} // namespace zn::headless
