#pragma once

#include "headless/bids/bids_name.h"

#include <string>
#include <vector>

namespace zn::headless {

/// The space of an image: "MNI152NLin2009cAsym:res-2", "T1w", or "func" for one without the entity "space", which is
/// in the space of the functional image itself.
std::string spaceOf(const BidsName& image);

/// Which of the spaces present is meant by `wanted`, a label with or without its resolution. Throws Failure (kInput)
/// naming the spaces when there is none, or more than one that fits.
///
///   present   spaces, each once
///   wanted    empty: the only one there is
std::string chooseSpace(const std::vector<std::string>& present, const std::string& wanted);

} // namespace zn::headless
