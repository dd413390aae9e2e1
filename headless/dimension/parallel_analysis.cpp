#include "headless/dimension/parallel_analysis.h"

#include <algorithm>

namespace zn::headless {

namespace {

constexpr double kMargin = 1.1; // of 1.05 to 1.3, that which is right most often on simulated runs
constexpr double kMarginWithoutEdge = 1.5;

constexpr int kAhead = 2;

class Search {
public:
    Search(const ResidualNoise& noise, double margin, int ahead, int most)
        : noise_(noise), margin_(margin), ahead_(ahead), most_(most) {}

    // More than `most` if the number does not settle below.
    int run() const {
        int count = 1;
        while (count <= most_) {
            const int more = moreThan(count);
            if (more == count) break;
            count = more;
        }
        return count;
    }

private:
    // The number of eigenvalues above the noise after k directions, or after up to ahead_ further ones, if that is more
    // than were projected out; otherwise k.
    int moreThan(int k) const {
        for (int taken = k; taken <= std::min(k + ahead_, most_); ++taken) {
            const int above = countAbove(margin_ * noise_.after(taken).edge);
            if (above > taken) return above;
        }
        return k;
    }

    int countAbove(double threshold) const {
        const auto begin = noise_.eigenvalues().begin();
        const auto end = begin + noise_.dimensions();
        return static_cast<int>(std::count_if(begin, end, [=](double value) { return value > threshold; }));
    }

    const ResidualNoise& noise_;
    double margin_;
    int ahead_;
    int most_;
};

} // namespace

ParallelAnalysis parallelAnalysis(const ResidualNoise& noise) {
    constexpr int kFewest = 6; // dimensions; with fewer there is no noise to speak of
    ParallelAnalysis result;
    if (noise.dimensions() < kFewest) return result;
    const int most = mostComponents(noise.dimensions());
    result.count = Search(noise, kMargin, kAhead, most).run();
    if (result.count > most) {
        result.hasEdge = false;
        result.count = std::min(most, Search(noise, kMarginWithoutEdge, most, most).run());
    }
    result.noise = noise.after(result.count);
    return result;
}

} // namespace zn::headless
