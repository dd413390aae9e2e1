// Every answer of the host wrong in turn, then several at once: the run ends with one of its texts, and the next one is
// as good as if nothing had happened.

#include "attack/host/hostile_fixture.h"
#include "attack/host/wrong_answers.h"

#include <cstdlib>
#include <limits>
#include <random>

namespace zn::test {
namespace {

class WrongAnswers : public HostileFixture {
protected:
    void attackOneByOne(const std::vector<WrongAnswer>& answers) {
        ASSERT_FALSE(answers.empty());
        expectNoHarm("nothing");
        for (const WrongAnswer& answer : answers) {
            restoreHost();
            answer.apply(host);
            attack(answer.name);
        }
        expectNoHarm("all of these");
        RecordProperty("answers", static_cast<int>(answers.size()));
    }
};

TEST_F(WrongAnswers, OfIntegers) {
    attackOneByOne(wrongIntegers());
}

TEST_F(WrongAnswers, OfNumbers) {
    attackOneByOne(wrongNumbers());
}

TEST_F(WrongAnswers, OfTexts) {
    attackOneByOne(wrongTexts());
}

TEST_F(WrongAnswers, OfPointers) {
    attackOneByOne(wrongPointers());
}

TEST_F(WrongAnswers, OfTheVersion) {
    const int lowest = std::numeric_limits<int>::min();
    const int highest = std::numeric_limits<int>::max();
    for (int major : {lowest, -1, 0, 1, 2, 3, highest}) {
        for (int minor : {lowest, -1, 1, 2, 3, highest}) {
            for (int patch : {lowest, -1, 0, highest}) {
                host.version = {major, minor, patch};
                const bool supported = major > 2 || (major == 2 && (minor > 2 || (minor == 2 && patch >= 0)));
                EXPECT_EQ(plugin.initPlugin(), supported) << major << "." << minor << "." << patch;
            }
        }
    }
}

// As many runs as ZN_ATTACK_RUNS says, from the number that ZN_ATTACK_SEED says.
unsigned setting(const char* name, unsigned otherwise) {
    const char* text = std::getenv(name);
    return text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

TEST_F(WrongAnswers, OfSeveralAtOnce) {
    std::vector<WrongAnswer> answers = wrongIntegers();
    for (const auto& more : {wrongNumbers(), wrongTexts(), wrongPointers()}) {
        answers.insert(answers.end(), more.begin(), more.end());
    }
    expectNoHarm("nothing");
    const unsigned first = setting("ZN_ATTACK_SEED", 1);
    const unsigned runs = setting("ZN_ATTACK_RUNS", 1000);
    for (unsigned seed = first; seed - first < runs && !HasFailure(); ++seed) {
        restoreHost();
        std::mt19937 random(seed);
        std::string attempt = "seed " + std::to_string(seed);
        for (std::size_t count = 1 + random() % 6; count > 0; --count) {
            const WrongAnswer& answer = answers[random() % answers.size()];
            answer.apply(host);
            attempt += ", " + answer.name;
        }
        if (random() % 4 == 0) {
            host.mask.reset();
            host.dialogStrings[1] = "";
        }
        attack(attempt);
        if (seed % 100 == 0) expectNoHarm(attempt);
    }
    if (runs >= 1000) {
        EXPECT_GE(ends.size(), 9U) << "of eleven ways to end";
    }
    for (const auto& [line, count] : ends) RecordProperty("ended with '" + line + "'", count);
}

} // namespace
} // namespace zn::test
