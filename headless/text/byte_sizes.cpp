#include "headless/text/byte_sizes.h"

#include <cstdio>

namespace zn::headless {

std::string gibText(std::int64_t bytes) {
    char text[64];
    std::snprintf(text, sizeof text, "%.3g GiB", static_cast<double>(bytes) / kBytesPerGib);
    return text;
}

} // namespace zn::headless
