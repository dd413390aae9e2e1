#pragma once

#include <utility>

#include <nlohmann/json.hpp>

namespace zn::headless {

/// Parses JSON from a text or a stream, leaving out what is nested more than 64 levels deep: copying a value takes
/// stack for every level. Discarded, so neither an object nor a list, when it is not JSON.
template <class Json, class Input> Json parseShallow(Input&& input) {
    constexpr int kMostLevels = 64;
    const auto limit = [](int depth, typename Json::parse_event_t, Json&) { return depth <= kMostLevels; };
    return Json::parse(std::forward<Input>(input), limit, false);
}

} // namespace zn::headless
