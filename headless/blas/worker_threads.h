#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace zn::headless {

/// Threads that share numbered pieces of work. The caller of run() takes part, so `threads` includes its thread. Waking
/// the others costs a few microseconds, so even pieces of less than a millisecond are worth sharing.
class WorkerThreads {
public:
    /// Fewer than asked for, possibly only the caller's own, when the system refuses to start more.
    explicit WorkerThreads(int threads);
    ~WorkerThreads();
    WorkerThreads(const WorkerThreads&) = delete;
    WorkerThreads& operator=(const WorkerThreads&) = delete;

    int threads() const { return static_cast<int>(workers_.size()) + 1; }

    /// Calls piece(0) ... piece(count - 1), each once, in any order and on any thread, and returns when all are done.
    /// If pieces throw, it throws one of their exceptions then. Only one thread may call this at a time.
    void run(int count, const std::function<void(int)>& piece);

private:
    void work();
    void takePieces(std::unique_lock<std::mutex>& lock);

    std::mutex mutex_;
    std::condition_variable begun_;
    std::condition_variable ended_;
    const std::function<void(int)>* piece_ = nullptr;
    int count_ = 0;
    int next_ = 0;
    int unfinished_ = 0;
    std::exception_ptr failure_;
    bool stopping_ = false;
    std::vector<std::thread> workers_;
};

} // namespace zn::headless
