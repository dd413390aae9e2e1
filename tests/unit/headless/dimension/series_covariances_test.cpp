#include "headless/dimension/series_covariances.h"

#include "headless/blas/one_blas_thread.h"
#include "headless/simulate/random_numbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

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

SeriesCovariances covariancesOf(const Example& example, int threads, const Directions& leading = {}) {
    const OneBlasThread oneThread;
    WorkerThreads workers(threads);
    return seriesCovariances(example.series, kSize, example.mask, workers, leading);
}

// A constant and a straight line.
Directions constantAndLine() {
    Directions result{2, std::vector<double>(kExampleVolumes, 1.0 / std::sqrt(7.0))};
    for (int t = 0; t < kExampleVolumes; ++t) result.rows.push_back((t - 3) / std::sqrt(28.0));
    return result;
}

// The spatial mean of every volume.
std::array<double, kExampleVolumes> meanCourse(const Example& example) {
    std::array<double, kExampleVolumes> mean{};
    double count = 0.0;
    for (std::size_t v = 0; v < example.mask.size(); ++v) {
        if (example.mask[v] == 0) continue;
        count += 1.0;
        for (std::size_t t = 0; t < kExampleVolumes; ++t) mean[t] += example.series.floats[v * kExampleVolumes + t];
    }
    for (double& value : mean) value /= count;
    return mean;
}

// The sum of squares about the straight line that fits a course without the spatial means best.
double squaresAboutTheLine(const float* course, const std::array<double, kExampleVolumes>& mean) {
    double offset = 0.0;
    double slope = 0.0;
    for (std::size_t t = 0; t < kExampleVolumes; ++t) {
        offset += (course[t] - mean[t]) / 7.0;
        slope += (course[t] - mean[t]) * (static_cast<double>(t) - 3.0) / 28.0;
    }
    double sum = 0.0;
    for (std::size_t t = 0; t < kExampleVolumes; ++t) {
        sum += std::pow(course[t] - mean[t] - offset - slope * (static_cast<double>(t) - 3.0), 2);
    }
    return sum;
}

// Multiplies every course as the definition says; returns how often the largest factor is used.
int normaliseVariance(Example& example) {
    const auto mean = meanCourse(example);
    double level = 0.0;
    double count = 0.0;
    for (std::size_t v = 0; v < example.mask.size(); ++v) {
        if (example.mask[v] == 0) continue;
        count += 1.0;
        level += squaresAboutTheLine(example.series.floats.get() + v * kExampleVolumes, mean);
    }
    int largest = 0;
    for (std::size_t v = 0; v < example.mask.size(); ++v) {
        if (example.mask[v] == 0) continue;
        float* course = example.series.floats.get() + v * kExampleVolumes;
        double factor = std::sqrt(level / count / squaresAboutTheLine(course, mean));
        if (factor > 10.0) {
            factor = 10.0;
            ++largest;
        }
        for (int t = 0; t < kExampleVolumes; ++t) course[t] = static_cast<float>(factor * course[t]);
    }
    return largest;
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

TEST(SeriesCovariances, VarianceNormalisedAreThoseOfCoursesDividedByTheirNoise) {
    Example example = makeExample(true);
    const std::size_t quiet = 500; // a voxel without any noise but that of the spatial means
    example.mask[quiet] = 1;
    std::fill_n(example.series.floats.get() + quiet * kExampleVolumes, kExampleVolumes, 0.0f);
    const SeriesCovariances normalised = covariancesOf(example, 2, constantAndLine());
    ASSERT_EQ(normaliseVariance(example), 1);
    const SeriesCovariances expected = covariancesOf(example, 1);
    for (std::size_t i = 0; i < expected.total.size(); ++i) {
        EXPECT_NEAR(normalised.total[i], expected.total[i], 0.02); // of values around 3e5, rounded to single precision
        for (std::size_t axis = 0; axis < 3; ++axis) {
            EXPECT_NEAR(normalised.differences[axis][i], expected.differences[axis][i], 0.02);
        }
    }
}

TEST(SeriesCovariances, CoursesWithoutNoiseStayAsTheyAre) {
    Example example = makeExample(true);
    std::fill_n(example.series.floats.get(), example.series.voxels * kExampleVolumes, 5.0f);
    EXPECT_EQ(covariancesOf(example, 1, constantAndLine()).total, covariancesOf(example, 1).total);
}

TEST(SeriesCovariances, AreTheSameBitsForEveryNumberOfThreadsAndStoredType) {
    for (const Directions& leading : {Directions{}, constantAndLine()}) {
        const SeriesCovariances once = covariancesOf(makeExample(true), 1, leading);
        for (const bool asFloat : {true, false}) {
            for (const int threads : {1, 2, 3, 7}) {
                const SeriesCovariances again = covariancesOf(makeExample(asFloat), threads, leading);
                EXPECT_EQ(again.total, once.total) << threads;
                EXPECT_EQ(again.differences, once.differences) << threads;
            }
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
    for (const Directions& leading : {Directions{}, constantAndLine()}) {
        const SeriesCovariances inside =
            seriesCovariances(courses, kExampleVolumes, kSize, example.mask, workers, leading);
        const SeriesCovariances whole = covariancesOf(example, 1, leading);
        EXPECT_EQ(inside.voxels, whole.voxels);
        EXPECT_EQ(inside.total, whole.total);
        EXPECT_EQ(inside.differences, whole.differences);
    }
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
