#include "headless/events/haemodynamic_response.h"

#include <cmath>

namespace zn::headless {

namespace {

constexpr int kPeakShape = 6; // of the gamma density, whose scale is 1 s
constexpr int kUndershootShape = 16;
constexpr double kUndershootShare = 1.0 / 6.0;
constexpr double kLength = 32.0; // seconds

double gammaDensity(int shape, double t) {
    return std::exp((shape - 1) * std::log(t) - t - std::lgamma(shape));
}

// The distribution function for a whole shape: 1 - e^-t (1 + t + t^2/2! + ... + t^(shape-1)/(shape-1)!).
double gammaDistribution(int shape, double t) {
    double term = 1.0;
    double sum = 1.0;
    for (int i = 1; i < shape; ++i) {
        term *= t / i;
        sum += term;
    }
    return 1.0 - std::exp(-t) * sum;
}

double area(double t) {
    return gammaDistribution(kPeakShape, t) - kUndershootShare * gammaDistribution(kUndershootShape, t);
}

} // namespace

double response(double seconds) {
    if (!(seconds > 0.0 && seconds < kLength)) return 0.0;
    const double difference =
        gammaDensity(kPeakShape, seconds) - kUndershootShare * gammaDensity(kUndershootShape, seconds);
    return difference / area(kLength);
}

double stepResponse(double seconds) {
    if (!(seconds > 0.0)) return 0.0;
    return seconds < kLength ? area(seconds) / area(kLength) : 1.0;
}

} // namespace zn::headless
