#include "plain/PlainJpeg.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
// After <cstdio>, whose types it uses.
#include <jpeglib.h>

namespace {

struct ErrorManager : jpeg_error_mgr {
    ErrorManager() : jpeg_error_mgr{} {
        jpeg_std_error(this);
        error_exit = [](j_common_ptr) { throw std::runtime_error("the library gives up"); };
        output_message = [](j_common_ptr) {};
    }
};

struct Decompressor : jpeg_decompress_struct {
    Decompressor() : jpeg_decompress_struct{} {}
    Decompressor(const Decompressor&) = delete;
    Decompressor& operator=(const Decompressor&) = delete;
    ~Decompressor() { jpeg_destroy_decompress(this); }
};

struct Compressor : jpeg_compress_struct {
    Compressor() : jpeg_compress_struct{} {}
    Compressor(const Compressor&) = delete;
    Compressor& operator=(const Compressor&) = delete;
    ~Compressor() {
        jpeg_destroy_compress(this);
        std::free(stream);
    }

    unsigned char* stream = nullptr;
    unsigned long length = 0;
};

PlainPicture Decode(const std::string& jpeg, unsigned maximalSide) {
    ErrorManager errors;
    Decompressor info;
    info.err = &errors;
    jpeg_CreateDecompress(&info, JPEG_LIB_VERSION, sizeof(jpeg_decompress_struct));
    jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(jpeg.data()),
                 static_cast<unsigned long>(jpeg.size()));
    jpeg_read_header(&info, TRUE);
    if (info.image_width > maximalSide || info.image_height > maximalSide) {
        throw std::runtime_error("too large");
    }
    jpeg_start_decompress(&info);
    PlainPicture picture{static_cast<int>(info.output_width),
                         static_cast<int>(info.output_height),
                         info.output_components,
                         {}};
    const std::size_t rowBytes = info.output_width * static_cast<unsigned>(picture.components);
    picture.bytes.resize(rowBytes * info.output_height);
    while (info.output_scanline < info.output_height) {
        auto* row = reinterpret_cast<JSAMPROW>(&picture.bytes[info.output_scanline * rowBytes]);
        jpeg_read_scanlines(&info, &row, 1);
    }
    jpeg_finish_decompress(&info);
    return picture;
}

J_COLOR_SPACE ColorSpaceOf(int components) {
    return components == 1 ? JCS_GRAYSCALE : components == 3 ? JCS_RGB : JCS_UNKNOWN;
}

}  // namespace

std::optional<PlainPicture> DecodeJpegPlainly(const std::string& jpeg, int maximalSide) {
    try {
        return Decode(jpeg, static_cast<unsigned>(maximalSide));
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

std::string EncodeJpegPlainly(const PlainPicture& picture, int quality) {
    ErrorManager errors;
    Compressor info;
    info.err = &errors;
    jpeg_CreateCompress(&info, JPEG_LIB_VERSION, sizeof(jpeg_compress_struct));
    jpeg_mem_dest(&info, &info.stream, &info.length);
    info.image_width = static_cast<JDIMENSION>(picture.width);
    info.image_height = static_cast<JDIMENSION>(picture.height);
    info.input_components = picture.components;
    info.in_color_space = ColorSpaceOf(picture.components);
    jpeg_set_defaults(&info);
    info.write_JFIF_header = FALSE;
    jpeg_set_quality(&info, quality, TRUE);
    jpeg_start_compress(&info, TRUE);
    std::string pixels = picture.bytes;
    const auto rowBytes = static_cast<std::size_t>(picture.width * picture.components);
    while (info.next_scanline < info.image_height) {
        auto* row = reinterpret_cast<JSAMPROW>(&pixels[info.next_scanline * rowBytes]);
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    return std::string(reinterpret_cast<const char*>(info.stream), info.length);
}
