// Fuzz target: the plug-in's log, line by line.

#include "attack/fuzz/input.h"

#include "headless/result/plugin_log.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zn::headless::PluginLog log;
    for (const std::string& line : zn::test::piecesOf(zn::test::textInput(data, size), '\n')) log.add(line);
    for (const auto& component : log.components()) {
        zn::test::require(component.restarts >= 0, "restarts are counted from 0");
    }
    return 0;
}
