#include "headless/run/run_notes.h"

#include <cstdio>

namespace zn::headless {

void RunNotes::say(const std::string& note) {
    if (!quiet_) {
        std::printf("%s\n", note.c_str());
        std::fflush(stdout);
    }
    notes_.push_back(note);
}

void RunNotes::remark(const Remark& note) {
    say(note.text);
    remarks_.push_back(note);
}

} // namespace zn::headless
