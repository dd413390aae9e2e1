#include "headless/cli/plain_text.h"

#include <array>
#include <cctype>
#include <cstdlib>
#include <utility>

namespace zn::headless {

namespace {

// The named character references that texts about methods and their authors need.
constexpr std::array<std::pair<std::string_view, std::string_view>, 26> kNamed = {{
    {"amp", "&"},         {"lt", "<"},          {"gt", ">"},          {"quot", "\""},       {"apos", "'"},
    {"nbsp", " "},        {"auml", "\u00e4"},   {"ouml", "\u00f6"},   {"uuml", "\u00fc"},   {"Auml", "\u00c4"},
    {"Ouml", "\u00d6"},   {"Uuml", "\u00dc"},   {"szlig", "\u00df"},  {"eacute", "\u00e9"}, {"egrave", "\u00e8"},
    {"aring", "\u00e5"},  {"Aring", "\u00c5"},  {"oslash", "\u00f8"}, {"ccedil", "\u00e7"}, {"ntilde", "\u00f1"},
    {"agrave", "\u00e0"}, {"aacute", "\u00e1"}, {"copy", "\u00a9"},   {"ndash", "\u2013"},  {"mdash", "\u2014"},
    {"middot", "\u00b7"},
}};

std::string utf8(unsigned long code) {
    const auto byte = [](unsigned long bits) { return static_cast<char>(bits); };
    const auto next = [&](int shift) { return byte(0x80 | (code >> shift & 0x3f)); };
    std::string text;
    if (code < 0x80) return {byte(code)};
    if (code < 0x800) return {byte(0xc0 | code >> 6), next(0)};
    if (code < 0x10000) return {byte(0xe0 | code >> 12), next(6), next(0)};
    return {byte(0xf0 | code >> 18), next(12), next(6), next(0)};
}

// The character of a reference given without ampersand and semicolon; empty when unknown.
std::string letter(std::string_view name) {
    for (const auto& [known, text] : kNamed) {
        if (name == known) return std::string(text);
    }
    if (name.size() < 2 || name[0] != '#') return "";
    const bool hexadecimal = name[1] == 'x' || name[1] == 'X';
    const std::string digits(name.substr(hexadecimal ? 2 : 1));
    char* end = nullptr;
    const unsigned long code = std::strtoul(digits.c_str(), &end, hexadecimal ? 16 : 10);
    return *end == '\0' && code > 0 && code <= 0x10ffff ? utf8(code) : "";
}

void addBlank(std::string& text) {
    if (!text.empty() && text.back() != ' ' && text.back() != '\n') text += ' ';
}

void endLine(std::string& text) {
    while (!text.empty() && text.back() == ' ') text.pop_back();
    if (!text.empty() && text.back() != '\n') text += '\n';
}

} // namespace

std::string plainText(std::string_view html) {
    std::string text;
    for (std::size_t i = 0; i < html.size();) {
        const char c = html[i];
        const std::size_t close = c == '<' ? html.find('>', i) : c == '&' ? html.find(';', i) : html.npos;
        const std::string_view inner = close == html.npos ? "" : html.substr(i + 1, close - i - 1);
        if (c == '<' && close != html.npos) {
            if (inner.starts_with("br") || inner == "p" || inner.starts_with("p ")) endLine(text);
            i = close + 1;
        } else if (const std::string known = letter(inner); c == '&' && !known.empty()) {
            text += known;
            i = close + 1;
        } else {
            if (std::isspace(static_cast<unsigned char>(c)) != 0) {
                addBlank(text);
            } else {
                text += c;
            }
            ++i;
        }
    }
    while (!text.empty() && (text.back() == ' ' || text.back() == '\n')) text.pop_back();
    return text;
}

} // namespace zn::headless
