#include "headless/run/stages.h"

#include "headless/failure/failure.h"
#include "headless/nifti/image_writer.h"
#include "headless/result/spatial_correlation.h"
#include "headless/run/run_log.h"
#include "headless/run/run_plugin.h"
#include "headless/run/seeded_rand.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

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

// The components of all runs side by side, ready to be correlated.
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
    std::vector<double> similarity(MatrixProducts& products) const {
        auto result = correlations(products, maps, maps, chosen.size());
        for (double& r : result) r = std::fabs(r);
        return result;
    }
};

// One more run over the session; its files go into a temporary folder.
void runAgain(Run& run, const RunLog& log) {
    Session& session = run.session;
    session.maps.clear();
    session.maskLoaded = session.regionsLoaded = session.designLoaded = false;
    const std::filesystem::path scratch = (*run.files)[ResultFile::kPluginFolder] / "again";
    const Stopwatch running;
    try {
        runPlugin(*run.library, session, log, scratch);
    } catch (const Failure& failure) {
        if (failure.status() != ExitStatus::kGaveUp) throw;
        session.maps.clear();
    }
    std::filesystem::remove_all(scratch);
    run.seconds.plugin += running.seconds();
}

std::vector<ClusterFacts> factsOf(const std::vector<ComponentCluster>& clusters, const std::vector<int>& run) {
    std::vector<ClusterFacts> facts;
    for (const ComponentCluster& cluster : clusters) {
        const int number = run[cluster.centrotype];
        const auto first = std::find(run.begin(), run.end(), number) - run.begin();
        facts.push_back({cluster.stability, static_cast<int>(cluster.members.size()), number,
                         static_cast<int>(static_cast<std::ptrdiff_t>(cluster.centrotype) - first)});
    }
    return facts;
}

// One volume per cluster: its centrotype with mean 0 and unit variance over the voxels analysed. The sign is chosen
// such that the larger tail is positive, because signs may differ between runs.
void writeCentrotypes(const Run& run, const Collection& all, const std::vector<ComponentCluster>& clusters) {
    ImageWriter::Layout layout;
    layout.volumes = static_cast<int>(clusters.size());
    layout.description = "ICA centrotype maps";
    ImageWriter writer((*run.files)[ResultFile::kCentrotypes], *run.functional.image, layout);
    std::vector<float> volume(static_cast<std::size_t>(run.functional.voxels()));
    const std::size_t voxels = all.chosen.size();
    for (const ComponentCluster& cluster : clusters) {
        const double* map = all.maps.data() + cluster.centrotype * voxels;
        double third = 0.0;
        for (std::size_t i = 0; i < voxels; ++i) third += map[i] * map[i] * map[i];
        const double scale = std::copysign(std::sqrt(static_cast<double>(voxels)), third);
        for (std::size_t i = 0; i < voxels; ++i) volume[all.chosen[i]] = static_cast<float>(scale * map[i]);
        writer.write(volume);
    }
    writer.close();
}

} // namespace

void repeatSeparation(Run& run) {
    const int runs = run.options.control.repeats;
    if (runs == 1) return;
    finishMaps(run); // before the maps make room for those of the other runs
    Session& session = run.session;
    const int components = run.eigenvalues.count();
    VolumeMaps first = std::move(session.maps);
    Collection all{analysedVoxels(first), {}, {}};
    all.maps.reserve(all.chosen.size() * static_cast<std::size_t>(components * runs));
    all.add(first, 0);
    RepeatFacts facts{{run.seed}, {static_cast<int>(first.maps().size())}, {}, {}};

    Progress unseen(Progress::Display::kNone);
    const std::string of = " of " + std::to_string(runs);
    for (int number = 1; number < runs; ++number) {
        run.progress.stage("run " + std::to_string(number + 1) + of);
        RunLog log((*run.files)[ResultFile::kLog], run.options.control.verbose, unseen, [](const VolumeMaps&) {},
                   run.unfinished);
        session.events = &log;
        facts.seeds.push_back(run.seed + static_cast<std::uint32_t>(number));
        log.logLine("znica: run " + std::to_string(number + 1) + of + ", seed " + std::to_string(facts.seeds.back()));
        beginRandomNumbers(facts.seeds.back());
        SymmetricSeparator separator(run.products->team(), log, unseen, run.options.starts, facts.seeds.back());
        if (run.options.approach == Approach::kSymmetric) session.separator = &separator;
        runAgain(run, log);
        session.separator = nullptr;
        log.requireWritten();
        facts.found.push_back(static_cast<int>(session.maps.maps().size()));
        all.add(session.maps, number);
    }
    session.events = &*run.log;
    session.maps = std::move(first);

    run.progress.stage("clustering");
    facts.converged = static_cast<int>(std::count(facts.found.begin(), facts.found.end(), components));
    const auto clusters = clustersOf(all.similarity(*run.products), all.run, components);
    writeCentrotypes(run, all, clusters);
    facts.clusters = factsOf(clusters, all.run);
    facts.stability = stabilityOf(clusters, all.run.size());
    facts.stability.resize(static_cast<std::size_t>(facts.found.front()));
    run.repeats = std::move(facts);
}

} // namespace zn::headless
