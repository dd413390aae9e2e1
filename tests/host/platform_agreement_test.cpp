// The same run gives the same numbers on every platform and with every compiler: they are compared with one shared
// file. This says nothing about whether the numbers are right; other tests do.
//
// The pseudo-random generator of the C library is the one thing that is bound to differ, so the linker replaces it: the
// replacement returns 0 or RAND_MAX, the only numbers that give the same start vectors, of -0.5 and 0.5, with every
// RAND_MAX.
//
// What is compared how closely:
//   - bit for bit: whatever depends only on sums, products, quotients and square roots, which IEEE 754 defines exactly:
//     covariance, eigenvalues and eigenvectors, and with the cube also iterations, maps and time courses
//   - to a millionth of their largest value: maps and time courses that depend on tanh or exp, where differences in the
//     last bits grow with the iterations
//   - to four units in the last place of a float: fingerprints of maps that are the same bit for bit, because the
//     libraries' log, exp, cos and sin differ
//
// When numbers change on purpose: the program writes its own to platform_agreement.actual.txt in the current folder;
// after reviewing the differences, copy that file to tests/host/platform_agreement.txt.

#include "host/scratch_directory.h"
#include "host/scripted_host.h"
#include "host/simulated_vtc.h"
#include "plugin/run_driver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

namespace {

std::uint64_t state = 0;

} // namespace

// The names that the linker's --wrap option requires.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {

void __wrap_srand(unsigned /*seed*/) {
    state = 7;
}

// The top bit of a linear congruential generator (Knuth's MMIX constants).
int __wrap_rand() {
    state = state * 6364136223846793005ULL + 1442695040888963407ULL;
    return state >> 63U ? RAND_MAX : 0;
}
}
// NOLINTEND(bugprone-reserved-identifier)

