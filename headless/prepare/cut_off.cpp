#include "headless/prepare/cut_off.h"

#include "headless/failure/failure.h"
#include "headless/text/short_texts.h"

namespace zn::headless {

void requireCutOff(double cutOff, double secondsPerVolume) {
    if (cutOff <= 0.0 || cutOff >= 2.0 * secondsPerVolume) return;
    throw Failure(ExitStatus::kInput, "--high-pass " + secondsText(cutOff) + " is below two repetition times of " +
                                          secondsText(secondsPerVolume) +
                                          "; give a longer cut-off in seconds, such as 128.");
}

} // namespace zn::headless
