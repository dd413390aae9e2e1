#include "headless/simulate/source_time_course.h"

#include <cmath>
#include <numbers>

namespace zn::headless {

namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;
constexpr double kStep = 0.1;  // seconds, of the stimulus before it is sampled
constexpr int kResponse = 300; // steps of the haemodynamic response

using Values = std::vector<double>;

void standardise(Values& values) {
    const auto count = static_cast<double>(values.size());
    double mean = 0.0;
    for (const double value : values) mean += value / count;
    double variance = 0.0;
    for (double& value : values) {
        value -= mean;
        variance += value * value / count;
    }
    if (variance > 0.0) {
        for (double& value : values) value /= std::sqrt(variance);
    }
}

// Difference of two gamma densities: a peak at 5 s, an undershoot of a sixth at 15 s.
// Friston et al. (1998), NeuroImage 7, 30-40.
double haemodynamicResponse(double seconds) {
    if (seconds <= 0.0) return 0.0;
    return std::exp(5.0 * std::log(seconds) - seconds - std::lgamma(6.0)) -
           std::exp(15.0 * std::log(seconds) - seconds - std::lgamma(16.0)) / 6.0;
}

// stimulus(seconds) is 1 while the stimulus is shown, otherwise 0.
template <class Stimulus> Values responseTo(Stimulus stimulus, int volumes, double tr) {
    Values values(static_cast<std::size_t>(volumes));
    for (std::size_t t = 0; t < values.size(); ++t) {
        for (int step = 0; step < kResponse; ++step) {
            const double past = step * kStep;
            const double when = static_cast<double>(t) * tr - past;
            if (when >= 0.0) values[t] += stimulus(when) * haemodynamicResponse(past) * kStep;
        }
    }
    return values;
}

Values blocks(int volumes, double tr, double period, double onset, double duration) {
    return responseTo(
        [=](double when) {
            const double phase = std::fmod(when + period - onset, period);
            return phase < duration ? 1.0 : 0.0;
        },
        volumes, tr);
}

Values events(int volumes, double tr, RandomNumbers& random) {
    Values onsets;
    double next = 4.0;
    while (next < volumes * tr) {
        onsets.push_back(next);
        next += random.uniform(6.0, 22.0);
    }
    return responseTo(
        [&](double when) {
            for (const double onset : onsets) {
                if (when >= onset && when < onset + 1.0) return 1.0;
            }
            return 0.0;
        },
        volumes, tr);
}

Values drift(int volumes, RandomNumbers& random) {
    Values values(static_cast<std::size_t>(volumes));
    const double phase = random.uniform(0.0, 0.5);
    for (std::size_t t = 0; t < values.size(); ++t) {
        const double x = static_cast<double>(t) / volumes;
        values[t] = 1.5 * x + std::cos(kTwoPi * (0.6 * x + phase));
    }
    return values;
}

// An oscillation with a slightly varying rate, sampled once per volume.
Values rhythm(int volumes, double tr, double hertz, RandomNumbers& random) {
    Values values(static_cast<std::size_t>(volumes));
    double phase = random.uniform();
    for (double& value : values) {
        value = std::cos(kTwoPi * phase);
        phase += hertz * tr + 0.03 * random.normal();
    }
    return values;
}

Values movement(int volumes, RandomNumbers& random) {
    Values values(static_cast<std::size_t>(volumes));
    double level = random.normal(); // at least one movement, at the start
    for (double& value : values) {
        if (random.uniform() < 0.05) level += random.normal();
        level *= 0.97; // back towards the rest position
        value = level;
    }
    return values;
}

Values fluctuation(int volumes, double tr, RandomNumbers& random) {
    Values values(static_cast<std::size_t>(volumes));
    for (int wave = 0; wave < 12; ++wave) {
        const double hertz = random.uniform(0.01, 0.1);
        const double phase = random.uniform();
        for (std::size_t t = 0; t < values.size(); ++t) {
            values[t] += std::cos(kTwoPi * (hertz * static_cast<double>(t) * tr + phase));
        }
    }
    return values;
}

} // namespace

SourceTimeCourse makeTimeCourse(int index, int volumes, double secondsPerVolume, RandomNumbers& random) {
    const double tr = secondsPerVolume;
    SourceTimeCourse course;
    switch (index) {
    case 0:
        course = {"blocks", true, blocks(volumes, tr, 40.0, 10.0, 20.0)};
        break;
    case 1:
        course = {"drift", false, drift(volumes, random)};
        break;
    case 2:
        course = {"pulse", false, rhythm(volumes, tr, 1.13, random)};
        break;
    case 3:
        course = {"blocks-b", true, blocks(volumes, tr, 54.0, 6.0, 16.0)};
        break;
    case 4:
        course = {"breathing", false, rhythm(volumes, tr, 0.29, random)};
        break;
    case 5:
        course = {"events", true, events(volumes, tr, random)};
        break;
    case 6:
        course = {"movement", false, movement(volumes, random)};
        break;
    default:
        course = {"fluctuation-" + std::to_string(index - 6), false, fluctuation(volumes, tr, random)};
    }
    standardise(course.values);
    return course;
}

} // namespace zn::headless
