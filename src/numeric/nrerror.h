#pragma once

#include <exception>

namespace zn {

/// A fatal numeric error on its way to the run driver; see UnwindFatalErrors.
class FatalNumericError : public std::exception {
public:
    explicit FatalNumericError(const char* text) : text_(text) {}
    const char* what() const noexcept override { return text_; }

private:
    const char* text_; // the texts are constants
};

/// Reports that a numeric routine cannot continue; does not return.
///
///   text   what failed in which routine; a string constant
///
/// While an UnwindFatalErrors is alive: throws FatalNumericError(text). Otherwise writes three lines to standard
/// error and ends the process with status 1.
[[noreturn]] void nrerror(const char* text);

/// While one of these is alive, nrerror throws instead of ending the process: a run inside the user's desktop
/// application must not take it down.
class UnwindFatalErrors {
public:
    UnwindFatalErrors();
    ~UnwindFatalErrors();
    UnwindFatalErrors(const UnwindFatalErrors&) = delete;
    UnwindFatalErrors& operator=(const UnwindFatalErrors&) = delete;
};

} // namespace zn
