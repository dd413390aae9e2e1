#include "headless/report/page_images.h"

#include "headless/nifti/read_volumes.h"
#include "headless/nifti/same_grid.h"
#include "headless/report/mean_image.h"

#include <span>
#include <string>

namespace zn::headless {

nlohmann::ordered_json addMaps(ReportPage& page, const std::vector<MapBlock>& blocks, std::size_t first) {
    auto maps = nlohmann::ordered_json::array();
    for (const MapBlock& block : blocks) {
        page.addPacked("map-" + std::to_string(first + maps.size()), block.packed);
        maps.push_back({{"decimals", block.decimals},
                        {"lowest", block.lowest},
                        {"highest", block.highest},
                        {"negative_tail", block.negativeTail}});
    }
    return maps;
}

std::string packedMean(const std::vector<float>& mean) {
    const std::vector<unsigned char> levels = greyLevels(mean);
    return packedText(std::as_bytes(std::span(levels)));
}

void addMean(ReportPage& page, const std::filesystem::path& image, const ImageHeader& grid) {
    const ImageHeader mean = readImageHeader(image);
    requireSameGrid("mean image", mean, grid);
    page.addPacked("mean", packedMean(readSingleVolume(mean)));
}

} // namespace zn::headless
