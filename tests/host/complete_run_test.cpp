// Whole runs through the plug-in file.

#include "host/has_form.h"
#include "host/host_fixture.h"

#include <algorithm>
#include <cstring>

namespace zn::test {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::Gt;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

class CompleteRun : public HostFixture {};

TEST_F(CompleteRun, CallsTheHostInTheOrderOfItsStages) {
    ASSERT_TRUE(run());
    std::vector<std::string> calls = host.calls;
    const auto isAttempt = [](const std::string& call) {
        return call.starts_with("znLogText(// Plugin>  IC #: ") ||
               call == "zn_intel_matrix_matrix_mult_d(3, 3, 3, 0, 1)";
    };
    std::erase_if(calls, isAttempt); // their number depends on the random start vectors
    for (auto& call : calls) {
        const auto time = call.find("(elapsed time: ");
        if (time != std::string::npos) call.replace(time, call.find(" secs)") - time, "(elapsed time: N");
    }
    EXPECT_THAT(
        calls, ElementsAre(
                   "znGetCurrentVMR()", "znGetDlgStringParameter(0)", "znGetDlgStringParameter(1)",
                   "znGetDlgStringParameter(2)", "znGetDlgStringParameter(3)", "znGetDlgStringParameter(4)",
                   "znLinkVTCToCurrentVMR(run1.vtc, 1)", "znGetHeaderOfVTCOfCurrentVMR()", "znShowBusyCursor()",
                   "znGetVTCFloatDataOfCurrentVMR()", "znLogText(// Plugin>  Number of used VTC voxels: 240)",
                   "znLogText(// Plugin>  No VOI definition currently available (for spatial template))",
                   "znGetDlgIntegerParameter(0)", "znGetDlgIntegerParameter(5)", "znGetDlgIntegerParameter(3)",
                   "znGetDlgFloatParameter(0)", "znGetDlgIntegerParameter(8)", "znGetDlgIntegerParameter(6)",
                   "znGetDlgIntegerParameter(7)", "znGetDlgIntegerParameter(9)",
                   "znLogText(// Plugin>  Removing the spatial mean from data matrix...)",
                   "znLogText(// Plugin>  Computing covariance matrix of data...)", "znUpdateActiveWindow()",
                   "zn_intel_matrix_matrix_mult_d(12, 12, 240, 1, 0)",
                   "znLogText(// Plugin>  Covariance matrix computed (elapsed time: N secs))", "znUpdateActiveWindow()",
                   "znLogText(// Plugin>  Computing eigenvalues and eigenvectors of the covariance matrix...)",
                   "znLogText(// Plugin>  Saving eigenvalues and eigenvectors of the covariance matrix...)",
                   "znUpdateActiveWindow()",
                   HasForm("znLogText(// Plugin>  Retained variance after dimensionality reduction: ~.~ %)"),
                   "zn_intel_matrix_matrix_mult_d(3, 240, 12, 0, 1)",
                   "znLogText(// Plugin>  Running FastICA computation (deflation approach)...)",
                   "zn_intel_matrix_matrix_mult_d(3, 240, 12, 0, 1)",
                   "znLogText(// Plugin>  Computing parameters of the Independent Components... )",
                   "znUpdateActiveWindow()", "znStopBusyCursor()",
                   "znGetIntegerInput(Please enter a Cluster size threshold (cancel to skip):, 10, 2, 2000)",
                   "znGetFloatInput(Z threshold for maps:, 2.5, 0.1, 100)", "znClearDesignMatrix()",
                   "znLogText(// Plugin>  Saving computed Independent Components... )", "znUpdateActiveWindow()",
                   "znDeleteNRVMPsOfCurrentVMR()", "znCreateNRVMPsForCurrentVMR(3, 12, 16)",
                   "znGetNRVMPsOfCurrentVMR()", "znSetNRVMPsParamsDisplayRange()", "znStopBusyCursor()",
                   "znGetTextInput(Please enter subject/session label (cancel to skip):, )", "znShowBusyCursor()",
                   "znGetNRVMPOfCurrentVMR(0)", "znSetNRVMPParametersOfCurrentVMR(0)", "znGetNRVMPOfCurrentVMR(1)",
                   "znSetNRVMPParametersOfCurrentVMR(1)", "znGetNRVMPOfCurrentVMR(2)",
                   "znSetNRVMPParametersOfCurrentVMR(2)", "znSaveNRVMPsOfCurrentVMR(maps.ica)", "znStopBusyCursor()",
                   "znLogText(// Plugin>  ICA Plugin completed!)", "znLogText( )"));
}

TEST_F(CompleteRun, LogsEveryComponentWithItsIterations) {
    run();
    int components = 0;
    for (const auto& line : host.log()) {
        if (!line.starts_with("// Plugin>  IC #: ") || line.find("restarting") != std::string::npos) continue;
        ++components;
        EXPECT_THAT(line, HasForm("// Plugin>  IC #: " + std::to_string(components) +
                                  "  Number of Iterations: ~ (elapsed time: ~ secs) "));
    }
    EXPECT_EQ(components, 3);
}

TEST_F(CompleteRun, FindsTheKnownSourcesWithEachNonlinearity) {
    const std::map<std::string, std::pair<int, int>> selectors = {
        {"cube", {1, 0}}, {"gaussian", {0, 1}}, {"tanh", {0, 0}}};
    sources = giveSimulatedVtc(host, 20, 20, 10, 40, 3);
    for (const auto& [name, selector] : selectors) {
        host.dialogIntegers[5] = selector.first;
        host.dialogIntegers[3] = selector.second;
        EXPECT_TRUE(run());
        EXPECT_THAT(recoveredMaps(host, sources), Each(Gt(0.95))) << name;
    }
}

TEST_F(CompleteRun, ReadsTheSecondNonlinearitySwitchOnlyWhenTheFirstIsNotOne) {
    host.dialogIntegers[5] = 1;
    run();
    EXPECT_THAT(host.calls, Not(Contains("znGetDlgIntegerParameter(3)")));
}

TEST_F(CompleteRun, TakesSixteenBitDataUnchanged) {
    for (float value : host.floats) host.shorts.push_back(static_cast<short>(value));
    host.floats.clear();
    host.header.dataType = 1;
    EXPECT_TRUE(run());
    EXPECT_THAT(host.calls, Contains("znGetVTCIntDataOfCurrentVMR()"));
    EXPECT_THAT(host.maps, SizeIs(3));
}

TEST_F(CompleteRun, AcceptsAsManyVoxelsAsVolumes) {
    host.dialogStrings[1] = "twelve.msk";
    host.mask.emplace(240, static_cast<unsigned char>(0));
    std::fill_n(host.mask->begin() + 30, 12, static_cast<unsigned char>(255));
    run(); // twelve centred voxels of random numbers need not converge; what matters is that the run continues
    EXPECT_THAT(host.log(), Contains("// Plugin>  Number of used VTC voxels: 12"));
    EXPECT_THAT(host.log(), Contains("// Plugin>  Running FastICA computation (deflation approach)..."));
    EXPECT_FALSE(host.isBusy());
}

TEST_F(CompleteRun, AcceptsExactlyFiveMillionVoxels) {
    host.header.volumes = 2;
    host.setGrid(5'000'000, 1, 1);
    host.floats.assign(10'000'000, 1.0f);
    for (std::size_t i = 0; i < host.floats.size(); i += 7) host.floats[i] = 2.0f;
    host.dialogIntegers[8] = 0; // ends the run before the maps
    EXPECT_TRUE(run());
    EXPECT_THAT(host.log(), Contains("// Plugin>  Number of used VTC voxels: 5000000"));
    EXPECT_THAT(host.log(), Contains("// Plugin>  Running FastICA computation (deflation approach)..."));
}

TEST_F(CompleteRun, CountsASignFlipAsConverged) {
    // With one component the unit vector is 1 or -1; the peaked source flips it in every update.
    host.dialogIntegers[7] = 1;
    host.dialogIntegers[9] = 1;
    EXPECT_TRUE(run());
    EXPECT_THAT(host.log(), Contains(StartsWith("// Plugin>  IC #: 1  Number of Iterations: 2 ")));
}

TEST_F(CompleteRun, AddsUpFailuresOfDifferentComponentsAndKeepsWhatWasFound) {
    // Each component's first attempt is made to fail: the sixth of six failures on six components ends the search.
    sources = giveSimulatedVtc(host, 20, 20, 10, 20, 8);
    host.dialogIntegers[7] = 8;
    host.dialogIntegers[9] = 8;
    std::size_t spoilt = 0;
    host.afterMatrixVector = [&](double* y, int length) {
        const auto lines = host.log();
        const auto found =
            static_cast<std::size_t>(std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
                return line.starts_with("// Plugin>  IC #: ") && line.find("restarting") == std::string::npos;
            }));
        if (spoilt > found || length != 4000) return;
        std::fill_n(y, length, std::numeric_limits<double>::quiet_NaN());
        ++spoilt;
    };
    EXPECT_TRUE(run());
    EXPECT_EQ(spoilt, 6U);
    EXPECT_THAT(host.maps, SizeIs(5));
    EXPECT_THAT(host.log(), Contains("// Plugin>  Too many failures to converge....giving up!"));
    EXPECT_THAT(host.calls, Contains("znCreateNRVMPsForCurrentVMR(5, 20, 16)"));
}