namespace zn::test {
namespace {

namespace fs = std::filesystem;

// Numbers in the shortest form that reads back exactly: the texts are equal only if the numbers are, to the last bit.
using Numbers = std::vector<std::string>;
using Results = std::map<std::string, Numbers>; // by name of the result

template <class Number> std::string exactly(Number value) {
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
}

double valueOf(const std::string& number) {
    double value = 0.0;
    const auto end = std::from_chars(number.data(), number.data() + number.size(), value).ptr;
    EXPECT_EQ(end, number.data() + number.size()) << number;
    return value;
}

std::vector<double> valuesOf(const Numbers& numbers) {
    std::vector<double> values;
    for (const auto& number : numbers) values.push_back(valueOf(number));
    return values;
}

Numbers wordsOf(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

Numbers doublesIn(const std::string& bytes) {
    std::vector<double> values(bytes.size() / sizeof(double));
    std::memcpy(values.data(), bytes.data(), values.size() * sizeof(double));
    Numbers numbers;
    for (const double value : values) numbers.push_back(exactly(value));
    return numbers;
}

void append(Numbers& numbers, const std::vector<float>& values) {
    for (const float value : values) numbers.push_back(exactly(value));
}

// How many iterations each attempt took, from the log.
Numbers iterationsIn(const std::vector<std::string>& log) {
    constexpr std::string_view kLabel = "Number of Iterations: ";
    Numbers iterations;
    for (const auto& line : log) {
        const auto found = line.find(kLabel);
        if (found != std::string::npos) iterations.push_back(wordsOf(line.substr(found + kLabel.size())).front());
    }
    return iterations;
}

void runWith(const std::string& contrast, int cube, int gaussian, Results& results) {
    const ScratchDirectory directory;
    ScriptedHost& host = scripted();
    host = ScriptedHost{};
    giveSimulatedVtc(host, 8, 6, 5, 24, 3);
    host.dialogStrings[3] = "design.rtc";
    host.dialogStrings[4] = "regions.voi";
    host.vois = {{60, 60, 60, 63, 60, 60}, {66, 60, 63, 66, 63, 63, 66, 60, 66}};
    host.predictors.assign(2, std::vector<float>(24, 0.0f));
    for (std::size_t t = 0; t < 24; ++t) {
        host.predictors[0][t] = t / 6 % 2 == 0 ? 0.0f : 1.0f; // rest and task alternate
        host.predictors[1][t] = static_cast<float>(t);
    }
    host.clusterSize = 2;
    host.zThreshold = 0.5f;
    host.dialogIntegers[5] = cube;
    host.dialogIntegers[3] = gaussian;
    ASSERT_TRUE(initialisePlugin());
    ASSERT_TRUE(executeRun());

    results["covariance"] = wordsOf(platformTextOf("Covariance.txt"));
    results["eigenpairs"] = doublesIn(contentOf("run1.eig"));
    results[contrast + "-iterations"] = iterationsIn(host.log());
    for (const auto& map : host.maps) {
        append(results[contrast + "-maps"], map.voxels);
        append(results[contrast + "-timecourses"], map.timeCourse);
        append(results[contrast + "-fingerprints"], map.parameters);
    }
}

// One line for each kind of result: its name, then the numbers.
void write(const Results& results, const fs::path& fileName) {
    std::ofstream file(fileName, std::ios::binary);
    for (const auto& [name, numbers] : results) {
        file << name;
        for (const auto& number : numbers) file << ' ' << number;
        file << '\n';
    }
}

Results read(const fs::path& fileName) {
    Results results;
    std::istringstream file(contentOf(fileName));
    for (std::string line; std::getline(file, line);) {
        const auto blank = line.find(' ');
        results[line.substr(0, blank)] = wordsOf(line.substr(blank));
    }
    return results;
}

class PlatformAgreement : public testing::Test {
protected:
    static void SetUpTestSuite() {
        expected = read(ZN_AGREED_RESULTS);
        runWith("cube", 1, 0, found);
        runWith("gaussian", 0, 1, found);
        runWith("tanh", 0, 0, found);
        write(found, "platform_agreement.actual.txt");
    }

    static void expectSame(const std::string& name) {
        ASSERT_FALSE(expected[name].empty()) << name;
        EXPECT_EQ(found[name], expected[name]) << name;
    }

    static void expectNear(const std::string& name, double ofLargest) {
        const auto wanted = valuesOf(expected[name]);
        ASSERT_FALSE(wanted.empty()) << name;
        double largest = 0.0;
        for (const double value : wanted) largest = std::max(largest, std::fabs(value));
        EXPECT_THAT(valuesOf(found[name]), testing::Pointwise(testing::DoubleNear(ofLargest * largest), wanted))
            << name;
    }

    static Results expected;
    static Results found;
};

Results PlatformAgreement::expected;
Results PlatformAgreement::found;

TEST_F(PlatformAgreement, OfCovarianceAndEigenpairsIsExact) {
    expectSame("covariance");
    expectSame("eigenpairs");
}

TEST_F(PlatformAgreement, OfComponentsFoundWithTheCubeIsExact) {
    expectSame("cube-iterations");
    expectSame("cube-maps");
    expectSame("cube-timecourses");
}

TEST_F(PlatformAgreement, OfFingerprintsOfGivenMapsIsToTheLastPlacesOfAFloat) {
    const auto wanted = valuesOf(expected["cube-fingerprints"]);
    const auto values = valuesOf(found["cube-fingerprints"]);
    ASSERT_EQ(wanted.size(), 3U * 16U);
    ASSERT_EQ(values.size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_FLOAT_EQ(static_cast<float>(values[i]), static_cast<float>(wanted[i])) << "parameter " << i;
    }
}

TEST_F(PlatformAgreement, OfComponentsFoundWithTanhOrGaussianIsToAMillionth) {
    for (const std::string contrast : {"tanh", "gaussian"}) {
        expectSame(contrast + "-iterations");
        expectNear(contrast + "-maps", 1e-6);
        expectNear(contrast + "-timecourses", 1e-6);
    }
}

} // namespace
} // namespace zn::test
