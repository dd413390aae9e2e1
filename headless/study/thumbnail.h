#pragma once

#include "headless/result/result_files.h"

#include <nlohmann/json.hpp>

namespace zn::headless {

/// A small picture of a result's mean image: an axial, a coronal and a sagittal slice through the centre of the mask
/// side by side, each in a square, with the outline of the mask. As {"Width", "Height", "Pixels"}, row by row from the
/// top left, one letter per pixel: 'a' (black) to 'p' (white), 'q' on the outline. Null when the images are not there.
nlohmann::ordered_json thumbnailOf(const ResultFiles& files);

} // namespace zn::headless
