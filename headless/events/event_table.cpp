#include "headless/events/event_table.h"

#include "headless/failure/failure.h"

#include <map>

namespace zn::headless {

namespace {

double durationIn(const TextTable& table, std::size_t row, std::size_t column) {
    if (isMissing(table.rows[row][column])) return 0.0;
    const double duration = table.number(row, column);
    if (duration >= 0.0) return duration;
    throw Failure(ExitStatus::kInput,
                  table.place(row, column) + " holds a negative duration, " + table.rows[row][column] + " s.");
}

} // namespace

bool isEventTable(const TextTable& table) {
    return table.find("onset") && table.find("duration");
}

void refusePartOfAnEventTable(const TextTable& table) {
    const bool onset = table.find("onset").has_value();
    const bool duration = table.find("duration").has_value();
    const bool meant = table.find("trial_type") || table.file.ends_with("_events.tsv");
    if (onset == duration || !meant) return;
    throw Failure(ExitStatus::kInput, table.file + " has a column " + (onset ? "onset" : "duration") +
                                          " but no column " + (onset ? "duration" : "onset") +
                                          "; BIDS events need both.");
}

std::vector<Condition> conditionsIn(const TextTable& table) {
    const std::size_t onset = table.find("onset").value();
    const std::size_t duration = table.find("duration").value();
    const auto type = table.find("trial_type");
    std::map<std::string, std::vector<Event>> byName;
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        const std::string name = type ? table.rows[row][*type] : "events";
        if (isMissing(name)) continue;
        byName[name].push_back({table.number(row, onset), durationIn(table, row, duration)});
    }
    if (byName.empty()) {
        throw Failure(ExitStatus::kInput, table.file + (type && !table.rows.empty() ? " has no event with a trial_type."
                                                                                    : " lists no events."));
    }
    std::vector<Condition> conditions;
    conditions.reserve(byName.size());
    for (auto& [name, events] : byName) conditions.push_back({name, std::move(events)});
    return conditions;
}

} // namespace zn::headless
