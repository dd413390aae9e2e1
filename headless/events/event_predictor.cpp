#include "headless/events/event_predictor.h"

#include "headless/events/haemodynamic_response.h"

namespace zn::headless {

std::vector<float> predictorOf(const std::vector<Event>& events, const AnalysedVolumes& volumes) {
    std::vector<float> predictor;
    for (int volume = 0; volume < volumes.count(); ++volume) {
        double sum = 0.0;
        for (const auto& [onset, duration] : events) {
            const double t = volumes.middleOf(volume) - onset;
            sum += duration > 0.0 ? stepResponse(t) - stepResponse(t - duration) : response(t);
        }
        predictor.push_back(static_cast<float>(sum));
    }
    return predictor;
}

} // namespace zn::headless
