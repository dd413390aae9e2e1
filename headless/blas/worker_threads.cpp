#include "headless/blas/worker_threads.h"

#include <system_error>
#include <utility>

namespace zn::headless {

WorkerThreads::WorkerThreads(int threads) {
    try {
        for (int i = 1; i < threads; ++i) workers_.emplace_back([this] { work(); });
    } catch (const std::system_error&) { // a limit on processes or memory: those that have started do the work
    }
}

WorkerThreads::~WorkerThreads() {
    {
        const std::scoped_lock lock(mutex_);
        stopping_ = true;
    }
    begun_.notify_all();
    for (std::thread& worker : workers_) worker.join();
}

void WorkerThreads::run(int count, const std::function<void(int)>& piece) {
    if (count <= 1 || workers_.empty()) {
        for (int i = 0; i < count; ++i) piece(i);
        return;
    }
    std::unique_lock lock(mutex_);
    piece_ = &piece;
    count_ = unfinished_ = count;
    next_ = 0;
    begun_.notify_all();
    takePieces(lock);
    ended_.wait(lock, [this] { return unfinished_ == 0; });
    if (const auto failure = std::exchange(failure_, nullptr)) std::rethrow_exception(failure);
}

void WorkerThreads::takePieces(std::unique_lock<std::mutex>& lock) {
    while (next_ < count_) {
        const int mine = next_++;
        lock.unlock();
        std::exception_ptr failure;
        try {
            (*piece_)(mine);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        if (failure) failure_ = failure;
        if (--unfinished_ == 0) ended_.notify_all();
    }
}

void WorkerThreads::work() {
    std::unique_lock lock(mutex_);
    while (!stopping_) {
        begun_.wait(lock, [this] { return stopping_ || next_ < count_; });
        takePieces(lock);
    }
}

} // namespace zn::headless
