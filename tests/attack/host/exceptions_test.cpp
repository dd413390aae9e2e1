// Exceptions of many types from every function that a run calls, at its first, second and last call: the user is told,
// nothing is thrown at the desktop, and the next run is as good as any.

#include "attack/host/hostile_fixture.h"

#include <map>
#include <new>
#include <stdexcept>
#include <system_error>

namespace zn::test {
namespace {

constexpr char kUnknown[] = "A function of the host failed";
constexpr char kMemoryFull[] = "Working memory full. Exiting plugin.";

class WithoutText : public std::exception {
public:
    const char* what() const noexcept override { return nullptr; }
};

class NoStandardException {
public:
    std::string text = "not derived from std::exception";
};

struct Thrown {
    const char* name;
    void (*raise)();
    std::string box; ///< text that the user sees
};

const std::vector<Thrown>& thrownTypes() {
    static const std::string longText(100'000, 'x');
    static const std::vector<Thrown> types = {
        {"runtime_error", [] { throw std::runtime_error("the disk is on fire"); }, "the disk is on fire"},
        {"format", [] { throw std::logic_error("%s%n%100000d"); }, "%s%n%100000d"},
        {"empty text", [] { throw std::runtime_error(""); }, ""},
        {"long text", [] { throw std::runtime_error(longText); }, longText},
        {"not UTF-8", [] { throw std::runtime_error("\xff\x80\n"); }, "\xff\x80\n"},
        {"system_error", [] { throw std::system_error(std::error_code(), "open"); }, "open: Success"},
        {"no text", [] { throw WithoutText(); }, kUnknown},
        {"bad_alloc", [] { throw std::bad_alloc(); }, kMemoryFull},
        {"bad_array_new_length", [] { throw std::bad_array_new_length(); }, kMemoryFull},
        {"int", [] { throw 1; }, kUnknown},
        {"text", [] { throw "a text"; }, kUnknown},
        {"string", [] { throw std::string("a string"); }, kUnknown},
        {"null", [] { throw nullptr; }, kUnknown},
        {"another class", [] { throw NoStandardException(); }, kUnknown},
    };
    return types;
}

class Exceptions : public HostileFixture {
protected:
    // How often a whole run calls each function.
    std::map<std::string, int> callsOfARun() {
        std::map<std::string, int> calls;
        host.misbehaviour.beforeCall = [&](const std::string& function) { ++calls[function]; };
        EXPECT_TRUE(plugin.execute());
        return calls;
    }

    // Throws once, at the given call of the function, counted from 0.
    void throwAt(const std::string& function, int call, void (*raise)()) {
        host.misbehaviour.beforeCall = [=, calls = 0](const std::string& called) mutable {
            if (called == function && calls++ == call) raise();
        };
    }

    void expectTold(const Thrown& thrown, const std::string& attempt) {
        const bool memory = thrown.box == kMemoryFull;
        const std::string line =
            memory ? "// Plugin > " + thrown.box : "// Plugin> " + thrown.box + ". Exiting plugin.";
        EXPECT_EQ(plugin.execute(), memory) << attempt;
        ASSERT_FALSE(host.boxes().empty()) << attempt;
        EXPECT_TRUE(host.boxes().back() == thrown.box) << attempt << ": " << host.boxes().back();
        EXPECT_EQ(host.log().back(), line.substr(0, 511)) << attempt; // the log's longest line
        EXPECT_FALSE(host.isBusy()) << attempt;
    }
};

TEST_F(Exceptions, FromEveryFunctionOfARun) {
    expectNoHarm("nothing");
    ASSERT_TRUE(plugin.initPlugin());
    const auto calls = callsOfARun();
    EXPECT_EQ(calls.size(), 31U);
    int thrownExceptions = 0;
    for (const auto& [function, count] : calls) {
        for (const Thrown& thrown : thrownTypes()) {
            for (const int call : std::set<int>{0, std::min(1, count - 1), count - 1}) {
                restoreHost();
                throwAt(function, call, thrown.raise);
                expectTold(thrown, std::string(thrown.name) + " from call " + std::to_string(call) + " of " + function);
                ++thrownExceptions;
            }
        }
        expectNoHarm("exceptions from " + function);
    }
    RecordProperty("exceptions", thrownExceptions);
}

TEST_F(Exceptions, FromEveryFunctionOfAnInitialisation) {
    for (const char* function : {"znGetVersionOfTesmiraZN", "znShowLogTab", "znLogText"}) {
        for (const Thrown& thrown : thrownTypes()) {
            throwAt(function, 0, thrown.raise);
            EXPECT_FALSE(plugin.initPlugin()) << function << ", " << thrown.name;
        }
    }
    expectNoHarm("exceptions from the initialisation");
}

// The functions that only an early end calls.
TEST_F(Exceptions, FromTheFunctionsOfAnEarlyEnd) {
    ASSERT_TRUE(plugin.initPlugin());
    for (const Thrown& thrown : thrownTypes()) {
        restoreHost();
        host.dialogStrings[0] = "";
        throwAt("znLaunchICADialog", 0, thrown.raise);
        expectTold(thrown, std::string(thrown.name) + " from the dialog");

        restoreHost();
        host.mask->assign(host.mask->size(), 0);
        throwAt("znMessageBox", 0, thrown.raise);
        expectTold(thrown, std::string(thrown.name) + " from the message box");
    }
    expectNoHarm("exceptions from early ends");
}

TEST_F(Exceptions, FromEveryFunctionFromTheFirstCallOn) {
    ASSERT_TRUE(plugin.initPlugin());
    for (const auto& [function, count] : callsOfARun()) {
        restoreHost();
        host.misbehaviour.beforeCall = [name = function](const std::string& called) {
            if (called == name) throw std::runtime_error("never again");
        };
        EXPECT_FALSE(plugin.execute()) << function;
    }
    expectNoHarm("functions that always throw");
}

} // namespace
} // namespace zn::test
