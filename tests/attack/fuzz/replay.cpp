// The main function of a fuzz target where the compiler has no fuzzer: reads every file of some folders once.
//
//   PROGRAM FOLDER...

#include "attack/fuzz/input.h"
#include "files.h"

#include <cstdio>
#include <filesystem>
#include <string>

int main(int argc, char** argv) {
    int inputs = 0;
    for (int i = 1; i < argc; ++i) {
        for (const std::string& name : zn::test::namesIn(argv[i])) {
            const auto file = std::filesystem::path(argv[i]) / name;
            std::printf("%s\n", file.c_str());
            std::fflush(stdout); // the last name printed is the input that ended the program
            const std::string bytes = zn::test::textOf(file);
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++inputs;
        }
    }
    return inputs == 0 ? 1 : 0; // a wrong folder is not a success
}
