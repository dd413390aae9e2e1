#include "headless/cli/plain_text.h"

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

TEST(PlainText, RemovesTagsAndDecodesLetters) {
    EXPECT_EQ(plainText("by <i>Hyv&auml;rinen</i> &amp; Oja"), "by Hyv\xC3\xA4rinen & Oja");
}

TEST(PlainText, BreaksAndParagraphsEndTheLine) {
    EXPECT_EQ(plainText("one<br>two<p>three<br/>"), "one\ntwo\nthree");
}

TEST(PlainText, DecodesNumericReferences) {
    EXPECT_EQ(plainText("&#228;&#xE4;&#8364;&#x1F600;"), "\xC3\xA4\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(PlainText, KeepsTextThatIsNeitherReferenceNorTag) {
    EXPECT_EQ(plainText("R&D; a < b &unknown; &"), "R&D; a < b &unknown; &");
}

TEST(PlainText, CollapsesWhiteSpaceToOneBlank) {
    EXPECT_EQ(plainText("a \n\t b  "), "a b");
}

} // namespace
} // namespace zn::test
