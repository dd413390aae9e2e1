#include "attack/faults/verdict.h"

#include <algorithm>
#include <csignal>

namespace zn::test {

namespace {

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// One line with a sentence, and before it perhaps the one about the page.
bool isOneSentence(std::string err) {
    const std::string page = "znica: no report.html was written: ";
    const std::size_t first = err.find('\n');
    if (err.starts_with(page) && first != std::string::npos && first + 1 < err.size()) err.erase(0, first + 1);
    return err.starts_with("znica: ") && std::count(err.begin(), err.end(), '\n') == 1 && err.ends_with(".\n");
}

bool kills(const Fault& fault) {
    return fault.kind.starts_with("kill");
}

// Without memory, the C++ library ends the process where it lists a folder, even between two steps of an exchange, and
// libraries crash: libstdc++ 12 frees a wrong pointer when it copies a path, and the JSON library when it destroys what
// it was building. As after a kill, the result is entire, or the next run makes it so.
bool endsAnywhere(const Fault& fault) {
    return fault.call == Call::kAllocate;
}

// A call that clearing up needs too.
bool mayKeepFromRemoving(const Fault& fault) {
    return fault.kind == "fail" &&
           (fault.call == Call::kOpen || fault.call == Call::kClose || fault.call == Call::kRemove ||
            fault.call == Call::kList || fault.call == Call::kAllocate);
}

constexpr char kFinishedIn[] = "The finished result is in ";

// Where a command says that it left its result, relative to the temporary folder; empty: it does not say.
std::string placeOfFinished(const Scenario& scenario, const std::string& err) {
    const std::size_t at = err.find(kFinishedIn + scenario.world().string() + "/");
    if (at == std::string::npos) return "";
    const std::size_t start = at + std::string(kFinishedIn).size() + scenario.world().string().size() + 1;
    return err.substr(start, err.rfind('.') - start);
}

// Takes the entries below a path, and the path, out of a snapshot.
Snapshot takenOut(Snapshot& world, const std::string& place) {
    const Snapshot result = below(world, place);
    std::erase_if(world, [&](const auto& entry) { return entry.first.starts_with(place + "/"); });
    return result;
}

Snapshot leftoversIn(const Snapshot& world) {
    Snapshot result;
    std::copy_if(world.begin(), world.end(), std::inserter(result, result.end()),
                 [](const auto& entry) { return isLeftover(entry.first); });
    return result;
}

Snapshot without(Snapshot snapshot, const Snapshot& others) {
    for (const auto& [name, bytes] : others) snapshot.erase(name);
    return snapshot;
}

bool lacksOnlyThePage(const Snapshot& place, Snapshot wanted) {
    return wanted.erase("report.html") == 1 && place == wanted;
}

// Whether every file of the earlier result is in its place or, under the same name, in a hidden folder.
bool isAllKept(const Snapshot& earlier, const Snapshot& place, const Snapshot& leftovers) {
    return std::all_of(earlier.begin(), earlier.end(), [&](const auto& file) {
        const auto there = place.find(file.first);
        if (there != place.end() && there->second == file.second) return true;
        return std::any_of(leftovers.begin(), leftovers.end(), [&](const auto& kept) {
            return kept.first.ends_with("/" + file.first) && kept.second == file.second;
        });
    });
}

Found foundIn(const Scenario& scenario, const Snapshot& place, const Snapshot& leftovers) {
    if (place == scenario.earlier()) return Found::kEarlier;
    const Snapshot timeless = withoutTimes(place);
    if (timeless == scenario.wanted()) return Found::kNew;
    if (lacksOnlyThePage(timeless, scenario.wanted())) return Found::kWithoutPage;
    const bool movesEntries = scenario.fillsCurrentFolder();
    if (movesEntries && isAllKept(scenario.earlier(), place, leftovers)) return Found::kMoving;
    return Found::kNeither;
}

// The first file that is not as wanted, with the first line in which it differs.
std::string firstDifference(const Snapshot& place, const Snapshot& wanted) {
    for (const auto& [name, bytes] : wanted) {
        const auto there = place.find(name);
        if (there == place.end()) return name + " is missing";
        const auto [ours, theirs] =
            std::mismatch(there->second.begin(), there->second.end(), bytes.begin(), bytes.end());
        if (ours == there->second.end() && theirs == bytes.end()) continue;
        const auto around = [](const std::string& text, std::size_t at) {
            return text.substr(at < 60 ? 0 : at - 60, 120);
        };
        const auto at = static_cast<std::size_t>(theirs - bytes.begin());
        return name + " has \"" + around(there->second, at) + "\" instead of \"" + around(bytes, at) + "\"";
    }
    return "it has more files";
}

// What is wrong with the exit status and the message, given what was found.
std::string untruth(const Ending& ending, Found found, bool mayFailAfterwards) {
    const bool isNew = found == Found::kNew || found == Found::kWithoutPage;
    if (ending.status == 0) {
        if (!isNew) return "status 0 without a new result";
        if (found == Found::kWithoutPage && !contains(ending.err, "znica: no report.html was written: ")) {
            return "no page and no word about it";
        }
        return ending.err.empty() || isOneSentence(ending.err) ? "" : "not one sentence";
    }
    if (!isOneSentence(ending.err)) return "not one sentence";
    const bool saysSo = contains(ending.err, "the result had been written already");
    return isNew && !saysSo && !mayFailAfterwards ? "a new result and a failure" : "";
}

} // namespace

Verdict judge(const Scenario& scenario, const Fault& fault, const Ending& ending) {
    Snapshot world = scenario.now();
    const std::string finished = placeOfFinished(scenario, ending.err);
    const Snapshot finishedResult = finished.empty() ? Snapshot() : takenOut(world, finished);
    const Snapshot leftovers = leftoversIn(world);
    const Snapshot visible = without(world, leftovers);
    const Snapshot place = below(visible, scenario.plan().place);
    Verdict verdict{foundIn(scenario, place, leftovers), !leftovers.empty(), ""};

    const auto around = [&](const Snapshot& all) {
        Snapshot rest = all;
        std::erase_if(rest, [&](const auto& entry) {
            return entry.first == scenario.plan().place || entry.first.starts_with(scenario.plan().place + "/");
        });
        return rest;
    };
    if (ending.hung) {
        verdict.complaint = "hung";
    } else if (around(visible) != around(scenario.before())) {
        verdict.complaint = "something else changed";
    } else if (verdict.found == Found::kNeither) {
        verdict.complaint =
            "neither the earlier nor the new result: " + firstDifference(withoutTimes(place), scenario.wanted());
    } else if (kills(fault)) {
        if (ending.signal != SIGKILL) verdict.complaint = "not killed";
    } else if (ending.signal != 0 && ending.signal != fault.number &&
               !((ending.signal == SIGSEGV || ending.signal == SIGBUS) && endsAnywhere(fault))) {
        verdict.complaint = "crashed with signal " + std::to_string(ending.signal);
    } else if (verdict.found == Found::kMoving && !endsAnywhere(fault)) {
        verdict.complaint = "in pieces";
    } else if (ending.signal == 0) {
        verdict.complaint = untruth(ending, verdict.found, endsAnywhere(fault));
        if (verdict.complaint.empty() && verdict.leftovers && !mayKeepFromRemoving(fault)) {
            verdict.complaint = "leftovers";
        }
        if (!finished.empty() && withoutTimes(finishedResult) != scenario.wanted()) {
            verdict.complaint = "an incomplete result called finished";
        }
    }
    return verdict;
}

} // namespace zn::test
