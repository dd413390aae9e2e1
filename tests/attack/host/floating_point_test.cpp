// A host may have floating-point errors raise a signal. The plug-in divides by zero where the data ask for it, and the
// results are NaN or infinite; this must not end the host.

#include "attack/host/hostile_fixture.h"
#include "attack/host/run_record.h"

#include <cfenv>
#include <stdexcept>

namespace zn::test {
namespace {

class FloatingPoint : public HostileFixture {
protected:
    ~FloatingPoint() override { fedisableexcept(FE_ALL_EXCEPT); }
};

TEST_F(FloatingPoint, ThatTrapsErrorsChangesNothing) {
    attack("nothing");
    const std::string record = recordOfRun(host);
    for (const int traps : {FE_DIVBYZERO, FE_INVALID, FE_OVERFLOW, FE_DIVBYZERO | FE_INVALID | FE_OVERFLOW}) {
        restoreHost();
        ASSERT_TRUE(plugin.initPlugin());
        host.calls.clear();
        feenableexcept(traps);
        EXPECT_TRUE(plugin.execute());
        EXPECT_EQ(fegetexcept(), traps) << "the host's setting is back";
        fedisableexcept(FE_ALL_EXCEPT);
        EXPECT_TRUE(recordOfRun(host) == record);
    }
}

TEST_F(FloatingPoint, ThatTrapsErrorsIsRestoredWhenTheHostThrows) {
    ASSERT_TRUE(plugin.initPlugin());
    host.misbehaviour.beforeCall = [](const std::string& function) {
        if (function == "znGetTextInput") throw std::runtime_error("with traps");
    };
    feenableexcept(FE_INVALID);
    EXPECT_FALSE(plugin.execute());
    EXPECT_EQ(fegetexcept(), FE_INVALID);
}

TEST_F(FloatingPoint, FlagsOfTheHostStayAsTheyWere) {
    std::feclearexcept(FE_ALL_EXCEPT);
    std::feraiseexcept(FE_UNDERFLOW);
    EXPECT_TRUE(attack("raised flags"));
    EXPECT_EQ(std::fetestexcept(FE_ALL_EXCEPT), FE_UNDERFLOW);
    std::feclearexcept(FE_ALL_EXCEPT);
}

} // namespace
} // namespace zn::test
