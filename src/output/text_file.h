#pragma once

#include <charconv>
#include <concepts>
#include <fstream>
#include <string>
#include <string_view>

namespace zn {

/// A text file of right-aligned number fields, each followed by one blank.
///
/// Numbers are formatted as a C++ stream does by default: floats in general notation with six significant digits,
/// integers in full; a value wider than its field is written in full. Lines end as the platform's text files do.
/// An existing file is replaced. A file that cannot be opened or written is silently skipped.
class TextFile {
public:
    explicit TextFile(const char* fileName);
    ~TextFile();
    TextFile(const TextFile&) = delete;
    TextFile& operator=(const TextFile&) = delete;

    template <std::floating_point Number> void field(Number value, int width) {
        char digits[32]; // sign, six digits, point, exponent: at most 13 characters
        const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 6).ptr;
        alignRight(std::string_view(digits, static_cast<std::size_t>(end - digits)), width);
    }

    template <std::integral Number> void field(Number value, int width) {
        char digits[32];
        const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
        alignRight(std::string_view(digits, static_cast<std::size_t>(end - digits)), width);
    }

    void text(std::string_view text) { pending_ += text; }
    void blank() { pending_ += ' '; }
    void endLine();

private:
    void alignRight(std::string_view digits, int width);

    std::ofstream file_;
    std::string pending_; // not yet written
};

} // namespace zn