TEST_F(CompleteRun, ClearsTheResultOfEveryProductWithAVector) {
    run();
    EXPECT_GT(host.matrixVectorCalls, 0);
    EXPECT_EQ(host.unclearedResults, 0);
}

TEST_F(CompleteRun, AcceptsASingleVolume) {
    // The covariance is a single number with eigenvector 1; the only component is the volume itself.
    sources = giveSimulatedVtc(host, 8, 6, 5, 1, 1);
    host.dialogIntegers[7] = host.dialogIntegers[9] = 1;
    EXPECT_TRUE(run());
    EXPECT_EQ(host.maps.size(), 1U);
    const std::string bytes = contentOf("run1.eig");
    ASSERT_EQ(bytes.size(), 2 * sizeof(double));
    double vector = 0.0;
    std::memcpy(&vector, bytes.data() + sizeof(double), sizeof vector);
    EXPECT_EQ(vector, 1.0);
}

TEST_F(CompleteRun, RetainsAllVarianceWithAllEigenvalues) {
    host.dialogIntegers[7] = 12;
    host.dialogIntegers[8] = 0;
    run();
    EXPECT_THAT(host.log(), Contains("// Plugin>  Retained variance after dimensionality reduction: 100.000000 %"));
}

TEST_F(CompleteRun, CanBeRepeatedWithOneObject) {
    EXPECT_TRUE(run());
    host.calls.clear();
    EXPECT_TRUE(plugin.execute());
    EXPECT_THAT(host.maps, SizeIs(3));
    EXPECT_EQ(host.log().back(), " ");
}

TEST_F(CompleteRun, CallsNothingThatItDoesNotNeed) {
    run();
    EXPECT_THAT(host.calls, Each(Not(HasSubstr("never to be called"))));
}

} // namespace
} // namespace zn::test
