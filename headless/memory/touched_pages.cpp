#include "headless/memory/touched_pages.h"

#include <algorithm>

namespace zn::headless {

std::int64_t touchedBytes(const std::vector<unsigned char>& written, std::int64_t bytesPerElement) {
    constexpr std::int64_t kPage = 4096;
    std::int64_t pages = 0;
    std::int64_t next = 0; // the first page that is not counted yet
    for (std::size_t i = 0; i < written.size(); ++i) {
        if (written[i] == 0) continue;
        const std::int64_t begin = static_cast<std::int64_t>(i) * bytesPerElement;
        const std::int64_t end = (begin + bytesPerElement - 1) / kPage + 1;
        pages += end - std::max(next, begin / kPage);
        next = end;
    }
    return pages * kPage;
}

} // namespace zn::headless
