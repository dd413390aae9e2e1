#pragma once

#include <stdexcept>
#include <string>

namespace zn::headless {

/// The exit statuses of the command, as `znica --help` lists them.
enum class ExitStatus : int {
    kDone = 0,
    kOther = 1, ///< any other failure: a result that cannot be written, a plug-in that cannot be loaded
    kUsage = 2,
    kInput = 3,  ///< an input file or a setting is not usable
    kGaveUp = 4, ///< fewer components found than requested
    kMemory = 5,
};

/// An error that ends the command. The text is one sentence for the user: what is wrong, where, and what to do about
/// it, without the program's name and without a line break.
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, const std::string& text) : std::runtime_error(text), status_(status) {}
    ExitStatus status() const { return status_; }

private:
    ExitStatus status_;
};

/// Throws Failure (kInput).
[[noreturn]] inline void refuseInput(const std::string& text) {
    throw Failure(ExitStatus::kInput, text);
}

} // namespace zn::headless
