#include "headless/result/component_image.h"

#include "headless/nifti/image_writer.h"

namespace zn::headless {

void writeComponentImage(const std::filesystem::path& file, const VolumeMaps& maps, const ImageHeader& functional) {
    ImageWriter::Layout layout;
    layout.volumes = static_cast<int>(maps.maps().size());
    layout.description = "ICA component maps";
    ImageWriter writer(file, *functional.image, layout);
    for (const VolumeMap& map : maps.maps()) writer.write(map.values);
    writer.close();
}

} // namespace zn::headless
