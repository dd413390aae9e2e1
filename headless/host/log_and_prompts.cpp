// The functions for logging, messages and input, answered from the session.
#include "headless/host/current_session.h"
#include "headless/host/text_out.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace zn::headless {

namespace {

void note(Session& session, const std::string& line) {
    session.events->logLine("znica: " + line);
}

bool asksFor(const char* prompt, std::string_view words) {
    return std::string_view(prompt).find(words) != std::string_view::npos;
}

} // namespace

extern "C" {

void znGetVersionOfTesmiraZN(int* major, int* minor, int* patch) {
    *major = 2; // the lowest version that has every function of the list
    *minor = 2;
    *patch = 0;
}

void znShowLogTab() {}

void znLogText(const char* text) {
    guarded([&](Session& session) { session.events->logLine(text); });
}

void znMessageBox(const char* text) {
    guarded([&](Session& session) { session.events->message(text); });
}

int znGetIntegerInput(const char* prompt, int initial, int minimum, int maximum) {
    return guarded(minimum - 1, [&](Session& session) {
        if (!asksFor(prompt, "Cluster size")) {
            note(session, std::string(prompt) + " " + std::to_string(initial));
            return initial;
        }
        if (!session.answers.clusterSize) {
            note(session, std::string(prompt) + " cancelled");
            return minimum - 1;
        }
        const int answer = std::clamp(*session.answers.clusterSize, minimum, maximum);
        note(session, std::string(prompt) + " " + std::to_string(answer));
        return answer;
    });
}

float znGetFloatInput(const char* prompt, float initial, float minimum, float maximum) {
    return guarded(initial, [&](Session& session) {
        const bool threshold = asksFor(prompt, "Z threshold");
        const float answer = threshold ? std::clamp(session.answers.zThreshold, minimum, maximum) : initial;
        note(session, std::string(prompt) + " " + std::to_string(answer));
        return answer;
    });
}

int znGetTextInput(const char* prompt, const char* initial, char* text) {
    return guarded(0, [&](Session& session) {
        copyText(session.answers.label.value_or(initial), text);
        note(session, std::string(prompt) + " " + session.answers.label.value_or("cancelled"));
        return session.answers.label ? 1 : 0;
    });
}

void znUpdateActiveWindow() {}
void znShowBusyCursor() {}
void znStopBusyCursor() {}

} // extern "C"

} // namespace zn::headless
