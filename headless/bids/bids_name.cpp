#include "headless/bids/bids_name.h"

#include <algorithm>

namespace zn::headless {

namespace {

// Independent of the locale.
bool isLetterOrDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isWord(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isLetterOrDigit);
}

// Derivatives join labels with plus signs.
bool isLabel(std::string_view text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return isLetterOrDigit(c) || c == '+'; });
}

bool addEntity(BidsName& name, std::string_view part) {
    const std::size_t hyphen = part.find('-');
    if (hyphen == std::string_view::npos) return false;
    const std::string_view key = part.substr(0, hyphen);
    const std::string_view label = part.substr(hyphen + 1);
    if (!isWord(key) || !isLabel(label) || name.label(key)) return false;
    name.entities.emplace_back(key, label);
    return true;
}

} // namespace

std::optional<std::string> BidsName::label(std::string_view entity) const {
    for (const auto& [key, label] : entities) {
        if (key == entity) return label;
    }
    return std::nullopt;
}

BidsName BidsName::without(const std::vector<std::string_view>& left) const {
    BidsName result = *this;
    std::erase_if(result.entities,
                  [&](const auto& entity) { return std::find(left.begin(), left.end(), entity.first) != left.end(); });
    return result;
}

std::string BidsName::entityText() const {
    std::string text;
    for (const auto& [key, label] : entities) {
        if (!text.empty()) text += '_';
        text.append(key).append("-").append(label);
    }
    return text;
}

std::optional<BidsName> parseBidsName(std::string_view name) {
    BidsName result;
    const std::size_t dot = std::min(name.find('.'), name.size());
    result.extension = name.substr(dot);
    std::string_view stem = name.substr(0, dot);
    for (std::size_t end = stem.find('_'); end != std::string_view::npos; end = stem.find('_')) {
        if (!addEntity(result, stem.substr(0, end))) return std::nullopt;
        stem.remove_prefix(end + 1);
    }
    if (!isWord(stem)) return std::nullopt;
    result.suffix = stem;
    return result;
}

bool appliesTo(const BidsName& general, const BidsName& particular) {
    const auto& known = particular.entities;
    return std::all_of(general.entities.begin(), general.entities.end(), [&](const auto& entity) {
        return std::find(known.begin(), known.end(), entity) != known.end();
    });
}

} // namespace zn::headless
