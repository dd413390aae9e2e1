#include "attack/host/hostile_fixture.h"

#include "attack/host/run_record.h"
#include "attack/host/wrong_answers.h"

#include <limits>
#include <map>

namespace zn::test {

namespace {

constexpr std::size_t kGridVoxels = 8 * 6 * 5;
constexpr std::size_t kVolumes = 12;

// The last log line of every end of a run, with what `execute` returns then.
const std::map<std::string, bool>& endings() {
    static const std::map<std::string, bool> known = {
        {" ", true},
        {"// Plugin > Working memory full. Exiting plugin.", true},
        {"// Plugin>  No components found. Exiting plugin.", true},
        {"// Plugin>  Could not get VMR!", false},
        {"// Plugin>  Could not get VTC!", false},
        {"// Plugin> Wrong mask provided. Exiting plugin.", false},
        {"// Plugin> No voxels selected in the current VTC!", false},
        {"// Plugin> Too few voxels (less than number of time points) selected in the current VTC!", false},
        {"// Plugin> Too many voxels selected in the current VTC. Exiting plugin.", false},
        {"// Plugin> Too many iterations in routine jacobi. Exiting plugin.", false},
    };
    return known;
}

// Two predictors: a ramp and a block.
std::vector<std::vector<float>> somePredictors() {
    std::vector<std::vector<float>> predictors(2);
    for (std::size_t t = 0; t < kVolumes; ++t) {
        predictors[0].push_back(static_cast<float>(t));
        predictors[1].push_back(t / 3 % 2 == 0 ? 0.0f : 1.0f);
    }
    return predictors;
}

} // namespace

HostileFixture::HostileFixture() {
    restoreHost();
}

HostileFixture::~HostileFixture() {
    host = ScriptedHost{};
}

void HostileFixture::restoreHost() {
    host = ScriptedHost{};
    sources = giveSimulatedVtc(host, 8, 6, 5, kVolumes, 3);
    host.dialogStrings = {"run1.vtc", "brain.msk", "maps.ica", "design.rtc", "regions.voi"};
    host.mask = std::vector<unsigned char>(kGridVoxels, 1);
    for (std::size_t i = 0; i < kGridVoxels; i += 7) (*host.mask)[i] = 0;
    host.vois = {{60, 60, 62, 63, 60, 62, 66, 61, 65}, {57, 52, 59}};
    host.predictors = somePredictors();
    host.label = "S01";
    host.afterMatrixVector = [this](double* y, int length) {
        if (host.matrixVectorCalls <= kMostProducts) return;
        std::fill_n(y, length, std::numeric_limits<double>::quiet_NaN());
    };
}

bool HostileFixture::attack(const std::string& attempt) {
    provideStatedData(host);
    EXPECT_TRUE(plugin.initPlugin()) << attempt;
    host.calls.clear();
    const bool result = plugin.execute();
    expectReport(result, attempt);
    return result;
}

void HostileFixture::expectReport(bool result, const std::string& attempt) {
    EXPECT_FALSE(host.isBusy()) << attempt;
    const auto log = host.log();
    ++ends[log.empty() ? "" : log.back()];
    if (log.empty()) {
        EXPECT_EQ(host.calls.back(), "znLaunchICADialog()") << attempt;
        EXPECT_FALSE(result) << attempt;
        return;
    }
    const auto ending = endings().find(log.back());
    ASSERT_NE(ending, endings().end()) << attempt << ": " << log.back();
    EXPECT_EQ(result, ending->second) << attempt << ": " << log.back();
}

void HostileFixture::expectNoHarm(const std::string& attempt) {
    static std::string first;
    restoreHost();
    EXPECT_TRUE(attack("an ordinary run after " + attempt));
    const std::string record = recordOfRun(host);
    if (first.empty()) first = record;
    EXPECT_TRUE(record == first) << "another result after " << attempt;
    restoreHost();
}

} // namespace zn::test
