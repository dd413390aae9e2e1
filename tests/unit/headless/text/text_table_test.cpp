#include "headless/text/text_table.h"

#include "headless/failure/failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string refusalOf(const std::vector<std::string>& lines) {
    try {
        parseTable(lines, "x.csv");
        return "accepted";
    } catch (const Failure& failure) {
        return failure.what();
    }
}

TEST(TextTable, IsSplitAtTabsIfItsHeaderHasAny) {
    const TextTable table = parseTable({"name\t x, y ", "a,b\t1", "", "\"c\"\t2"}, "x.tsv");
    EXPECT_THAT(table.columns, ElementsAre("name", "x, y"));
    EXPECT_THAT(table.rows, ElementsAre(ElementsAre("a,b", "1"), ElementsAre("\"c\"", "2")));
    EXPECT_THAT(table.lines, ElementsAre(2U, 4U));
}

TEST(TextTable, IsSplitAtCommasOutsideQuotesOtherwise) {
    const TextTable table = parseTable({"a,\"b, or \"\"b\"\"\" , c", "1 , \"2\",", ",,3"}, "x.csv");
    EXPECT_THAT(table.columns, ElementsAre("a", "b, or \"b\"", "c"));
    EXPECT_THAT(table.rows, ElementsAre(ElementsAre("1", "2", ""), ElementsAre("", "", "3")));
}

TEST(TextTable, ASingleColumnNeedsNoSeparator) {
    EXPECT_THAT(parseTable({"rest", "1", "2"}, "x").rows, ElementsAre(ElementsAre("1"), ElementsAre("2")));
}

TEST(TextTable, RowsOfAnotherLengthAndOpenQuotesAreRefused) {
    EXPECT_EQ(refusalOf({"a,b", "1,2", "3"}),
              "x.csv, line 3, has 1 cells, but the header has 2; separate cells by tabs or commas.");
    EXPECT_THAT(refusalOf({"a,b", "\"1,2"}), HasSubstr("x.csv, line 2, has a cell without a closing double quote"));
    EXPECT_EQ(refusalOf({"", "  "}), "x.csv is empty.");
}

TEST(TextTable, ACellThatIsNotANumberIsNamedByLineAndColumn) {
    const TextTable table = parseTable({"a\tb", "", "1\ttwo"}, "x.tsv");
    EXPECT_DOUBLE_EQ(table.number(0, 0), 1.0);
    EXPECT_THROW(
        {
            try {
                table.number(0, 1);
            } catch (const Failure& failure) {
                EXPECT_STREQ(failure.what(), "x.tsv, line 3, column \"b\", holds \"two\" where a number is expected.");
                throw;
            }
        },
        Failure);
}

TEST(TextTable, NotAvailableAndNothingAreMissingValues) {
    for (const char* cell : {"", "n/a"}) EXPECT_TRUE(isMissing(cell)) << cell;
    for (const char* cell : {"0", "nan", "N/A x"}) EXPECT_FALSE(isMissing(cell)) << cell;
}

} // namespace
} // namespace zn::test
