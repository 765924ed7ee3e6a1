#include "files/JPEGEncoder.h"

JPEGEncoder::JPEGEncoder(const JPEGImage& image) : errors(imageNotWritten) {
    info.err = &errors;
    jpeg_CreateCompress(&info, JPEG_LIB_VERSION, sizeof(jpeg_compress_struct));
    // Overrides a limit that the library would take from the environment.
    info.mem->max_memory_to_use = 0;
    Describe(image);
}

void JPEGEncoder::Describe(const JPEGImage& image) {
    info.image_width = static_cast<JDIMENSION>(image.width);
    info.image_height = static_cast<JDIMENSION>(image.height);
    info.input_components = image.components;
    info.in_color_space = image.components == 1 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&info);
    const bool hasUnit =
        image.resolutionUnit == dotsPerInch || image.resolutionUnit == dotsPerCentimetre;
    info.write_JFIF_header = hasUnit ? TRUE : FALSE;
    info.density_unit = 0;
    if (hasUnit) {
        info.density_unit = static_cast<UINT8>(image.resolutionUnit);
        info.X_density = image.xResolution;
        info.Y_density = image.yResolution;
    }
}

void JPEGEncoder::SetQuality(int quality) {
    jpeg_set_quality(&info, quality, TRUE);
}

void JPEGEncoder::Start(ByteSink& sink) {
    info.dest = &destination.emplace(sink);
    jpeg_start_compress(&info, TRUE);
}

void JPEGEncoder::WriteRow(const std::uint8_t* row) {
    // The library's interface has no const, but it only reads.
    JSAMPROW sameRow = const_cast<JSAMPROW>(row);
    jpeg_write_scanlines(&info, &sameRow, 1);
}

void JPEGEncoder::Finish() {
    jpeg_finish_compress(&info);
}
