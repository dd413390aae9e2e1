// How the tests start the command.
#include "cli/command.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace zn::test {
namespace {

TEST(Command, AVariableOfTheTestReplacesTheOneThatIsSetAlready) {
    ASSERT_EQ(setenv("ZN_COMMAND_TEST", "from outside", 1), 0);
    ASSERT_EQ(setenv("ZN_COMMAND_TEST_2", "another name", 1), 0);
    // The definitions as they were handed over: a shell would pick one of two.
    const char show[] = "tr '\\0' '\\n' </proc/$$/environ | grep ^ZN_COMMAND_TEST | sort; exit;";
    EXPECT_EQ(znica({}, {{}, {"ZN_COMMAND_TEST=of the test"}, show}).out,
              "ZN_COMMAND_TEST=of the test\nZN_COMMAND_TEST_2=another name\n");
    unsetenv("ZN_COMMAND_TEST");
    unsetenv("ZN_COMMAND_TEST_2");
}

} // namespace
} // namespace zn::test
