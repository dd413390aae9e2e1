#include "host/host_fixture.h"

namespace zn::test {
namespace {

using testing::ElementsAre;

class InitPlugin : public HostFixture {};

TEST_F(InitPlugin, AnnouncesThePluginInTheLog) {
    EXPECT_TRUE(plugin.initPlugin());
    EXPECT_THAT(host.calls, ElementsAre("znGetVersionOfTesmiraZN()", "znShowLogTab()", "znLogText( )",
                                        "znLogText(// Plugin>  Running ICA Plugin...)"));
}

TEST_F(InitPlugin, AcceptsTwoTwoZeroAndHigher) {
    for (const std::array<int, 3>& version :
         {std::array{2, 2, 0}, std::array{2, 2, 7}, std::array{2, 3, 0}, std::array{3, 0, 0}, std::array{10, 0, 0}}) {
        host.version = version;
        EXPECT_TRUE(plugin.initPlugin()) << version[0] << "." << version[1] << "." << version[2];
    }
}

TEST_F(InitPlugin, RefusesLowerVersionsWithAMessage) {
    for (const std::array<int, 3>& version :
         {std::array{2, 1, 9}, std::array{1, 9, 9}, std::array{0, 0, 0}, std::array{2, 2, -1}}) {
        host.version = version;
        host.calls.clear();
        EXPECT_FALSE(plugin.initPlugin()) << version[0] << "." << version[1] << "." << version[2];
        EXPECT_THAT(host.calls,
                    ElementsAre("znGetVersionOfTesmiraZN()",
                                "znMessageBox(Can not execute this plugin - TesmiraZN version 2.2.0 or higher "
                                "required.)"));
    }
}

} // namespace
} // namespace zn::test
