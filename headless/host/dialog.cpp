// The fields of the host's ICA dialog.
#include "headless/host/current_session.h"
#include "headless/host/text_out.h"

namespace zn::headless {

extern "C" {

void znGetDlgStringParameter(int index, char* text) {
    text[0] = '\0';
    guarded([&](Session& session) {
        const auto& texts = session.dialog.texts;
        if (index >= 0 && static_cast<std::size_t>(index) < texts.size()) {
            copyText(texts[static_cast<std::size_t>(index)], text);
        }
    });
}

int znGetDlgIntegerParameter(int index) {
    const auto& integers = currentSession().dialog.integers;
    return index >= 0 && static_cast<std::size_t>(index) < integers.size() ? integers[static_cast<std::size_t>(index)]
                                                                           : 0;
}

float znGetDlgFloatParameter(int index) {
    const auto& floats = currentSession().dialog.floats;
    return index >= 0 && static_cast<std::size_t>(index) < floats.size() ? floats[static_cast<std::size_t>(index)]
                                                                         : 0.0f;
}

void znLaunchICADialog() {
    guarded([](Session& session) { session.events->logLine("znica: the plug-in asked for the ICA dialog"); });
}

} // extern "C"

} // namespace zn::headless
