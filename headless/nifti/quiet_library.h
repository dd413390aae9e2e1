#pragma once

namespace zn::headless {

/// Discards standard error during its lifetime. The NIfTI library writes some of its messages there whatever its debug
/// level is; the caller reports problems with a file, once and in full sentences. Standard error belongs to the whole
/// process: only for the thread that reads headers, not for work that goes on beside others.
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
