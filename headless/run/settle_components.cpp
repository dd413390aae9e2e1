#include "headless/run/stages.h"

#include "headless/blas/one_blas_thread.h"
#include "headless/dimension/series_covariances.h"
#include "headless/text/text_file.h"

#include <charconv>
#include <cstdio>
#include <string>
#include <vector>

namespace zn::headless {

namespace {

std::string noteOn(const ComponentEstimate& estimate) {
    char text[200];
    std::snprintf(
        text, sizeof text,
        "Components: parallel analysis %d (used), MDL %d, Laplace %d, optimal threshold %d, at %.0f effective "
        "samples.",
        estimate.chosen(), estimate.byMdl, estimate.byLaplace, estimate.byThreshold, estimate.effectiveSamples);
    return text;
}

// What makes the number uncertain.
std::vector<Remark> remarksOn(const ComponentEstimate& estimate, int volumes) {
    std::vector<Remark> remarks;
    if (!estimate.parallel.hasEdge) {
        remarks.push_back({"components-without-edge",
                           "Components: the eigenvalues descend into the noise without an edge, so their number is a "
                           "compromise; compare other numbers, with --repeats."});
    }
    if (estimate.disagree()) {
        remarks.push_back({"components-criteria-disagree",
                           "Components: the criteria differ by a factor of two or more; compare other numbers, with "
                           "--repeats."});
    }
    if (estimate.effectiveSamples < volumes) {
        char text[160];
        std::snprintf(text, sizeof text,
                      "Components: %.0f effective samples are fewer than the %d volumes, too few for MDL and Laplace.",
                      estimate.effectiveSamples, volumes);
        remarks.push_back({"components-few-samples", text});
    }
    return remarks;
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
    const int threads = MatrixProducts::threadsFor(run.options.control.threads);
    const OneBlasThread oneThread;
    MatrixProducts products(threads);
    WorkerThreads workers(threads);
    const auto covariances = [&](const Directions& leading) {
        return seriesCovariances(run.session.series, run.functional.size, run.mask.voxels, workers, leading);
    };
    run.estimate = estimateComponents(covariances, products);
    run.eigenvalues = {1, run.estimate->chosen()};
    run.notes.say(noteOn(*run.estimate));
    for (const Remark& remark : remarksOn(*run.estimate, run.volumes)) run.notes.remark(remark);
    writeCriteria((*run.files)[ResultFile::kDimension], *run.estimate);
}

} // namespace zn::headless
