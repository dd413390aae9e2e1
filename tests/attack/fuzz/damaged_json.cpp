#include "attack/fuzz/damaged_json.h"

#include "attack/fuzz/damaged_header.h"

#include <vector>

#include <nlohmann/json.hpp>

namespace zn::test {

namespace {

using Json = nlohmann::ordered_json;

// Numbers that have no value in this program stand in the text as they are; meanwhile they are strings with a mark.
constexpr char kMark[] = "\x01";
constexpr const char* kLiterals[] = {"1e999",
                                     "-1e999",
                                     "1e308",
                                     "5e-324",
                                     "0",
                                     "-0.0",
                                     "-1",
                                     "1",
                                     "0.5",
                                     "2",
                                     "3",
                                     "2147483647",
                                     "-2147483648",
                                     "2147483648",
                                     "9223372036854775807",
                                     "9223372036854775808",
                                     "18446744073709551616",
                                     "null",
                                     "true",
                                     "false",
                                     "{}",
                                     "[]",
                                     "\"\"",
                                     "[[]]",
                                     "[null]",
                                     "{\"\":null}",
                                     "\"\\u0000\"",
                                     "\"\\ud800\"",
                                     "\"\\u001b[2J\"",
                                     "1e-999"};

void collect(Json& json, std::vector<Json*>& values, int depth) {
    values.push_back(&json);
    if (depth == 0 || !json.is_structured()) return;
    for (Json& element : json) collect(element, values, depth - 1);
}

void removeOne(Json& json, std::minstd_rand& random) {
    if (!json.is_structured() || json.empty()) return;
    auto position = json.begin();
    std::advance(position, static_cast<std::ptrdiff_t>(below(json.size(), random)));
    json.erase(position);
}

void change(Json& json, const std::vector<Json*>& values, std::minstd_rand& random) {
    switch (below(6, random)) {
    case 0:
        json = Json(*values[below(values.size(), random)]);
        break;
    case 1:
        removeOne(json, random);
        break;
    case 2:
        for (std::size_t depth = below(80, random); depth > 0; --depth) json = Json::array({std::move(json)});
        break;
    default:
        json = kMark + std::string(kLiterals[below(std::size(kLiterals), random)]) + kMark;
    }
}

// Puts the literals in the place of the strings that stand for them.
std::string unmarked(std::string text) {
    const std::string mark = "\\u0001";
    for (std::size_t at = text.find('"' + mark); at != std::string::npos; at = text.find('"' + mark)) {
        const std::size_t end = text.find(mark + '"', at + 1 + mark.size());
        if (end == std::string::npos) return text;
        const std::string quoted = text.substr(at, end + mark.size() + 1 - at);
        const Json marked = Json::parse(quoted, nullptr, false);
        std::string literal = marked.is_string() ? marked.get<std::string>() : "";
        if (literal.size() >= 2) literal = literal.substr(1, literal.size() - 2);
        text.replace(at, quoted.size(), literal);
    }
    return text;
}

} // namespace

std::string damagedJson(const std::string& text, std::minstd_rand& random) {
    Json json = Json::parse(text, nullptr, false);
    if (json.is_discarded()) return "";
    std::vector<Json*> values;
    collect(json, values, 20);
    change(*values[below(values.size(), random)], values, random);
    return unmarked(json.dump(-1, ' ', false, Json::error_handler_t::replace));
}

} // namespace zn::test
