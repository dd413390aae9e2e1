#pragma once

#include <string>
#include <vector>

namespace zn::headless {

/// A sentence that the reader of a result should bear in mind, with a code by which programs recognise it.
struct Remark {
    std::string code;
    std::string text;
};

/// What is found out about the input before there is a log file: printed at once and kept for that file.
class RunNotes {
public:
    explicit RunNotes(bool quiet) : quiet_(quiet) {}

    void say(const std::string& note);
    /// The same for a note that belongs into the record of the run.
    void remark(const Remark& note);
    const std::vector<std::string>& all() const { return notes_; }
    const std::vector<Remark>& remarks() const { return remarks_; }

private:
    bool quiet_; // keep them without printing
    std::vector<std::string> notes_;
    std::vector<Remark> remarks_;
};

} // namespace zn::headless
