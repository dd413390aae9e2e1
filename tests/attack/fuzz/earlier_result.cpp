// Fuzz target: the JSON files by which --force recognises an earlier result or sample. An input with the word "seed"
// describes a sample.

#include "attack/fuzz/input.h"

#include "headless/result/earlier_result.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr const char* kFiles[] = {"earlier/dataset_description.json", "earlier/truth.json"};
    const std::string text = zn::test::textInput(data, size);
    const bool sample = text.find("\"seed\"") != std::string::npos;
    zn::test::removeInputFile(kFiles[sample ? 0 : 1]);
    const auto file = zn::test::inputFile(kFiles[sample ? 1 : 0], text);
    const auto kind = sample ? zn::headless::ResultKind::kSample : zn::headless::ResultKind::kRun;
    zn::headless::whyNotAResult(file.parent_path(), kind); // always answers
    return 0;
}
