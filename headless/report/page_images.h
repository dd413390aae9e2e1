#pragma once

#include "headless/nifti/image_header.h"
#include "headless/report/map_blocks.h"
#include "headless/report/report_page.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace zn::headless {

/// Images that a run has at hand, packed before its files are complete.
struct PageImages {
    std::vector<MapBlock> maps;
    std::string mean; ///< as packedText()
};

/// Adds maps as the blocks "map-FIRST", "map-FIRST+1", ... Returns the array "maps" of the page's data.
nlohmann::ordered_json addMaps(ReportPage& page, const std::vector<MapBlock>& blocks, std::size_t first = 0);

/// What the page shows of a mean image: shades of grey, as packedText().
std::string packedMean(const std::vector<float>& mean);

/// Adds an image on a grid as the block "mean". Throws Failure (kInput) for another grid.
void addMean(ReportPage& page, const std::filesystem::path& image, const ImageHeader& grid);

} // namespace zn::headless
