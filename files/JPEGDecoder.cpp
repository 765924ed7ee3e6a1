#include "files/JPEGDecoder.h"

#include <jerror.h>

#include "files/ImageInfo.h"

namespace {

/// The picture begins at most this many bytes into the file; the second is how many are compared to
/// recognise it.
constexpr std::int32_t searchedOffsets = 16384;
constexpr std::int32_t probeSize = 10;

/// A picture that comes in more passes than this is made to keep its reader busy: a few bytes each
/// would cost a pass over all of it.
constexpr int maximalPasses = 1000;

bool BeginsImage(const std::uint8_t* bytes) {
    return bytes[0] == 0xFF && bytes[1] == 0xD8 && bytes[2] == 0xFF;
}

bool BeginsJFIFImage(const std::uint8_t* bytes) {
    return BeginsImage(bytes) && bytes[3] == 0xE0 && bytes[6] == 'J' && bytes[7] == 'F' &&
           bytes[8] == 'I' && bytes[9] == 'F';
}

/// Sets the file's position to where the picture begins. A file may carry anything in front of it,
/// as one from another system does; then only the JFIF mark tells a picture from chance. Where
/// nothing is found the position stays after the part that was searched, for the decoder to fail
/// there.
void FindImage(File& file) {
    // Zeroes after the file's end match nothing.
    std::uint8_t bytes[searchedOffsets + probeSize - 1] = {};
    file.Read(bytes, 0, sizeof bytes);
    if (BeginsImage(bytes)) {
        file.position = 0;
        return;
    }
    for (std::int32_t offset = 1; offset < searchedOffsets; ++offset) {
        if (BeginsJFIFImage(bytes + offset)) {
            file.position = offset;
            return;
        }
    }
}

void CheckPasses(j_common_ptr common) {
    const auto* info = reinterpret_cast<const jpeg_decompress_struct*>(common);
    if (info->input_scan_number > maximalPasses) {
        common->err->msg_code = JERR_CANT_SUSPEND;
        common->err->error_exit(common);
    }
}

}  // namespace

JPEGDecoder::JPEGDecoder(File& file) : errors(imageNotRead), source(file) {
    FindImage(file);
    info.err = &errors;
    jpeg_CreateDecompress(&info, JPEG_LIB_VERSION, sizeof(jpeg_decompress_struct));
    // Overrides a limit that the library would take from the environment.
    info.mem->max_memory_to_use = 0;
    info.src = &source;
    progress.progress_monitor = CheckPasses;
    info.progress = &progress;
    jpeg_read_header(&info, TRUE);
}

void JPEGDecoder::AskForGrey() {
    info.out_color_space = JCS_GRAYSCALE;
}

bool JPEGDecoder::AskForOpaqueColors() {
#ifdef JCS_ALPHA_EXTENSIONS
    if (info.num_components == 3) {
        info.out_color_space = JCS_EXT_RGBA;
        return true;
    }
#endif
    return false;
}

void JPEGDecoder::Start() {
    jpeg_start_decompress(&info);
}

void JPEGDecoder::ReadRow(std::uint8_t* row) {
    jpeg_read_scanlines(&info, &row, 1);
}

void JPEGDecoder::Finish() {
    jpeg_finish_decompress(&info);
}
