#include "output/file_beside_vtc.h"

#include "numeric/nrerror.h"

#include <gtest/gtest.h>

namespace zn::test {
namespace {

TEST(FileBesideVtc, ReplacesTheLastFourCharacters) {
    EXPECT_EQ(fileBesideVtc("folder/run1.vtc", "_ICA.rtc"), "folder/run1_ICA.rtc");
    EXPECT_EQ(fileBesideVtc("run1.vtc", ".eig"), "run1.eig");
}

TEST(FileBesideVtc, DoesNotCheckWhatItCutsOff) {
    EXPECT_EQ(fileBesideVtc("no_extension", ".eig"), "no_exten.eig");
}

TEST(FileBesideVtc, KeepsNothingOfFourCharactersOrFewer) {
    EXPECT_EQ(fileBesideVtc(".vtc", "_ICA.rtc"), "_ICA.rtc");
    EXPECT_EQ(fileBesideVtc("a", ".eig"), ".eig");
    EXPECT_EQ(fileBesideVtc("", ".eig"), ".eig");
}

TEST(FileBesideVtc, AcceptsAStemOf255CharactersAndRejectsOneOf256) {
    const UnwindFatalErrors unwind;
    EXPECT_EQ(fileBesideVtc((std::string(255, 's') + ".vtc").c_str(), ".eig").size(), 259U);
    EXPECT_THROW(fileBesideVtc((std::string(256, 's') + ".vtc").c_str(), ".eig"), FatalNumericError);
}

} // namespace
} // namespace zn::test
