#include "headless/dimension/series_covariances.h"

#include "headless/blas/one_blas_thread.h"
#include "headless/simulate/random_numbers.h"

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

constexpr std::array<int, 3> kSize = {13, 11, 9};
constexpr int kExampleVolumes = 7;

struct Example {
    TimeSeries series;
    std::vector<unsigned char> mask;
};

// Integers, so that both stored types hold the same values; a third of the voxels is outside.
Example makeExample(bool asFloat) {
    RandomNumbers random(3);
    Example example;
    example.series.voxels = kSize[0] * kSize[1] * kSize[2];
    example.series.volumes = kExampleVolumes;
    const auto count = static_cast<std::size_t>(example.series.voxels) * kExampleVolumes;
    if (asFloat) example.series.floats = std::make_unique<float[]>(count);
    if (!asFloat) example.series.shorts = std::make_unique<std::int16_t[]>(count);
    for (std::size_t i = 0; i < count; ++i) {
        const auto value = static_cast<std::int16_t>(random.uniform(-1000.0, 1000.0));
        if (asFloat) example.series.floats[i] = value;
        if (!asFloat) example.series.shorts[i] = value;
    }
    for (std::int64_t v = 0; v < example.series.voxels; ++v) example.mask.push_back(random.uniform() < 0.67 ? 1 : 0);
    return example;
}

SeriesCovariances covariancesOf(const Example& example, int threads) {
    const OneBlasThread oneThread;
    WorkerThreads workers(threads);
    return seriesCovariances(example.series, kSize, example.mask, workers);
}

// Element (s, t) of the covariances, in the plainest form.
class Plain {
public:
    explicit Plain(const Example& example) : example_(example) {}

    double total(int s, int t) const {
        double sum = 0.0;
        double sumS = 0.0;
        double sumT = 0.0;
        double count = 0.0;
        for (int v = 0; v < example_.series.voxels; ++v) {
            if (!inside(v)) continue;
            count += 1.0;
            sumS += value(v, s);
            sumT += value(v, t);
            sum += value(v, s) * value(v, t);
        }
        return sum / count - sumS / count * sumT / count;
    }

    // Over the voxels whose coordinates add up to the axis modulo 3.
    double difference(std::size_t axis, int s, int t) const {
        double sum = 0.0;
        double count = 0.0;
        for (int z = 0; z < kSize[2]; ++z) {
            for (int y = 0; y < kSize[1]; ++y) {
                for (int x = 0; x < kSize[0]; ++x) {
                    std::array<int, 3> next = {x, y, z};
                    ++next[axis];
                    const int v = at({x, y, z});
                    if (static_cast<std::size_t>(x + y + z) % 3 != axis || next[axis] == kSize[axis]) continue;
                    if (!inside(v) || !inside(at(next))) continue;
                    count += 2.0;
                    sum += (value(at(next), s) - value(v, s)) * (value(at(next), t) - value(v, t));
                }
            }
        }
        return sum / count;
    }

private:
    static int at(const std::array<int, 3>& x) { return (x[2] * kSize[1] + x[1]) * kSize[0] + x[0]; }
    bool inside(int v) const { return example_.mask[static_cast<std::size_t>(v)] != 0; }
    double value(int v, int t) const {
        return static_cast<double>(example_.series.floats[static_cast<std::size_t>(v * kExampleVolumes + t)]);
    }

    const Example& example_;
};

TEST(SeriesCovariances, AreThoseOfThePlainForm) {
    const Example example = makeExample(true);
    const SeriesCovariances covariances = covariancesOf(example, 1);
    const Plain plain(example);
    for (int s = 0; s < kExampleVolumes; ++s) {
        for (int t = 0; t < kExampleVolumes; ++t) {
            const auto element = static_cast<std::size_t>(s * kExampleVolumes + t);
            EXPECT_NEAR(covariances.total[element], plain.total(s, t), 1e-7); // of values around 3e5
            for (std::size_t axis = 0; axis < 3; ++axis) {
                EXPECT_NEAR(covariances.differences[axis][element], plain.difference(axis, s, t), 1e-7);
            }
        }
    }
}

TEST(SeriesCovariances, AreTheSameBitsForEveryNumberOfThreadsAndStoredType) {
    const SeriesCovariances once = covariancesOf(makeExample(true), 1);
    for (const bool asFloat : {true, false}) {
        for (const int threads : {1, 2, 3, 7}) {
            const SeriesCovariances again = covariancesOf(makeExample(asFloat), threads);
            EXPECT_EQ(again.total, once.total) << threads;
            EXPECT_EQ(again.differences, once.differences) << threads;
        }
    }
}

TEST(SeriesCovariances, AreTheSameBitsForTheCoursesInTheMaskAlone) {
    const Example example = makeExample(true);
    std::vector<float> courses;
    for (std::size_t v = 0; v < example.mask.size(); ++v) {
        if (example.mask[v] == 0) continue;
        const float* course = example.series.floats.get() + v * kExampleVolumes;
        courses.insert(courses.end(), course, course + kExampleVolumes);
    }
    WorkerThreads workers(2);
    const SeriesCovariances inside = seriesCovariances(courses, kExampleVolumes, kSize, example.mask, workers);
    const SeriesCovariances whole = covariancesOf(example, 1);
    EXPECT_EQ(inside.voxels, whole.voxels);
    EXPECT_EQ(inside.total, whole.total);
    EXPECT_EQ(inside.differences, whole.differences);
}

TEST(SeriesCovariances, AnAxisWithoutNeighboursHasNoDifferences) {
    Example example = makeExample(true);
    WorkerThreads workers(1);
    example.mask.assign(example.mask.size(), 1);
    // The same voxels as a single column along y.
    const std::array<int, 3> column = {1, static_cast<int>(example.series.voxels), 1};
    const SeriesCovariances covariances = seriesCovariances(example.series, column, example.mask, workers);
    EXPECT_TRUE(covariances.differences[0].empty());
    EXPECT_FALSE(covariances.differences[1].empty());
    EXPECT_TRUE(covariances.differences[2].empty());
}

} // namespace
} // namespace zn::test
