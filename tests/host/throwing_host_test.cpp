// A host function that throws must not take the desktop down: the exception ends in the plug-in.
#ifndef _WIN32 // where an exception does not travel between two compilers' code

#include "host/host_fixture.h"

#include <cstddef>
#include <stdexcept>
#include <string>

namespace zn::test {
namespace {

std::size_t callsBefore = 0; // that succeed; the products with vectors, whose number is random, do not count
bool withText = true;

void throwAfterThese() {
    if (scripted().calls.size() != callsBefore) return;
    onHostEntered = nullptr; // once: the plug-in is to tell the user
    if (withText) throw std::runtime_error("the disk is on fire");
    throw 1;
}

class ThrowingHost : public HostFixture {
protected:
    ~ThrowingHost() override { onHostEntered = nullptr; }

    static void throwAfter(std::size_t calls) {
        callsBefore = calls;
        onHostEntered = throwAfterThese;
    }
};

TEST_F(ThrowingHost, EndsTheInitialisationAtAnyCall) {
    for (std::size_t calls = 0; calls < 4; ++calls) {
        host.calls.clear();
        throwAfter(calls);
        EXPECT_FALSE(plugin.initPlugin()) << calls;
    }
    onHostEntered = nullptr;
    EXPECT_TRUE(plugin.initPlugin());
}

TEST_F(ThrowingHost, EndsARunAtAnyCallWithAMessage) {
    ASSERT_TRUE(run());
    const std::size_t all = host.calls.size();
    for (const bool text : {true, false}) {
        withText = text;
        for (std::size_t calls = 0; calls < all; ++calls) {
            host = ScriptedHost{};
            sources = giveSimulatedVtc(host, 8, 6, 5, 12, 3);
            ASSERT_TRUE(plugin.initPlugin());
            host.calls.clear();
            throwAfter(calls);
            EXPECT_FALSE(plugin.execute()) << calls;
            const std::string what = text ? "the disk is on fire" : "A function of the host failed";
            EXPECT_EQ(host.boxes().back(), what) << calls;
            EXPECT_EQ(host.log().back(), "// Plugin> " + what + ". Exiting plugin.") << calls;
            EXPECT_FALSE(host.isBusy()) << calls;
        }
    }
}

TEST_F(ThrowingHost, ThatCannotEvenShowTheMessageEndsTheRun) {
    ASSERT_TRUE(plugin.initPlugin());
    onHostEntered = [] { throw std::runtime_error("again"); };
    EXPECT_FALSE(plugin.execute());
}

} // namespace
} // namespace zn::test

#endif
