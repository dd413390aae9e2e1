#include "headless/symmetric/fixed_point_search.h"

#include "headless/symmetric/anderson_mixing.h"
#include "headless/symmetric/decorrelate.h"
#include "headless/symmetric/momentum.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace zn::headless {

namespace {

// Largest movement of a row below which the past steps are combined. Farther from the end they may lead to a saddle;
// there momentum helps.
constexpr double kMixingBelow = 0.005;
constexpr int kPatience = 20;     // iterations in which the largest movement must decrease by a tenth
constexpr double kHalfStep = 0.5; // from then on: the iteration alternates between two states
constexpr double kTooMuch = 2.0;  // growth of the largest movement after which the past steps are misleading

// Gives the rows of w the signs of the previous ones, which an update may invert; returns how far each row moved.
std::vector<double> movements(UnmixingMatrix& w, const UnmixingMatrix& previous) {
    const int n = w.dimension();
    std::vector<double> result;
    for (int k = 0; k < n; ++k) {
        const double* old = previous.row(k);
        if (std::inner_product(w.row(k), w.row(k + 1), old, 0.0) < 0.0) {
            std::transform(w.row(k), w.row(k + 1), w.row(k), [](double value) { return -value; });
        }
        double square = 0.0;
        for (int i = 0; i < n; ++i) square += (w.row(k)[i] - old[i]) * (w.row(k)[i] - old[i]);
        result.push_back(std::sqrt(square));
    }
    return result;
}

// Chooses where to evaluate the update next.
class Stepping {
public:
    /// The next point, after a movement from x to its update fx; rows not yet decorrelated.
    ///
    ///   largest   distance that the fastest row moved
    UnmixingMatrix next(const UnmixingMatrix& x, const UnmixingMatrix& fx, double largest) {
        if (largest < 0.9 * smallest_) {
            smallest_ = largest;
            waited_ = 0;
        } else if (++waited_ == kPatience) {
            step_ = kHalfStep;
            mixing_.forget();
        }
        if (largest > kMixingBelow || largest > kTooMuch * last_) mixing_.forget();
        if (largest <= kMixingBelow) momentum_.forget();
        last_ = largest;
        if (largest <= kMixingBelow) return mixing_.next(x, partOfTheWay(x, fx));
        return step_ < 1.0 ? partOfTheWay(x, fx) : momentum_.next(x, fx);
    }

private:
    UnmixingMatrix partOfTheWay(const UnmixingMatrix& x, const UnmixingMatrix& fx) const {
        UnmixingMatrix target = x;
        std::transform(x.row(0), x.row(x.dimension()), fx.row(0), target.row(0),
                       [this](double from, double to) { return from + step_ * (to - from); });
        return target;
    }

    Momentum momentum_;
    AndersonMixing mixing_;
    double step_ = 1.0;
    double smallest_ = std::numeric_limits<double>::infinity();
    double last_ = std::numeric_limits<double>::infinity();
    int waited_ = 0; // iterations since the movement last decreased
};

} // namespace

int SearchEnd::settledCount() const {
    return static_cast<int>(std::count(settled.begin(), settled.end(), true));
}

SearchEnd searchFrom(UnmixingMatrix start, FixedPointPass& pass, const SearchLimits& limits,
                     const std::function<void()>& after) {
    UnmixingMatrix x = std::move(start);
    SearchEnd end{x, std::vector<bool>(static_cast<std::size_t>(x.dimension())), 0};
    if (!decorrelate(x)) return end;
    Stepping stepping;
    while (end.iterations != limits.iterations && !end.converged()) {
        end.w = x;
        pass.update(end.w);
        ++end.iterations;
        end.settled.assign(end.settled.size(), false);
        if (!decorrelate(end.w)) return end;
        const std::vector<double> moved = movements(end.w, x);
        std::transform(moved.begin(), moved.end(), end.settled.begin(),
                       [&](double distance) { return distance < limits.epsilon; });
        x = stepping.next(x, end.w, *std::max_element(moved.begin(), moved.end()));
        if (!decorrelate(x)) x = end.w;
        after();
    }
    return end;
}

} // namespace zn::headless
