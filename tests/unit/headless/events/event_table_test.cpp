#include "headless/events/event_table.h"

#include "headless/failure/failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::HasSubstr;

std::vector<Condition> conditions(const std::vector<std::string>& lines) {
    return conditionsIn(parseTable(lines, "e.tsv"));
}

std::string refusalOf(const std::vector<std::string>& lines) {
    try {
        conditions(lines);
        return "accepted";
    } catch (const Failure& failure) {
        return failure.what();
    }
}

TEST(EventTable, HasOnsetsAndDurationsAmongItsColumns) {
    EXPECT_TRUE(isEventTable(parseTable({"trial_type\tduration\tonset"}, "")));
    EXPECT_TRUE(isEventTable(parseTable({"onset,duration"}, "")));
    EXPECT_FALSE(isEventTable(parseTable({"onset\ttrial_type"}, "")));
    EXPECT_FALSE(isEventTable(parseTable({"face\thouse"}, "")));
}

TEST(EventTable, NeedsBothOfItsColumns) {
    const auto refusal = [](const std::string& header, const std::string& file) -> std::string {
        try {
            refusePartOfAnEventTable(parseTable({header}, file));
            return "accepted";
        } catch (const Failure& failure) {
            return failure.what();
        }
    };
    EXPECT_EQ(refusal("onset\ttrial_type", "e.tsv"),
              "e.tsv has a column onset but no column duration; BIDS events need both.");
    EXPECT_EQ(refusal("duration\tvalue", "sub-01_events.tsv"),
              "sub-01_events.tsv has a column duration but no column onset; BIDS events need both.");
    EXPECT_EQ(refusal("onset\tsustained", "predictors.tsv"), "accepted");
    EXPECT_EQ(refusal("face\ttrial_type", "e.tsv"), "accepted");
}

TEST(EventTable, GroupsEventsByTrialTypeInAlphabeticalOrder) {
    const auto found = conditions({"onset\tduration\ttrial_type\tfile", "2.5\t1\thouse\ta.png", "-1\tn/a\tface\tb.png",
                                   "9\t0\thouse\tn/a", "11\t1\tn/a\tn/a"});
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].name, "face");
    ASSERT_EQ(found[0].events.size(), 1U);
    EXPECT_EQ(found[0].events[0].onset, -1.0);
    EXPECT_EQ(found[0].events[0].duration, 0.0); // missing
    EXPECT_EQ(found[1].name, "house");
    ASSERT_EQ(found[1].events.size(), 2U);
    EXPECT_EQ(found[1].events[0].duration, 1.0);
    EXPECT_EQ(found[1].events[1].onset, 9.0);
}

TEST(EventTable, WithoutTrialTypesIsOneCondition) {
    const auto found = conditions({"onset\tduration", "1\t2", "3\t4"});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].name, "events");
    EXPECT_EQ(found[0].events.size(), 2U);
}

TEST(EventTable, NeedsEventsWithTimes) {
    EXPECT_EQ(refusalOf({"onset\tduration"}), "e.tsv lists no events.");
    EXPECT_EQ(refusalOf({"onset\tduration\ttrial_type", "1\t2\tn/a"}), "e.tsv has no event with a trial_type.");
    EXPECT_THAT(refusalOf({"onset\tduration", "n/a\t2"}), HasSubstr("line 2, column \"onset\", holds \"n/a\""));
    EXPECT_THAT(refusalOf({"onset\tduration", "1\tlong"}), HasSubstr("column \"duration\", holds \"long\""));
    EXPECT_EQ(refusalOf({"onset\tduration", "1\t-2"}),
              "e.tsv, line 2, column \"duration\", holds a negative duration, -2 s.");
}

} // namespace
} // namespace zn::test
