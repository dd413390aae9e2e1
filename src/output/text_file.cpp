#include "output/text_file.h"

namespace zn {

namespace {

constexpr std::size_t kPendingLimit = 1U << 16; // characters buffered before they are written to the file at once

} // namespace

TextFile::TextFile(const char* fileName) : file_(fileName) {}

TextFile::~TextFile() {
    file_ << pending_;
}

void TextFile::endLine() {
    pending_ += '\n';
    if (pending_.size() < kPendingLimit) return;
    file_ << pending_;
    pending_.clear();
}

void TextFile::alignRight(std::string_view digits, int width) {
    const auto wanted = static_cast<std::size_t>(width);
    if (digits.size() < wanted) pending_.append(wanted - digits.size(), ' ');
    pending_ += digits;
}

} // namespace zn
