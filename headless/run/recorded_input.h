#pragma once

#include "headless/run/run.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

/// A number of single precision with no more digits than it has: 0.0001, not 9.999999747378752e-05. NaN and infinities
/// are null.
nlohmann::ordered_json numberOrNull(float number);

/// The image of a run and what was found out about it: "Input" of the record.
nlohmann::ordered_json inputOf(const Run& run);

/// The options as given and as settled: "Settings" of the record.
nlohmann::ordered_json settingsOf(const Run& run);

} // namespace zn::headless
