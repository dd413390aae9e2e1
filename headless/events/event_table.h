#pragma once

#include "headless/text/text_table.h"

#include <string>
#include <vector>

namespace zn::headless {

/// Something that happened during the acquisition, in seconds from the start of the image's first volume.
struct Event {
    double onset = 0.0;    ///< negative: before the first volume
    double duration = 0.0; ///< 0: brief
};

/// Events of one kind.
struct Condition {
    std::string name;
    std::vector<Event> events;
};

/// Whether a table lists events: it has the columns onset and duration.
bool isEventTable(const TextTable& table);

/// Throws Failure (kInput) for a table that is meant to list events, since it has the column trial_type or such a name,
/// but has only one of the columns onset and duration.
void refusePartOfAnEventTable(const TextTable& table);

/// The events of a BIDS table by their trial_type, in alphabetical order of the names. Without that column all events
/// are one condition, "events"; events whose trial_type is missing belong to none. A missing duration counts as 0.
/// Other columns are ignored. Throws Failure (kInput) for an onset or duration that is not a number, for a negative
/// duration, and for a table without events.
std::vector<Condition> conditionsIn(const TextTable& table);

} // namespace zn::headless
