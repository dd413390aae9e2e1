#pragma once

#include "headless/events/analysed_volumes.h"
#include "headless/events/event_table.h"

#include <vector>

namespace zn::headless {

/// The expected signal of a condition at the middle of each analysed volume: its events convolved with the canonical
/// response. An event of duration d contributes stepResponse(t) - stepResponse(t - d) at the time t after its onset;
/// one of duration 0 contributes response(t), like an event of one second, for short events.
std::vector<float> predictorOf(const std::vector<Event>& events, const AnalysedVolumes& volumes);

} // namespace zn::headless
