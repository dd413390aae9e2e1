#include "headless/denoise/denoise_driver.h"

#include "headless/denoise/denoise_stages.h"

namespace zn::headless {

Quality denoise(const DenoiseOptions& options, UnfinishedWork& unfinished) {
    Denoising run(options, unfinished);

    readInputs(run);       // result, the image's header
    chooseComponents(run); // labels or list -> what is rejected, and why
    readNuisance(run);     // confounds, high-pass filter
    designRemoval(run);    // columns -> what is subtracted from every voxel's course
    openResult(run);       // the hidden folder
    cleanImage(run);       // image -> cleaned image, evidence
    const Quality quality = qualityOf(run);
    writeResult(run, quality); // image, tables, report; the folder takes its name
    return quality;
}

} // namespace zn::headless
