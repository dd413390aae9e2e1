#include "host/host_fixture.h"

namespace zn::test {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StrEq;

class Metadata : public HostFixture {};

TEST_F(Metadata, ReturnsNameAndVersion) {
    EXPECT_THAT(plugin.text("getPluginName"), StrEq("Independent Component Analysis (ICA)"));
    EXPECT_THAT(plugin.text("getPluginVersion"), StrEq("2.0"));
}

TEST_F(Metadata, HasNeitherHelpFileNorGuiScript) {
    EXPECT_THAT(plugin.text("getHelpFile"), StrEq(""));
    EXPECT_THAT(plugin.text("getGUIScript"), StrEq(""));
}

TEST_F(Metadata, NamesTheAuthorsInItalicsThenTheMaker) {
    EXPECT_THAT(plugin.text("getAuthor"), MatchesRegex("<i>.+</i>, .+"));
}

TEST_F(Metadata, DescribesTheMethodWithItsReference) {
    const std::string text = plugin.text("getPluginDescription");
    EXPECT_THAT(text, HasSubstr("volume-based or cortex-based spatial"));
    EXPECT_THAT(text, HasSubstr("FastICA approach (Hyv&auml;rinen"));
    EXPECT_THAT(text, HasSubstr("IEEE Transactions on Neural Networks 10"));
}

TEST_F(Metadata, EndsTheDescriptionWithTheFixedWords) {
    EXPECT_THAT(plugin.text("getPluginDescription"),
                testing::EndsWith(
                    " A cortex-based ICA is computed if a cortex mask file is provided. Start the ICA using the "
                    "\"Independent Component Analysis\" dialog (\"Analysis -> Independen Component Analysis...\"). "
                    "The resulting component maps are saved in a ICA file.<br>"));
}

} // namespace
} // namespace zn::test
