#include "headless/result/mixing_table.h"

#include "headless/result/result_names.h"
#include "headless/text/text_file.h"

namespace zn::headless {

void writeMixingTable(const std::filesystem::path& file, const VolumeMaps& maps) {
    std::string text;
    int index = 0;
    for (const VolumeMap& map : maps.maps()) {
        (void)map;
        text += (index > 0 ? "\t" : "") + componentName(index);
        ++index;
    }
    text += '\n';
    const std::size_t volumes = maps.maps().empty() ? 0 : maps.maps().front().timeCourse.size();
    for (std::size_t t = 0; t < volumes; ++t) {
        const char* separator = "";
        for (const VolumeMap& map : maps.maps()) {
            text += separator + cellText(map.timeCourse[t]);
            separator = "\t";
        }
        text += '\n';
    }
    writeTextFile(file, text);
}

} // namespace zn::headless
