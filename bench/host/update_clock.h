#pragma once

namespace zn::bench {

/// When the engine started its fixed-point updates, in seconds of the steady clock: each starts with the product of the
/// transposed whitened data and a unit vector, and no other stage asks the host for such a product.
struct UpdateClock {
    int updates = 0;
    double first = 0.0; ///< start of the first update
    double last = 0.0;  ///< start of the last one
};

/// The clock of this process; set it to UpdateClock{} before a run.
__attribute__((visibility("default"))) UpdateClock& updateClock();

} // namespace zn::bench
