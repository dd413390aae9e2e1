#pragma once

#include "headless/failure/failure.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zn::test {

/// The bytes of an input. One that is gzip-compressed text is inflated, so that a long text can be a short input.
std::string textInput(const std::uint8_t* data, std::size_t size);

/// Writes bytes to a file of this process's own folder, replacing an earlier one. The folder lies in TMPDIR, which
/// should be in memory, and is removed at exit.
///
///   name   may begin with the name of a subfolder, which is created
std::filesystem::path inputFile(const std::string& name, std::string_view bytes);

/// Removes such a file, if it exists.
void removeInputFile(const std::string& name);

/// The pieces of a text between separators, at least one.
std::vector<std::string> piecesOf(std::string_view text, char separator);

/// Ends the process, as a sanitizer does, unless the condition holds.
void require(bool condition, const char* what);

/// Calls a reader. It may return, or refuse its input in one sentence; any other exception ends the process.
template <class Read> void mayRefuse(Read read) {
    try {
        read();
    } catch (const headless::Failure& failure) {
        require(failure.status() == headless::ExitStatus::kInput, "a damaged input has the exit status of an input");
        require(std::string_view(failure.what()).ends_with('.'), "a refusal is a sentence");
    }
}

} // namespace zn::test

/// What every fuzz target defines: reads one input, and returns 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
