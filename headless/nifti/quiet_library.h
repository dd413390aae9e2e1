#pragma once

#include <mutex>

namespace zn::headless {

/// Discards standard error during its lifetime. The NIfTI library writes some of its messages there whatever its debug
/// level is; the caller reports problems with a file, once and in full sentences. Standard error belongs to the whole
/// process, so keep the lifetime short. A second thread waits for the first.
class QuietLibrary {
public:
    QuietLibrary();
    ~QuietLibrary();
    QuietLibrary(const QuietLibrary&) = delete;
    QuietLibrary& operator=(const QuietLibrary&) = delete;

private:
    std::unique_lock<std::recursive_mutex> lock_;
    int standardError_; // -1: there is none
};

} // namespace zn::headless
