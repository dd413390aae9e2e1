#include "headless/run/repeat_runs.h"

#include "headless/failure/failure.h"
#include "headless/result/spatial_correlation.h"
#include "headless/run/seeded_rand.h"
#include "headless/run/run_log.h"
#include "headless/run/run_plugin.h"
#include "headless/run/stopwatch.h"

#include <algorithm>
#include <cmath>

namespace zn::headless {

namespace {

std::vector<std::size_t> analysedVoxels(const VolumeMaps& maps) {
    std::vector<std::size_t> chosen;
    const std::size_t voxels = maps.maps().empty() ? 0 : maps.maps().front().values.size();
    for (std::size_t v = 0; v < voxels; ++v) {
        const bool used =
            std::any_of(maps.maps().begin(), maps.maps().end(), [v](const auto& map) { return map.values[v] != 0.0f; });
        if (used) chosen.push_back(v);
    }
    return chosen;
}

// All runs' components side by side, ready to be correlated.
struct Collection {
    std::vector<std::size_t> chosen;
    std::vector<double> maps;
    std::vector<int> run;

    void add(const VolumeMaps& found, int number) {
        for (const VolumeMap& map : found.maps()) {
            const auto standardised = standardisedMaps(map.values, map.values.size(), chosen);
            maps.insert(maps.end(), standardised.begin(), standardised.end());
            run.push_back(number);
        }
    }
    std::vector<double> similarity() const {
        auto result = correlations(maps, maps, chosen.size());
        for (double& r : result) r = std::fabs(r);
        return result;
    }
};

void runAgain(const PluginLibrary& library, Session& session, const RunLog& log, const std::filesystem::path& scratch) {
    session.maps.clear();
    session.maskLoaded = session.regionsLoaded = session.designLoaded = false;
    try {
        runPlugin(library, session, log, scratch);
    } catch (const Failure& failure) {
        if (failure.status() != ExitStatus::kGaveUp) throw;
        session.maps.clear();
    }
    std::filesystem::remove_all(scratch);
}

} // namespace

RepeatFacts repeatRuns(const PluginLibrary& library, Session& session, const RunOptions& options, std::uint32_t seed,
                       const std::filesystem::path& folder, Progress& progress) {
    VolumeMaps first = std::move(session.maps);
    SessionEvents* const events = session.events;
    Collection all{analysedVoxels(first), {}, {}};
    all.maps.reserve(all.chosen.size() * static_cast<std::size_t>(options.components() * options.control.repeats));
    all.add(first, 0);
    RepeatFacts facts{{seed}, {static_cast<int>(first.maps().size())}, {}};

    Progress unseen(Progress::Display::kNone);
    const std::string of = " of " + std::to_string(options.control.repeats);
    for (int number = 1; number < options.control.repeats; ++number) {
        progress.stage("run " + std::to_string(number + 1) + of);
        RunLog log(folder / "log.txt", options.control.verbose, unseen, [](const VolumeMaps&) {});
        session.events = &log;
        facts.seeds.push_back(seed + static_cast<std::uint32_t>(number));
        log.logLine("znica: run " + std::to_string(number + 1) + of + ", seed " + std::to_string(facts.seeds.back()));
        beginRandomNumbers(facts.seeds.back());
        const Stopwatch running;
        runAgain(library, session, log, folder / "plugin" / "again");
        facts.secondsPlugin += running.seconds();
        facts.found.push_back(static_cast<int>(session.maps.maps().size()));
        all.add(session.maps, number);
    }
    session.events = events;
    session.maps = std::move(first);

    progress.stage("clustering");
    facts.converged = static_cast<int>(std::count(facts.found.begin(), facts.found.end(), options.components()));
    facts.stability = stabilityOf(all.similarity(), all.run, options.components());
    facts.stability.resize(static_cast<std::size_t>(facts.found.front()));
    return facts;
}

} // namespace zn::headless
