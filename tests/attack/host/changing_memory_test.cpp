// A host may change or free what it has handed out as soon as the plug-in calls it again: while a prompt is open, the
// user can load another mask. The run goes on with what it was given.

#include "attack/host/hostile_fixture.h"
#include "attack/host/run_record.h"

#include <limits>

namespace zn::test {
namespace {

class ChangingMemory : public HostileFixture {
protected:
    ChangingMemory() {
        attack("nothing");
        expected = recordOfRun(host);
        restoreHost();
    }

    // Runs with a host that does this at the first call of the function.
    void expectSameResult(const std::string& function, const std::function<void()>& change) {
        int calls = 0;
        host.misbehaviour.beforeCall = [&](const std::string& called) {
            if (called == function && calls++ == 0) change();
        };
        EXPECT_TRUE(attack(function));
        EXPECT_GT(calls, 0) << function;
        EXPECT_TRUE(recordOfRun(host) == expected) << function;
        restoreHost();
    }

    void fillMask(unsigned char byte) { std::fill(host.mask->begin(), host.mask->end(), byte); }

    std::string expected;
};

TEST_F(ChangingMemory, OfAMaskThatSelectsMoreVoxels) {
    for (const char* function : {"znGetVOIs", "znGetVOI", "znGetDlgIntegerParameter", "znGetTextInput"}) {
        expectSameResult(function, [&] { fillMask(1); });
    }
}

TEST_F(ChangingMemory, OfAMaskThatSelectsNone) {
    for (const char* function : {"znGetVOIs", "znGetVOI", "znGetDlgIntegerParameter", "znGetTextInput"}) {
        expectSameResult(function, [&] { fillMask(0); });
    }
}

TEST_F(ChangingMemory, OfAMaskThatIsFreed) {
    for (const char* function : {"znGetVOIs", "znGetIntegerInput", "znGetTextInput"}) {
        expectSameResult(function, [&] {
            fillMask(255); // where freed memory could still be read
            host.mask.reset();
        });
    }
}

// The parameters of the dialog are read when the data have been copied.
TEST_F(ChangingMemory, OfDataThatAreFreedAfterTheVoxelsAreExtracted) {
    expectSameResult("znGetDlgIntegerParameter", [&] {
        std::fill(host.floats.begin(), host.floats.end(), std::numeric_limits<float>::quiet_NaN());
        std::vector<float>().swap(host.floats);
    });
}

TEST_F(ChangingMemory, OfRegionsAndPredictorsThatAreFreedAfterTheyAreRead) {
    expectSameResult("znGetTextInput", [&] {
        host.vois.clear();
        host.predictors.clear();
    });
}

// One array for all predictors, overwritten at each call, as a host with a buffer of its own would do.
TEST_F(ChangingMemory, OfPredictorsThatShareOneBuffer) {
    std::vector<float> buffer;
    const auto predictors = host.predictors;
    std::size_t next = 0;
    host.misbehaviour.pointer = [&](const std::string& function, void*& pointer) {
        if (function != "znGetPredictor" || next == predictors.size()) return;
        buffer = predictors[next++];
        pointer = buffer.data();
    };
    EXPECT_TRUE(attack("predictors in one buffer"));
    EXPECT_EQ(next, predictors.size());
    EXPECT_TRUE(recordOfRun(host) == expected);
}

} // namespace
} // namespace zn::test
