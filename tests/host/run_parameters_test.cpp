// The adjustments of eigenvalue range and number of components, read from the log of a run that finds nothing.

#include "host/host_fixture.h"

#include <cstring>
#include <numeric>

namespace zn::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class RunParameters : public HostFixture {
protected:
    RunParameters() { host.dialogIntegers[8] = 0; }

    // Log lines about adjustments of a run with this range and number of components.
    std::vector<std::string> adjustments(int first, int last, int components) {
        host.dialogIntegers[6] = first;
        host.dialogIntegers[7] = last;
        host.dialogIntegers[9] = components;
        run();
        std::vector<std::string> lines;
        for (const auto& line : host.log()) {
            if (line.find("Adjusting") != std::string::npos || line.find("Reducing") != std::string::npos) {
                lines.push_back(line);
            }
        }
        return lines;
    }
};

TEST_F(RunParameters, ThatFitAreNotAdjusted) {
    EXPECT_THAT(adjustments(1, 5, 5), IsEmpty());
}

TEST_F(RunParameters, FirstAboveLastBecomesLastAndLeavesOneComponent) {
    EXPECT_THAT(adjustments(5, 3, 3),
                ElementsAre("// Plugin>  Adjusting the first eigenvalue from 5 to 3 ...",
                            "// Plugin>  Adjusting the number of independent components from 3 to 1 (data dimension)"));
    EXPECT_THAT(host.calls, Contains("zn_intel_matrix_matrix_mult_d(1, 240, 12, 0, 1)")); // one whitened row
}

TEST_F(RunParameters, ARangeLongerThanTheVolumesIsCutAtItsEnd) {
    EXPECT_THAT(adjustments(1, 15, 12), ElementsAre("// Plugin>  Adjusting the last eigenvalue from 15 to 12 ..."));
}

TEST_F(RunParameters, TheCutRangeKeepsItsStartAndMayReachBeyondTheVolumes) {
    EXPECT_THAT(adjustments(5, 20, 12), ElementsAre("// Plugin>  Adjusting the last eigenvalue from 20 to 16 ..."));
}

TEST_F(RunParameters, TooManyComponentsAreReducedAndThenAdjusted) {
    EXPECT_THAT(
        adjustments(1, 4, 20),
        ElementsAre("// Plugin>  Reducing the number of components from 20 to 12 (number of volumes)",
                    "// Plugin>  Adjusting the number of independent components from 12 to 4 (data dimension)"));
}

TEST_F(RunParameters, TheNumberOfComponentsFollowsTheRangeUpwardsToo) {
    EXPECT_THAT(adjustments(2, 6, 1),
                ElementsAre("// Plugin>  Adjusting the number of independent components from 1 to 5 (data dimension)"));
}

TEST_F(RunParameters, WithExtremeValuesDoNoHarm) {
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();
    EXPECT_THAT(adjustments(least, most, most), testing::SizeIs(2));
    EXPECT_THAT(adjustments(most, least, least), testing::SizeIs(2));
    EXPECT_THAT(adjustments(most, most, 1), IsEmpty());
}

// The number of components that a run finds with this range and number of components.
class FoundComponents : public RunParameters {
protected:
    FoundComponents() { host.dialogIntegers[8] = 200; }
    std::size_t found(int first, int last, int components) {
        adjustments(first, last, components);
        return host.maps.size();
    }
};

TEST_F(FoundComponents, AreAsManyAsTheRangeIsLong) {
    EXPECT_EQ(found(1, 3, 3), 3U);
    EXPECT_EQ(found(1, 3, 20), 3U);
    EXPECT_EQ(found(1, 3, 1), 3U);
    EXPECT_EQ(found(2, 2, 5), 1U);
}

TEST_F(FoundComponents, NeedNoIterationLimit) {
    host.dialogIntegers[8] = -1;
    EXPECT_EQ(found(1, 3, 3), 3U);
}

TEST_F(FoundComponents, OfAReversedRangeBelongToItsLastEigenvalue) {
    adjustments(5, 3, 3);
    const std::string bytes = contentOf("run1.eig");
    std::vector<double> values(12);
    ASSERT_GE(bytes.size(), 12 * sizeof(double));
    std::memcpy(values.data(), bytes.data(), 12 * sizeof(double));
    const double share = values[2] / std::accumulate(values.begin(), values.end(), 0.0) * 100.0;
    const std::string start = "// Plugin>  Retained variance after dimensionality reduction: ";
    for (const auto& line : host.log()) {
        if (line.starts_with(start)) {
            EXPECT_NEAR(std::stod(line.substr(start.size())), share, 1e-5);
            return;
        }
    }
    FAIL() << "no line says the retained variance";
}

} // namespace
} // namespace zn::test
