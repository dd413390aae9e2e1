#pragma once

namespace zn::headless {

/// While it lives, standard error goes nowhere. The NIfTI library writes some of its complaints there whatever its
/// debug level is; what is wrong with a file is said by the caller, once and in whole sentences.
class QuietLibrary {
public:
    QuietLibrary();
    ~QuietLibrary();
    QuietLibrary(const QuietLibrary&) = delete;
    QuietLibrary& operator=(const QuietLibrary&) = delete;

private:
    int standardError_; // -1: there is none
};

} // namespace zn::headless
