#include "headless/bids/entity_filter.h"

#include "headless/bids/shallow_json.h"
#include "headless/failure/failure.h"
#include "headless/text/input_file.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

using Json = nlohmann::json;

const std::map<std::string, std::string> kShortNames = {
    {"subject", "sub"},        {"session", "ses"},    {"acquisition", "acq"}, {"ceagent", "ce"},
    {"reconstruction", "rec"}, {"direction", "dir"},  {"resolution", "res"},  {"density", "den"},
    {"description", "desc"},   {"hemisphere", "hemi"}};

std::string shortName(const std::string& entity) {
    const auto found = kShortNames.find(entity);
    return found == kShortNames.end() ? entity : found->second;
}

std::string withoutLeadingZeros(std::string_view label) {
    const std::size_t first = std::min(label.find_first_not_of('0'), label.size() - 1);
    return std::string(label.substr(first));
}

bool isNumber(std::string_view label) {
    return !label.empty() && std::all_of(label.begin(), label.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// A label as text: 1 and "1" mean the same.
std::string labelText(const Json& value, const std::filesystem::path& file, const std::string& key) {
    if (value.is_string()) return value.get<std::string>();
    if (value.is_number_integer()) return std::to_string(value.get<long long>());
    refuseFile(file, "has a value for \"" + key + "\" that is not a label, a list of labels or null; fix it.");
}

} // namespace

bool sameLabel(std::string_view entity, std::string_view a, std::string_view b) {
    if (entity == "run" && isNumber(a) && isNumber(b)) return withoutLeadingZeros(a) == withoutLeadingZeros(b);
    return a == b;
}

void EntityFilter::allow(const std::string& entity, std::vector<std::string> labels) {
    conditions_[entity].push_back({false, false, std::move(labels)});
}

void EntityFilter::addFile(const std::filesystem::path& file) {
    const Json json = parseShallow<Json>(readWholeFile(file));
    if (!json.is_object()) refuseFile(file, "is not a JSON object; fix it, or leave out --bids-filter-file.");
    const auto query = json.find("bold");
    if (query == json.end() || !query->is_object()) {
        refuseFile(file, "has no query \"bold\"; write {\"bold\": {\"task\": \"rest\"}}, for example.");
    }
    for (const auto& [key, value] : query->items()) {
        Condition condition;
        const Json list = value.is_array() ? value : Json::array({value});
        for (const Json& label : list) {
            if (label.is_null()) {
                condition.absent = true;
            } else if (label == "*") {
                condition.any = true;
            } else {
                condition.labels.push_back(labelText(label, file, key));
            }
        }
        conditions_[shortName(key)].push_back(condition);
    }
}

bool EntityFilter::holds(const std::string& entity, const Condition& condition, const BidsName& name) const {
    const auto label = entity == "suffix"      ? std::optional(name.suffix)
                       : entity == "extension" ? std::optional(name.extension)
                       : entity == "datatype"  ? std::optional<std::string>("func")
                                               : name.label(entity);
    if (!label) return condition.absent;
    const auto same = [&](const std::string& allowed) { return sameLabel(entity, allowed, *label); };
    return condition.any || std::any_of(condition.labels.begin(), condition.labels.end(), same);
}

bool EntityFilter::passes(const BidsName& name) const {
    for (const auto& [entity, conditions] : conditions_) {
        for (const Condition& condition : conditions) {
            if (!holds(entity, condition, name)) return false;
        }
    }
    return true;
}

} // namespace zn::headless
