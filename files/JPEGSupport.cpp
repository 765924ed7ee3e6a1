#include "files/JPEGSupport.h"

#include <memory>
#include <utility>

#include "base/HostServices.h"
#include "base/Platform.h"
#include "base/Progress.h"
#include "base/TryMake.h"
#include "files/JPEGDecoder.h"
#include "files/JPEGEncoder.h"
#include "files/JPEGQuality.h"
#include "hostapi/Results.h"
#include "hostapi/Suites.h"

namespace {

constexpr char sourceName[] = "JPEGSupport";

ImageInfo layout;

/// Closes the file at the end of a block, unless Close() or Keep() came before.
class FileCloser {
  public:
    explicit FileCloser(File& closedFile) : file(&closedFile) {}
    FileCloser(const FileCloser&) = delete;
    FileCloser& operator=(const FileCloser&) = delete;
    ~FileCloser() {
        if (file != nullptr) {
            file->Close();
        }
    }

    void Keep() { file = nullptr; }
    std::int16_t Close() { return std::exchange(file, nullptr)->Close(); }

  private:
    File* file;
};

/// Runs `work`, which returns a status. An id that the library throws in it becomes one, too;
/// faults of the program pass through.
template <typename Work>
std::int16_t StatusOf(Work work) {
    try {
        return work();
    } catch (const std::int16_t id) {
        if (id != imageNotRead && id != imageNotWritten) {
            throw;
        }
        return id;
    }
}

void Require(bool holds, int line) {
    if (!holds) {
        FatalError(faultBadArgument, sourceName, line);
    }
}

std::int16_t UnitOf(const jpeg_decompress_struct& header) {
    const bool known = header.saw_JFIF_marker && (header.density_unit == dotsPerInch ||
                                                  header.density_unit == dotsPerCentimetre);
    return known ? header.density_unit : std::int16_t{resolutionNone};
}

std::int16_t Describe(const jpeg_decompress_struct& header, ImageInfo& info) {
    const int components = header.num_components;
    if (components != 1 && components != 3) {
        return imageNotRead;
    }
    info = {};
    info.mode = components == 1 ? hostapi::imageModeGrey : hostapi::imageModeRGB;
    info.planes = static_cast<std::int16_t>(components);
    info.colBytes = components;
    info.rowBytes = components * static_cast<std::int32_t>(header.image_width);
    info.bottom = static_cast<std::int16_t>(header.image_height);
    info.right = static_cast<std::int16_t>(header.image_width);
    info.resolutionUnit = UnitOf(header);
    info.xResolution = header.X_density;
    info.yResolution = header.Y_density;
    return 0;
}

std::int16_t ReadInfo(File& file, ImageInfo& info) {
    const JPEGDecoder decoder(file);
    const std::int16_t status = Describe(decoder.Header(), info);
    if (status == 0) {
        layout = info;
    }
    return status;
}

hostapi::ImageMode ModeOfComponents(int components) {
    switch (components) {
        case 1:
            return hostapi::imageModeGrey;
        case 3:
            return hostapi::imageModeRGB;
        default:
            Require(components == 4, __LINE__);
            return hostapi::imageModeCMYK;
    }
}

/// Gives each pixel of a packed row its place in the layout, in the same memory.
void SpreadRow(std::uint8_t* row, int width) {
    const int planes = layout.planes;
    const int gap = layout.colBytes - planes;
    if (gap == 0) {
        return;
    }
    // From the end, where the pixels move away from those that are still to move.
    const std::uint8_t* source = row + width * planes;
    std::uint8_t* target = row + width * layout.colBytes;
    for (int x = 0; x < width; ++x) {
        for (int i = 0; i < gap; ++i) {
            *--target = 255;
        }
        for (int i = 0; i < planes; ++i) {
            *--target = *--source;
        }
    }
}

/// The layout of rasters, if the library can give that at once: it writes its rows past the cache,
/// and to spread them would be to wait for each of them, a fifth of the time of loading a file.
bool AsksForLayout(JPEGDecoder& decoder, hostapi::ImageMode sourceMode) {
    return sourceMode == hostapi::imageModeRGB && layout.mode == hostapi::imageModeRGB &&
           layout.colBytes == 4 && decoder.AskForOpaqueColors();
}

/// All rows of a picture that come in the layout.
std::int16_t ReadFinishedRows(JPEGDecoder& decoder, std::uint8_t* target) {
    while (decoder.HasRow()) {
        decoder.ReadRow(target);
        target += layout.rowBytes;
        BusyTick();
    }
    decoder.Finish();
    return 0;
}

/// All rows of a picture, packed as they come, to the layout.
std::int16_t ReadRows(JPEGDecoder& decoder, hostapi::ImageMode sourceMode, std::uint8_t* target) {
    const int width = layout.Width();
    const auto targetMode = static_cast<hostapi::ImageMode>(layout.mode);
    const int sourcePlanes = PlanesOfMode(sourceMode);
    std::unique_ptr<std::uint8_t[]> rowBuffer;
    if (sourcePlanes != PlanesOfMode(targetMode)) {
        rowBuffer = TryMakeArray<std::uint8_t>(static_cast<std::size_t>(width) *
                                               static_cast<std::size_t>(sourcePlanes));
        if (!rowBuffer) {
            return hostapi::memFullErr;
        }
    }
    while (decoder.HasRow()) {
        std::uint8_t* const row = rowBuffer ? rowBuffer.get() : target;
        decoder.ReadRow(row);
        const std::int16_t status = ConvertColors(sourceMode, targetMode, width, row, target);
        if (status != 0) {
            return status;
        }
        SpreadRow(target, width);
        target += layout.rowBytes;
        BusyTick();
    }
    decoder.Finish();
    return 0;
}

std::int16_t ReadPicture(File& file, std::uint8_t* target) {
    JPEGDecoder decoder(file);
    const jpeg_decompress_struct& header = decoder.Header();
    hostapi::ImageMode sourceMode = ModeOfComponents(header.num_components);
    // The file may be another one by now than the one whose size the memory was made for.
    if (static_cast<std::int64_t>(header.image_width) != layout.Width() ||
        static_cast<std::int64_t>(header.image_height) != layout.Height()) {
        return imageNotRead;
    }
    if (layout.mode == hostapi::imageModeGrey || layout.planes == 1) {
        decoder.AskForGrey();
        sourceMode = hostapi::imageModeGrey;
    }
    if (AsksForLayout(decoder, sourceMode)) {
        decoder.Start();
        return ReadFinishedRows(decoder, target);
    }
    decoder.Start();
    return ReadRows(decoder, sourceMode, target);
}

bool HasUnit(const ImageInfo& info) {
    return info.resolutionUnit == dotsPerInch || info.resolutionUnit == dotsPerCentimetre;
}

JPEGImage ImageOfLayout() {
    const bool isGrey = layout.mode == hostapi::imageModeGrey || layout.planes == 1;
    Require(isGrey || (layout.mode == hostapi::imageModeRGB && layout.planes == 3), __LINE__);
    Require(!HasUnit(layout) || (layout.xResolution != 0 && layout.yResolution != 0), __LINE__);
    return {layout.Width(),        layout.Height(),    isGrey ? 1 : 3,
            layout.resolutionUnit, layout.xResolution, layout.yResolution};
}

/// 0, or why there is none.
std::int16_t ChooseQuality(File& file, JPEGEncoder& encoder) {
    const std::int16_t wanted =
        file.callback != nullptr ? file.callback(file, qualityWanted, 0) : std::int16_t{0};
    if (wanted > 0) {
        encoder.SetQuality(wanted);
        return 0;
    }
    JPEGQualityChoice choice(file, [&](std::int16_t quality) { encoder.SetQuality(quality); });
    return platformServices.runQualityDialog(choice);
}

void WriteRows(JPEGEncoder& encoder, ByteSink& sink, const std::uint8_t* row) {
    encoder.Start(sink);
    for (int y = 0; y < layout.Height(); ++y) {
        encoder.WriteRow(row);
        row += layout.rowBytes;
        BusyTick();
    }
    encoder.Finish();
}

std::int16_t WritePicture(File& file, const std::uint8_t* base) {
    JPEGEncoder encoder(ImageOfLayout());
    std::int16_t status = ChooseQuality(file, encoder);
    if (status == 0) {
        status = file.Create();
    }
    if (status != 0) {
        return status;
    }
    FileCloser closer(file);
    Require(layout.planes == layout.colBytes, __LINE__);
    file.position = 0;
    FileSink sink(file);
    WriteRows(encoder, sink, base);
    return closer.Close();
}

}  // namespace

std::int16_t ReadJPEGInfo(File& file, ImageInfo& info) {
    const bool wasOpen = file.handle != nullptr;
    const std::int16_t opened = wasOpen ? std::int16_t{0} : file.Open("r");
    if (opened != 0) {
        return opened;
    }
    FileCloser closer(file);
    return StatusOf([&] {
        const std::int16_t status = ReadInfo(file, info);
        if (wasOpen) {
            closer.Keep();
        }
        return status;
    });
}

void SetJPEGLayout(const ImageInfo& info) {
    layout = info;
}

std::int16_t ReadJPEGPixels(File& file, void* base) {
    const std::int16_t opened = file.Open("r");
    if (opened != 0) {
        return opened;
    }
    const FileCloser closer(file);
    return StatusOf([&] { return ReadPicture(file, static_cast<std::uint8_t*>(base)); });
}

std::int16_t WriteJPEG(File& file, const void* base) {
    return StatusOf([&] { return WritePicture(file, static_cast<const std::uint8_t*>(base)); });
}
