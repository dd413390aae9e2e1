#include "headless/group/steps/batch_files.h"

#include "headless/compression/checksum.h"

#include <algorithm>
#include <cstdio>

namespace zn::headless {

namespace fs = std::filesystem;

fs::path reductionFolder(const fs::path& study) {
    return study / "reduction";
}

std::string batchName(const Batch& batch) {
    return "batch-" + std::to_string(batch.number) + "of" + std::to_string(batch.of);
}

std::string batchBasis(const GroupStudy& study, const Batch& batch) {
    return checksumOf(study.id + ' ' + batchName(batch));
}

std::vector<Batch> recordedBatches(const fs::path& study) {
    std::vector<Batch> batches;
    if (!fs::is_directory(reductionFolder(study))) return batches;
    for (const auto& entry : fs::directory_iterator(reductionFolder(study))) {
        Batch batch;
        const std::string name = entry.path().filename().string();
        const int read = std::sscanf(name.c_str(), "batch-%dof%d", &batch.number, &batch.of);
        if (read == 2 && name == batchName(batch) + ".json") batches.push_back(batch);
    }
    std::sort(batches.begin(), batches.end(),
              [](const Batch& a, const Batch& b) { return a.of != b.of ? a.of < b.of : a.number < b.number; });
    return batches;
}

} // namespace zn::headless
