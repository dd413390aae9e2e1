#pragma once

#include "headless/study/planned_run.h"

namespace zn::headless {

/// What a study consists of.
struct StudyPlan {
    std::vector<PlannedRun> runs;   ///< in alphabetical order of their images
    std::vector<std::string> notes; ///< sentences: what was passed over, what some images lack
};

/// Finds the images of the chosen subjects and what belongs to them: in the derivatives, or in the dataset itself,
/// whose preprocessed images count if it is a derivative. Throws Failure (kInput) when a folder cannot be read, a label
/// does not exist, the images are in several spaces, two images have the same name, or none is left.
StudyPlan planStudy(const StudyOptions& options);

} // namespace zn::headless
