#include "headless/simulate/group_sample.h"

#include <algorithm>

namespace zn::headless {

namespace {

constexpr int kFirstFluctuation = 7; // see makeTimeCourse()

std::uint64_t seedOf(std::uint64_t seed, int subject) {
    return seed + 0x9E3779B97F4A7C15U * (static_cast<std::uint64_t>(subject) + 2U);
}

} // namespace

std::string subjectName(int subject, int subjects) {
    const std::size_t digits = std::max<std::size_t>(2, std::to_string(subjects).size());
    const std::string number = std::to_string(subject + 1);
    return "sub-" + std::string(digits - number.size(), '0') + number;
}

GroupSample makeGroupSample(const SimulateOptions& options, int subjects) {
    GroupSample group;
    group.shared = makeSample(options);
    group.seed = options.seed;
    for (int subject = 0; subject < subjects; ++subject) {
        RandomNumbers random(seedOf(options.seed, subject));
        auto& strengths = group.strengths.emplace_back();
        for (int source = 0; source < options.sources; ++source) strengths.push_back(random.uniform(0.4, 1.6));
    }
    for (std::size_t source = 0; source < group.shared.sources.size(); ++source) {
        group.shared.sources[source].timeCourse.kind = "source-" + std::to_string(source + 1);
        group.shared.sources[source].timeCourse.isTask = false;
    }
    return group;
}

Sample subjectSample(const GroupSample& group, int subject) {
    Sample sample = group.shared;
    sample.noiseSeed = seedOf(group.seed, subject) + 1U;
    RandomNumbers random(sample.noiseSeed + 1U);
    for (std::size_t source = 0; source < sample.sources.size(); ++source) {
        const std::string name = sample.sources[source].timeCourse.kind;
        sample.sources[source].timeCourse =
            makeTimeCourse(kFirstFluctuation, sample.brain.volumes, sample.secondsPerVolume, random);
        sample.sources[source].timeCourse.kind = name;
        sample.sources[source].amplitude *= group.strengths[static_cast<std::size_t>(subject)][source];
    }
    return sample;
}

} // namespace zn::headless
