#pragma once

namespace zn {

/// Contrast function of the fixed-point iteration.
enum class Nonlinearity { cube, gaussian, tanh };

} // namespace zn
