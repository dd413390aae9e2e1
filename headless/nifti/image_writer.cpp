#include "headless/nifti/image_writer.h"

#include "headless/failure/failure.h"
#include "headless/nifti/millimetres_per_unit.h"
#include "headless/nifti/quiet_library.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace zn::headless {

namespace {

using Image = std::unique_ptr<nifti_image, decltype(&nifti_image_free)>;

void setMillimetres(nifti_image& image) {
    const double scale = millimetresPerUnit(image.xyz_units);
    image.xyz_units = NIFTI_UNITS_MM;
    if (scale == 1.0) return; // keep the affines bit for bit
    for (int axis = 1; axis <= 3; ++axis) image.pixdim[axis] *= scale;
    image.dx *= scale;
    image.dy *= scale;
    image.dz *= scale;
    image.qoffset_x *= scale;
    image.qoffset_y *= scale;
    image.qoffset_z *= scale;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 4; ++column) image.sto_xyz.m[row][column] *= scale;
    }
}

void setVolumes(nifti_image& image, const ImageWriter::Layout& layout) {
    image.ndim = image.dim[0] = layout.volumes > 1 ? 4 : 3;
    image.nt = image.dim[4] = layout.volumes;
    image.nu = image.nv = image.nw = image.dim[5] = image.dim[6] = image.dim[7] = 1;
    image.nvox = image.nx * image.ny * image.nz * image.nt;
    const double step = layout.secondsPerVolume > 0.0 ? layout.secondsPerVolume : 1.0;
    image.dt = image.pixdim[4] = step;
    image.time_units = NIFTI_UNITS_SEC;
    image.toffset = 0.0;
}

void setValues(nifti_image& image, const ImageWriter::Layout& layout) {
    image.datatype = layout.dataType;
    nifti_datatype_sizes(image.datatype, &image.nbyper, &image.swapsize);
    image.byteorder = nifti_short_order();
    image.scl_slope = 1.0;
    image.scl_inter = image.cal_min = image.cal_max = 0.0;
    image.intent_code = NIFTI_INTENT_NONE;
    image.intent_p1 = image.intent_p2 = image.intent_p3 = 0.0;
    image.intent_name[0] = image.aux_file[0] = '\0';
    image.slice_code = 0;
    image.slice_start = image.slice_end = 0;
    image.slice_duration = 0.0;
    std::memset(image.descrip, 0, sizeof image.descrip);
    std::snprintf(image.descrip, sizeof image.descrip, "%s", layout.description);
}

void setFile(nifti_image& image, const std::filesystem::path& file) {
    std::free(image.fname);
    std::free(image.iname);
    image.fname = nifti_strdup(file.c_str());
    image.iname = nifti_strdup(file.c_str());
    image.nifti_type = NIFTI_FTYPE_NIFTI1_1;
    nifti_set_iname_offset(&image, 1);
}

} // namespace

ImageWriter::ImageWriter(const std::filesystem::path& file, const nifti_image& grid, const Layout& layout)
    : file_(file), stream_(file, file.extension() == ".gz", layout.threads) {
    const QuietLibrary quiet;
    const Image image(nifti_copy_nim_info(&grid), nifti_image_free);
    if (!image) throw std::bad_alloc();
    nifti_free_extensions(image.get()); // they describe the input
    setMillimetres(*image);
    setVolumes(*image, layout);
    setValues(*image, layout);
    setFile(*image, file);
    for (int axis = 1; axis <= 4; ++axis) {
        if (image->dim[axis] > kMostElements) {
            throw Failure(ExitStatus::kOther, file.string() + " cannot be written: NIfTI-1 holds at most " +
                                                  std::to_string(kMostElements) + " elements along an axis.");
        }
    }
    writeHeader(*image);
}

void ImageWriter::writeHeader(const nifti_image& image) {
    nifti_1_header header;
    if (nifti_convert_nim2n1hdr(&image, &header) != 0) fail();
    writeBytes(std::as_bytes(std::span(&header, 1)));
    constexpr std::array<std::byte, 4> kNoExtension{};
    writeBytes(kNoExtension);
}

void ImageWriter::writeBytes(std::span<const std::byte> bytes) {
    if (!stream_.write(bytes)) fail();
}

void ImageWriter::close() {
    if (!stream_.close()) fail();
}

void ImageWriter::fail() const {
    throw Failure(ExitStatus::kOther,
                  file_.string() + " cannot be written; check the permissions and the free disk space.");
}

std::shared_ptr<nifti_image> newGrid(const std::array<int, 3>& size, double edge) {
    const std::int64_t dims[8] = {3, size[0], size[1], size[2], 1, 1, 1, 1};
    std::shared_ptr<nifti_image> image(nifti_make_new_nim(dims, NIFTI_TYPE_FLOAT32, 0), nifti_image_free);
    if (!image) throw std::bad_alloc();
    image->dx = image->dy = image->dz = image->pixdim[1] = image->pixdim[2] = image->pixdim[3] = edge;
    image->xyz_units = NIFTI_UNITS_MM;
    image->qform_code = image->sform_code = NIFTI_XFORM_SCANNER_ANAT;
    image->qfac = 1.0;
    image->quatern_b = image->quatern_c = image->quatern_d = 0.0; // no rotation
    const std::array<double, 3> offset = {-edge * (size[0] - 1) / 2, -edge * (size[1] - 1) / 2,
                                          -edge * (size[2] - 1) / 2};
    image->qoffset_x = offset[0];
    image->qoffset_y = offset[1];
    image->qoffset_z = offset[2];
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 4; ++column) image->sto_xyz.m[row][column] = 0.0;
        image->sto_xyz.m[row][row] = edge;
        image->sto_xyz.m[row][3] = offset[row];
    }
    image->sto_xyz.m[3][0] = image->sto_xyz.m[3][1] = image->sto_xyz.m[3][2] = 0.0;
    image->sto_xyz.m[3][3] = 1.0;
    image->qto_xyz = image->sto_xyz;
    return image;
}

} // namespace zn::headless
