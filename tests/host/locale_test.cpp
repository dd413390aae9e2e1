// A host may have set a locale whose numbers have a comma and whose thousands are grouped: nothing that the plug-in
// writes follows it.

#include "host/german_locale.h"
#include "host/has_form.h"
#include "host/host_fixture.h"

#include <clocale>
#include <cstdlib>
#include <locale>

namespace zn::test {
namespace {

class InALocaleWithCommas : public HostFixture {
protected:
    ~InALocaleWithCommas() override {
        std::locale::global(std::locale::classic());
        std::setlocale(LC_ALL, "C");
    }
};

TEST_F(InALocaleWithCommas, TheRetainedVarianceHasAPoint) {
    const bool isSet = setGermanLocale();
    ASSERT_TRUE(isSet || !std::getenv("CI")) << "CI installs what a German locale is made from";
    if (!isSet) GTEST_SKIP() << "no German locale can be made here (Debian: package locales)";
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    EXPECT_TRUE(run());
    EXPECT_THAT(host.calls, testing::Contains(HasForm("znLogText(// Plugin>  Retained variance after dimensionality "
                                                      "reduction: ~.~ %)")));
}

} // namespace
} // namespace zn::test
