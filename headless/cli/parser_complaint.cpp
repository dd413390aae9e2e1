#include "headless/cli/parser_complaint.h"

#include "headless/cli/shown_options.h"

#include <optional>
#include <string_view>
#include <utility>

namespace zn::headless {

namespace {

using Parts = std::optional<std::pair<std::string, std::string>>;

// What is before and after the last occurrence of `middle`.
Parts splitAt(const std::string& text, std::string_view middle) {
    const std::size_t at = text.rfind(middle);
    if (at == std::string::npos) return std::nullopt;
    return std::pair(text.substr(0, at), text.substr(at + middle.size()));
}

std::string ofExtras(const CLI::App& command, const std::string& text) {
    for (const std::string& argument : command.remaining()) {
        if (argument != "--") return argument + " is one argument too many; usage: " + usage(command);
    }
    return text;
}

// "--out: At Most 1 required but received 2", "--out: 1 required DIR missing"
std::string ofMismatch(const std::string& text) {
    if (const auto parts = splitAt(text, ": At Most 1 required but received ")) {
        return parts->first + " is given " + (parts->second == "2" ? "twice" : parts->second + " times");
    }
    if (!text.ends_with(" missing")) return text;
    const auto parts = splitAt(text.substr(0, text.size() - std::string_view(" missing").size()), ": 1 required ");
    return parts ? parts->first + " needs a value: " + parts->first + " " + parts->second : text;
}

// "a, b or c" of "a,b,c"
std::string alternatives(const std::string& list) {
    const std::size_t last = list.rfind(',');
    std::string text;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i] != ',') {
            text += list[i];
        } else {
            text += i == last ? " or " : ", ";
        }
    }
    return text;
}

// "--repeats: Value 0 not in range 1 to 1000", "--size: huge not in {tiny,small}"
std::string ofValue(const std::string& text) {
    const std::size_t colon = text.find(": ");
    if (colon == std::string::npos) return text;
    const std::string option = text.substr(0, colon);
    const std::string rest = text.substr(colon + 2);
    constexpr std::string_view kValue = "Value ";
    if (const auto range = splitAt(rest, " not in range "); range && rest.starts_with(kValue)) {
        return option + ": needs " + range->second + "; got " + range->first.substr(kValue.size());
    }
    if (const auto set = splitAt(rest, " not in {"); set && rest.ends_with('}')) {
        return option + ": needs " + alternatives(set->second.substr(0, set->second.size() - 1)) + "; got " +
               set->first;
    }
    return text;
}

} // namespace

std::string parserComplaint(const CLI::ParseError& error, const CLI::App& command) {
    const std::string name = error.get_name(); // for extra arguments that of the command
    std::string text = error.what();
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::ExtrasError)) return ofExtras(command, text);
    if (name == "ArgumentMismatch") return ofMismatch(text);
    if (name == "ValidationError") return ofValue(text);
    const auto both = splitAt(text, " excludes ");
    if (name == "ExcludesError" && both) return "give " + both->first + " or " + both->second + ", not both";
    return text;
}

} // namespace zn::headless
