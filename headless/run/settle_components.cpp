#include "headless/run/stages.h"

#include "headless/dimension/temporal_eigenvalues.h"
#include "headless/text/text_file.h"

#include <charconv>
#include <cstdio>
#include <string>
#include <vector>

namespace zn::headless {

namespace {

std::string noteOn(const ComponentEstimate& estimate) {
    char text[160];
    std::snprintf(text, sizeof text,
                  "Components: MDL %d (used), Laplace %d, optimal threshold %d, at %.0f effective samples.",
                  estimate.byMdl, estimate.byLaplace, estimate.byThreshold, estimate.effectiveSamples);
    return text;
}

std::string cell(const std::vector<double>& curve, std::size_t index) {
    if (index >= curve.size()) return "n/a";
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, curve[index]).ptr};
}

void writeCriteria(const std::filesystem::path& file, const ComponentEstimate& estimate) {
    std::string text = "components\teigenvalue\tmdl\tlaplace\n";
    for (std::size_t i = 0; i < estimate.eigenvalues.size(); ++i) {
        text += std::to_string(i + 1) + '\t' + cell(estimate.eigenvalues, i) + '\t' + cell(estimate.mdl, i) + '\t' +
                cell(estimate.laplace, i) + '\n';
    }
    writeTextFile(file, text);
}

} // namespace

void settleComponents(Run& run) {
    if (run.options.componentCount != ComponentCount::kEstimated) return;
    run.estimate = estimateComponents(temporalEigenvalues(run.session.series, run.mask.voxels), run.mask.count);
    run.eigenvalues = {1, run.estimate->chosen()};
    run.notes.say(noteOn(*run.estimate));
    writeCriteria((*run.files)[ResultFile::kDimension], *run.estimate);
}

} // namespace zn::headless
