#pragma once

#include "headless/run/run.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

/// A single-precision number without spurious digits: 0.0001, not 9.999999747378752e-05. NaN and infinities become
/// null.
nlohmann::ordered_json numberOrNull(float number);

/// The image of a run and what is known about it: "Input" of the record.
nlohmann::ordered_json inputOf(const Run& run);

/// What was done to the time courses before the analysis: "Preparation" of the record. Widths in millimetres, full at
/// half maximum; EstimatedFWHM along x, y, z, null unless it was needed.
nlohmann::ordered_json preparationOf(const Run& run);

/// The options as given and as resolved: "Settings" of the record.
nlohmann::ordered_json settingsOf(const Run& run);

} // namespace zn::headless
