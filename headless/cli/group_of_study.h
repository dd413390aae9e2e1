#pragma once

#include "headless/group/steps/group_options.h"
#include "headless/study/study_options.h"

#include <vector>

#include <CLI/CLI.hpp>

namespace zn::headless {

/// The options of a group analysis as `znica bids ... group --ica` has them, without the runs: those given for runs
/// that mean the same for a group; the others are as in `znica group`. Throws CLI::ValidationError for an option that
/// has no meaning for a group.
///
///   analysis   the options of `znica run` that the command has, too
GroupOptions groupOfStudy(const CLI::App& command, const std::vector<const CLI::Option*>& analysis,
                          const StudyOptions& study);

} // namespace zn::headless
