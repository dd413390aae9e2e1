// Fuzz target: the arguments of the command, one per line. Nothing that they ask for is done.

#include "attack/fuzz/input.h"

#include "headless/cli/command_line.h"

namespace {

void parse(const std::vector<const char*>& arguments) {
    static zn::headless::CommandLine line; // takes longer to build than to use
    line.action = nullptr;
    const auto count = static_cast<int>(arguments.size());
    try {
        line.app.parse(count, arguments.data());
        zn::test::require(line.action != nullptr, "arguments that parse are those of a command");
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return; // help and version
        zn::test::require(!line.complaint(error, count, arguments.data()).empty(), "a refusal says why");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto texts = zn::test::piecesOf(zn::test::textInput(data, size), '\n');
    std::vector<const char*> arguments = {"znica"};
    for (const std::string& text : texts) arguments.push_back(text.c_str());
    parse(arguments);
    return 0;
}
