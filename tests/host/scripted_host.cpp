#include "host/scripted_host.h"

#include "host/scripted_call.h"

namespace zn::test {

void (*onHostEntered)() = nullptr;
void (*onHostLeft)() = nullptr;

ScriptedHost& scripted() {
    static ScriptedHost host;
    return host;
}

std::vector<std::string> ScriptedHost::argumentsOf(const std::string& function) const {
    std::vector<std::string> found;
    for (const auto& call : calls) {
        if (!call.starts_with(function + "(")) continue;
        found.push_back(call.substr(function.size() + 1, call.size() - function.size() - 2));
    }
    return found;
}

std::vector<std::string> ScriptedHost::callNames() const {
    std::vector<std::string> names;
    names.reserve(calls.size());
    for (const auto& call : calls) names.push_back(call.substr(0, call.find('(')));
    return names;
}

bool ScriptedHost::isBusy() const {
    bool busy = false;
    for (const auto& call : calls) {
        if (call == "znShowBusyCursor()") busy = true;
        if (call == "znStopBusyCursor()") busy = false;
    }
    return busy;
}

void ScriptedHost::setGrid(int x, int y, int z) {
    header.resolution = 3;
    header.xStart = 57;
    header.yStart = 52;
    header.zStart = 59;
    header.xEnd = header.xStart + 3 * x;
    header.yEnd = header.yStart + 3 * y;
    header.zEnd = header.zStart + 3 * z;
}

Call::Call(const std::string& text, bool recorded) {
    if (onHostEntered) onHostEntered();
    const auto& beforeCall = scripted().misbehaviour.beforeCall;
    if (beforeCall) beforeCall(text.substr(0, text.find('(')));
    if (recorded) scripted().calls.push_back(text);
}

Call::~Call() {
    if (onHostLeft) onHostLeft();
}

} // namespace zn::test
