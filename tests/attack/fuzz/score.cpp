// Fuzz target: the description of a sample, or its true maps if the input is an image, as used to score a result.

#include "attack/fuzz/input.h"

#include "cli/nifti_bytes.h"

#include "headless/result/result_files.h"
#include "headless/simulate/recovery.h"

#include <cmath>

namespace {

using zn::headless::kSampleStem;

std::string maps(int count) {
    zn::test::NiftiBytes image;
    image.dim = {4, 3, 2, 2, static_cast<std::int16_t>(count), 1, 1, 1};
    image.dataType = 16;
    image.bitsPerVoxel = 32;
    for (int i = 0; i < 12 * count; ++i) image.append(static_cast<float>(i * i % 7) - 2.5f);
    return image.bytes();
}

std::filesystem::path sampleFile(const char* name, std::string_view bytes) {
    return zn::test::inputFile("sample/" + std::string(kSampleStem) + name, bytes);
}

constexpr char kTruth[] = R"({"seed": 1, "sources": [{"name": "a"}, {"name": "b"}]})";

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto result = zn::test::inputFile("result/x_desc-ICA_components.nii.gz", maps(3));
    static const auto mask = sampleFile("_desc-brain_mask.nii.gz", maps(1));
    const std::string text = zn::test::textInput(data, size);
    const bool isText = text.starts_with('{') || text.starts_with('[');
    zn::test::inputFile("sample/truth.json", isText ? text : kTruth);
    sampleFile("_desc-truth_components.nii.gz", isText ? maps(2) : text);
    zn::test::mayRefuse([&] {
        for (const auto& [name, recovery] : zn::headless::scoreResult(result.parent_path(), mask.parent_path())) {
            zn::test::require(std::fabs(recovery.correlation) <= 1.000001, "a correlation is a number up to 1");
        }
    });
    return 0;
}
