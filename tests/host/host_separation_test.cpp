// A host that finds the components itself: this program also exports the optional function.

#include "host/host_fixture.h"
#include "host/scripted_call.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>

namespace zn::test {
namespace {

/// What the plug-in passed in the last call.
struct Request {
    std::vector<double> z;
    std::vector<double> dewhitening;
    int volumes = 0;
    int components = 0;
    int voxels = 0;
    int nonlinearity = -1;
    double epsilon = 0.0;
    int iterationLimit = 0;
};

Request request;
std::function<int(double* vectors)> answer;

} // namespace
} // namespace zn::test

ZN_HOST_FUNCTION int znSeparateWhitenedData(const double* z, const double* dewhitening, int volumes, int components,
                                            int voxels, int nonlinearity, double epsilon, int iterationLimit,
                                            double* vectors) {
    const zn::test::Call entered("znSeparateWhitenedData()");
    zn::test::request = {{z, z + static_cast<long long>(components) * voxels},
                         {dewhitening, dewhitening + static_cast<long long>(volumes) * components},
                         volumes,
                         components,
                         voxels,
                         nonlinearity,
                         epsilon,
                         iterationLimit};
    return zn::test::answer(vectors);
}

namespace zn::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

class HostSeparation : public HostFixture {
protected:
    HostSeparation() {
        request = Request{};
        answer = [](double* vectors) {
            const std::array<double, 9> chosen = {0, 1, 0, 0.6, 0, -0.8, 1, 0, 0};
            std::copy(chosen.begin(), chosen.end(), vectors);
            return 2;
        };
    }
};

TEST_F(HostSeparation, GetsWhiteDataWithTheSettingsOfTheDialog) {
    ASSERT_TRUE(run());
    EXPECT_EQ(request.components, 3);
    EXPECT_EQ(request.voxels, 240);
    EXPECT_EQ(request.nonlinearity, 0);
    EXPECT_EQ(request.epsilon, static_cast<double>(1e-4f));
    EXPECT_EQ(request.iterationLimit, 200);
    std::array<double, 3> eigenvalues{}; // the squared lengths of the columns
    for (std::size_t i = 0; i < request.dewhitening.size(); ++i) {
        eigenvalues[i % 3] += request.dewhitening[i] * request.dewhitening[i];
    }
    EXPECT_EQ(request.dewhitening.size(), 3U * static_cast<std::size_t>(request.volumes));
    EXPECT_TRUE(std::is_sorted(eigenvalues.rbegin(), eigenvalues.rend()));
    EXPECT_GT(eigenvalues[2], 0.0);
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) {
            double sum = 0.0;
            for (std::size_t v = 0; v < 240; ++v) sum += request.z[240 * i + v] * request.z[240 * j + v] / 240;
            EXPECT_NEAR(sum, i == j ? 1.0 : 0.0, 1e-10);
        }
    }
}

TEST_F(HostSeparation, NamesEveryNonlinearity) {
    host.dialogIntegers[3] = 1;
    run();
    EXPECT_EQ(request.nonlinearity, 1);
    host.dialogIntegers[5] = 1;
    run();
    EXPECT_EQ(request.nonlinearity, 2);
}

// A map is its unit vector times the whitened data.
TEST_F(HostSeparation, DeterminesTheMaps) {
    ASSERT_TRUE(run());
    ASSERT_THAT(host.maps, SizeIs(2));
    for (std::size_t v = 0; v < 240; ++v) {
        EXPECT_NEAR(static_cast<double>(host.maps[0].voxels[v]), request.z[240 + v], 1e-5);
        EXPECT_NEAR(static_cast<double>(host.maps[1].voxels[v]), 0.6 * request.z[v] - 0.8 * request.z[480 + v], 1e-5);
    }
}

TEST_F(HostSeparation, IsNotAnnouncedAsDeflation) {
    run();
    EXPECT_THAT(host.log(), Not(Contains(HasSubstr("FastICA"))));
    EXPECT_EQ(host.matrixVectorCalls, 0);
}

TEST_F(HostSeparation, MayBeDeclined) {
    answer = [](double*) { return -1; };
    ASSERT_TRUE(run());
    EXPECT_THAT(host.log(), Contains("// Plugin>  Running FastICA computation (deflation approach)..."));
    EXPECT_THAT(host.maps, SizeIs(3));
}

TEST_F(HostSeparation, IsNotRequestedWhenTheDialogSwitchesFastIcaOff) {
    host.dialogIntegers[0] = 0;
    run();
    EXPECT_THAT(host.calls, Not(Contains("znSeparateWhitenedData()")));
}

TEST_F(HostSeparation, WithoutComponentsEndsTheRunAsUsual) {
    answer = [](double*) { return 0; };
    EXPECT_TRUE(run());
    EXPECT_THAT(host.log(), Contains("// Plugin>  No components found. Exiting plugin."));
}

TEST_F(HostSeparation, WithTooManyComponentsEndsTheRunWithAMessage) {
    answer = [](double*) { return 4; };
    EXPECT_FALSE(run());
    EXPECT_THAT(host.boxes(), ElementsAre("More components than requested from the host in routine separateInHost"));
    EXPECT_FALSE(host.isBusy());
}

TEST_F(HostSeparation, WithoutUnitVectorsEndsTheRunWithAMessage) {
    for (const double wrong : {0.0, 0.999, std::nan(""), std::numeric_limits<double>::infinity()}) {
        host.calls.clear();
        answer = [wrong](double* vectors) {
            vectors[0] = wrong;
            return 1;
        };
        EXPECT_FALSE(run()) << wrong;
        EXPECT_THAT(host.boxes(), ElementsAre("No unit vector from the host in routine separateInHost")) << wrong;
    }
}

} // namespace
} // namespace zn::test
