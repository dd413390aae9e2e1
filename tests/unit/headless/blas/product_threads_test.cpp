// Products are bit-identical for any number of threads.
#include "headless/blas/matrix_products.h"
#include "headless/blas/worker_threads.h"

#include <atomic>
#include <cmath>
#include <new>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace zn::test {

using namespace headless;

namespace {

// Values whose sums depend on the order of addition.
std::vector<double> fractions(std::size_t count) {
    std::vector<double> values(count);
    for (std::size_t i = 0; i < count; ++i) values[i] = std::sin(static_cast<double>(i) * 1.7);
    return values;
}

TEST(ProductThreads, GiveTheSameBitsForAnyNumber) {
    constexpr int kRows = 30011; // several blocks, the last one short
    constexpr int kColumns = 37;
    const auto a = fractions(std::size_t{kRows} * kColumns);
    const auto x = fractions(kRows);
    std::vector<std::vector<double>> first;
    for (const int threads : {1, 2, 5}) {
        MatrixProducts products(threads);
        std::vector<std::vector<double>> results = {std::vector<double>(kColumns * kColumns),
                                                    std::vector<double>(std::size_t{kRows} * 4),
                                                    std::vector<double>(kColumns), std::vector<double>(kRows)};
        products.multiply(a.data(), a.data(), results[0].data(), kColumns, kColumns, kRows, true, false);
        products.multiply(x.data(), a.data(), results[1].data(), 4, kRows, kColumns, false, true);
        products.multiplyVector(a.data(), x.data(), results[2].data(), kRows, kColumns, true);
        products.multiplyVector(a.data(), x.data(), results[3].data(), kRows, kColumns, false);
        if (first.empty()) first = results;
        EXPECT_EQ(results, first) << threads;
        EXPECT_EQ(products.threads(), threads);
    }
}

TEST(ProductThreads, AreCountedAsBeforeOnceTheBlasUsesOne) {
    const int before = MatrixProducts::defaultThreads();
    { const MatrixProducts products(1); }
    EXPECT_EQ(MatrixProducts::defaultThreads(), before);
}

TEST(ProductThreads, LongSumsInBlocksEqualDirectSums) {
    constexpr int kRows = 9001;
    constexpr int kColumns = 3;
    const auto a = fractions(std::size_t{kRows} * kColumns);
    std::vector<double> r(kColumns * kColumns);
    MatrixProducts products(2);
    products.multiply(a.data(), a.data(), r.data(), kColumns, kColumns, kRows, true, false);
    for (std::size_t i = 0; i < kColumns; ++i) {
        for (std::size_t j = 0; j < kColumns; ++j) {
            double sum = 0.0;
            for (std::size_t v = 0; v < kRows; ++v) sum += a[v * kColumns + i] * a[v * kColumns + j];
            EXPECT_NEAR(r[i * kColumns + j], sum, 1e-10); // 9001 terms of at most 1, rounding of 1e-16 each
        }
    }
}

TEST(WorkerThreads, ProcessEveryPieceOnce) {
    for (const int threads : {1, 2, 4}) {
        WorkerThreads workers(threads);
        for (int round = 0; round < 200; ++round) {
            std::vector<std::atomic<int>> done(17);
            workers.run(17, [&](int i) { ++done[static_cast<std::size_t>(i)]; });
            for (const auto& count : done) ASSERT_EQ(count, 1);
        }
    }
}

TEST(WorkerThreads, PassOnAnExceptionOnceAllPiecesHaveEnded) {
    for (const int throwing : {0, 16}) {
        WorkerThreads workers(3);
        std::atomic<int> ended = 0;
        const auto piece = [&](int i) {
            if (i == throwing) throw std::bad_alloc();
            usleep(1000); // the others are still at work when it throws
            ++ended;
        };
        EXPECT_THROW(workers.run(17, piece), std::bad_alloc);
        EXPECT_EQ(ended, 16);
        workers.run(17, [&](int) { ++ended; });
        EXPECT_EQ(ended, 16 + 17);
    }
}

// Root is exempt from the limit.
void allowNoMoreThreads() {
    constexpr uid_t kNobody = 65534;
    if (getuid() == 0 && setuid(kNobody) != 0) _exit(77);
    const rlimit one{1, 1};
    if (setrlimit(RLIMIT_NPROC, &one) != 0) _exit(77);
}

TEST(WorkerThreads, DoWithoutThoseThatCannotBeStarted) {
    const auto work = [] {
        allowNoMoreThreads();
        WorkerThreads workers(4);
        int sum = 0; // safe, because no other thread runs
        workers.run(17, [&](int i) { sum += i; });
        _exit(workers.threads() == 1 && sum == 136 ? 0 : 1);
    };
    EXPECT_EXIT(work(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace zn::test
