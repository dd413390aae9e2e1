#include "headless/denoise/denoising.h"

#include "headless/denoise/explained_squares.h"

#include <algorithm>
#include <cstdio>

namespace zn::headless {

void Denoising::say(const std::string& note) {
    notes.push_back(note);
    if (!options.quiet) std::printf("%s\n", note.c_str());
}

int Denoising::rejectedCount() const {
    return static_cast<int>(std::ranges::count_if(verdicts, &Verdict::rejected));
}

std::int64_t Denoising::count(VoxelKind kind) const {
    return std::ranges::count(kinds, kind);
}

double Denoising::removedPercent(int first, int end) const {
    return 100.0 * explainedSquares(cleaning, removal, first, end) / cleaning.squaresBefore;
}

} // namespace zn::headless
