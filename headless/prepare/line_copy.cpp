#include "headless/prepare/line_copy.h"

#include "numeric/instruction_set.h"

#include <algorithm>
#include <cstdlib>

namespace zn::headless {

LineCopy::LineCopy(int length, int columns)
    : columns_(columns), values_(static_cast<std::size_t>(length) * static_cast<std::size_t>(columns)),
      has_(static_cast<std::size_t>(length)) {}

bool LineCopy::has(int at) const {
    return at >= 0 && at < static_cast<int>(has_.size()) && has_[static_cast<std::size_t>(at)] != 0;
}

void LineCopy::set(int at, const float* source) {
    filled_ += (source ? 1 : 0) - (has(at) ? 1 : 0);
    has_[static_cast<std::size_t>(at)] = source ? 1 : 0;
    if (source) std::copy_n(source, columns_, course(at));
}

bool LineCopy::convolve(int at, const std::vector<float>& kernel, float divisor, float* target) {
    static const auto addRows = ZN_PICK_KERNEL(addRowsKernel);
    rows_.clear();
    const int radius = static_cast<int>(kernel.size()) - 1;
    for (int d = -radius; d <= radius; ++d) {
        if (has(at + d)) rows_.push_back({kernel[static_cast<std::size_t>(std::abs(d))], course(at + d)});
    }
    if (rows_.empty()) return false;
    addRows(rows_.data(), static_cast<int>(rows_.size()), columns_, divisor, target);
    return true;
}

} // namespace zn::headless
