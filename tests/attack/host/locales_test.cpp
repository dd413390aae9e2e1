// The host may change the locale at any time, the plug-in's texts and files stay as they are.

#include "attack/host/hostile_fixture.h"
#include "attack/host/run_record.h"

#include "host/german_locale.h"

#include <clocale>
#include <cstdlib>
#include <locale>

namespace zn::test {
namespace {

class Locales : public HostileFixture {
protected:
    ~Locales() override {
        std::locale::global(std::locale::classic());
        std::setlocale(LC_ALL, "C");
    }
};

TEST_F(Locales, ThatChangeAtEveryCallOfTheHostChangeNothingElse) {
    attack("nothing");
    const std::string record = recordOfRun(host);
    restoreHost();
    const bool isSet = setGermanLocale();
    ASSERT_TRUE(isSet || !std::getenv("CI")) << "CI installs what a German locale is made from";
    if (!isSet) GTEST_SKIP() << "no German locale can be made here (Debian: package locales)";
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    const std::locale german;

    for (const int first : {0, 1}) { // which calls are answered in German
        restoreHost();
        host.misbehaviour.beforeCall = [&, calls = first](const std::string&) mutable {
            std::locale::global(calls++ % 2 == 0 ? german : std::locale::classic());
        };
        EXPECT_TRUE(attack("changing locales"));
        EXPECT_TRUE(recordOfRun(host) == record);
    }
    std::locale::global(german);
    restoreHost();
    EXPECT_TRUE(attack("German"));
    EXPECT_TRUE(recordOfRun(host) == record);
}

} // namespace
} // namespace zn::test
