#pragma once

#include <stdexcept>
#include <string>

namespace zn::headless {

/// How the command ends; the number is its exit status. `znica --help` lists them.
enum class ExitStatus : int {
    kDone = 0,
    kOther = 1, ///< no other number fits: a result that cannot be written, a plug-in that cannot be loaded
    kUsage = 2,
    kInput = 3,  ///< an input file or a setting does not fit
    kGaveUp = 4, ///< fewer components found than asked for
    kMemory = 5,
};

/// Something the user has to know and that ends the command. The text is one sentence: what is wrong, where, and
/// what to do about it; it carries neither the program's name nor a line end.
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, const std::string& text) : std::runtime_error(text), status_(status) {}
    ExitStatus status() const { return status_; }

private:
    ExitStatus status_;
};

} // namespace zn::headless
