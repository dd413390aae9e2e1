// A host may have set a locale whose numbers have a comma and whose thousands are grouped: nothing that the plug-in
// writes follows it.

#include "host/has_form.h"
#include "host/host_fixture.h"

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <stdexcept>
#include <string>

// The C library never frees what it makes of LOCPATH.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:argz_add_sep";
}

namespace zn::test {
namespace {

class InALocaleWithCommas : public HostFixture {
protected:
    ~InALocaleWithCommas() override {
        std::locale::global(std::locale::classic());
        std::setlocale(LC_ALL, "C");
    }

    // German, as the platform has it. False where it is not installed.
    bool setLocale() {
#ifdef _WIN32
        return std::setlocale(LC_ALL, "German_Germany.1252") != nullptr;
#else
        // Made here: systems seldom have more than English ones.
        const std::string folder = std::filesystem::current_path().string();
        const std::string command = "localedef -i de_DE -f UTF-8 '" + folder + "/de_DE.UTF-8' 2>/dev/null";
        if (std::system(command.c_str()) != 0) return false;
        setenv("LOCPATH", folder.c_str(), 1);
        try {
            std::locale::global(std::locale("de_DE.UTF-8"));
        } catch (const std::runtime_error&) {
            return false;
        }
        return true;
#endif
    }
};

TEST_F(InALocaleWithCommas, TheRetainedVarianceHasAPoint) {
    const bool isSet = setLocale();
    ASSERT_TRUE(isSet || !std::getenv("CI")) << "CI installs what a German locale is made from";
    if (!isSet) GTEST_SKIP() << "no German locale can be made here (Debian: package locales)";
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    EXPECT_TRUE(run());
    EXPECT_THAT(host.calls, testing::Contains(HasForm("znLogText(// Plugin>  Retained variance after dimensionality "
                                                      "reduction: ~.~ %)")));
}

} // namespace
} // namespace zn::test
