#include "recipe/formats/TextureFiles.h"

#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "files/TextureFile.h"
#include "host/picture/Picture.h"
#include "host/picture/PngFile.h"
#include "recipe/formats/FilePlaces.h"
#include "recipe/formats/JpegWriter.h"
#include "recipe/formats/OutputFile.h"
#include "recipe/language/ValueParser.h"
#include "recipe/tool/System.h"
#include "shell/transfer/LastTexture.h"

namespace recipe {

namespace fs = std::filesystem;

namespace {

constexpr int colorPlanes = 3;
constexpr unsigned char opaque = 255;

[[noreturn]] void ThrowUnreadable(const fs::path& file, const std::string& reason) {
    throw std::runtime_error(QuotedName(file) + " cannot be opened as a texture: " + reason);
}

std::string SizeText(int width, int height) {
    return std::to_string(width) + " by " + std::to_string(height) + " pixels";
}

void CheckTextureSize(const fs::path& file, int width, int height) {
    const auto fits = [](int side) { return side >= 1 && side <= maximalTextureSide; };
    if (!fits(width) || !fits(height)) {
        ThrowUnreadable(file, "it is " + SizeText(width, height) + ", and a texture has 1 to " +
                                  std::to_string(maximalTextureSide) + " on either side");
    }
}

/// One component over white, rounded to the nearest.
unsigned char OverWhite(unsigned char color, unsigned char opacity) {
    const int sum = color * opacity + 255 * (255 - opacity);
    return static_cast<unsigned char>((sum + 127) / 255);
}

void CopyRow(const host::Picture& picture, int y, PaintClass& texture) {
    const std::uint8_t* source = picture.Row(y);
    unsigned char* target = texture.PixelAddress(0, static_cast<short>(y));
    for (int x = 0; x < picture.width; ++x) {
        const unsigned char opacity = picture.planes == 4 ? source[3] : opaque;
        for (int c = 0; c < colorPlanes; ++c) {
            target[c] = OverWhite(source[c], opacity);
        }
        source += picture.planes;
        target += bytesPerPixel;
    }
}

std::unique_ptr<PaintClass> LoadPngTexture(const fs::path& file) {
    const host::Picture picture = host::LoadPicture(file);
    CheckTextureSize(file, picture.width, picture.height);
    auto texture =
        NewTexture(static_cast<short>(picture.width), static_cast<short>(picture.height));
    for (int y = 0; y < picture.height; ++y) {
        CopyRow(picture, y, *texture);
    }
    return texture;
}

/// Checks the sizes in the header before the file is read, so that each fault has its own message.
void CheckTmpFile(const fs::path& file, std::FILE* stream) {
    std::int16_t sides[2];
    if (std::fread(sides, sizeof sides, 1, stream) != 1) {
        ThrowUnreadable(file, "it is too short");
    }
    const auto [width, height] = sides;
    CheckTextureSize(file, width, height);
    std::error_code error;
    const std::uintmax_t length = fs::file_size(file, error);
    const auto pixels = static_cast<std::uintmax_t>(width * height);
    if (error || length < sizeof sides + pixels * bytesPerPixel) {
        ThrowUnreadable(file, "it is shorter than " + SizeText(width, height) + " need");
    }
    std::rewind(stream);
}

std::unique_ptr<PaintClass> LoadTmpTexture(const fs::path& file) {
    const FileHandle stream = OpenFile(file, "rb");
    if (!stream) {
        ThrowUnreadable(file, "it cannot be read");
    }
    CheckTmpFile(file, stream.get());
    auto texture = ReadTexture(stream.get());
    if (!texture) {
        throw std::bad_alloc();
    }
    return texture;
}

/// Throws with a message of its own for each fault that the header shows.
void CheckJpegFile(const fs::path& file, ImageFile& image) {
    ImageInfo info;
    const std::int16_t status = image.ReadImageInfo(&info);
    if (status == imageNotRead) {
        ThrowUnreadable(file, "it is no JPEG picture in grey or RGB");
    }
    if (status != 0) {
        ThrowUnreadable(file, "it cannot be read");
    }
    // Sides above 32767 come out negative.
    CheckTextureSize(file, static_cast<std::uint16_t>(info.Width()),
                     static_cast<std::uint16_t>(info.Height()));
}

std::unique_ptr<PaintClass> LoadJpegTexture(const fs::path& file) {
    const std::string name = CoreFileName(file);
    if (name.size() >= filePathCapacity) {
        ThrowUnreadable(file, "its name is too long");
    }
    ImageFile image;
    image.SetPath(name);
    image.type = jpegExtension;  // whatever the extension is
    CheckJpegFile(file, image);
    auto texture = ReadTextureImage(image);
    if (!texture) {
        ThrowUnreadable(file, "it is damaged, or there is not enough memory");
    }
    return texture;
}

/// Gives the white raster of the undo store the work channel that every white texture has.
void CompleteUndo(PaintClass& texture) {
    texture.SwapUndo();
    texture.SetAllAlpha(opaque);
    texture.SwapUndo();
}

/// Fills `rgb` to its end with the row's colours, repeated side by side.
void FillRepeatedRow(const PaintClass& texture, short y, std::vector<std::uint8_t>& rgb) {
    const unsigned char* source = texture.PixelAddress(0, y);
    const std::size_t period = static_cast<std::size_t>(texture.grX) * colorPlanes;
    for (std::size_t i = 0; i < period; i += colorPlanes) {
        for (std::size_t c = 0; c < colorPlanes; ++c) {
            rgb[i + c] = source[c];
        }
        source += bytesPerPixel;
    }
    for (std::size_t i = period; i < rgb.size(); ++i) {
        rgb[i] = rgb[i - period];
    }
}

/// Writes all rows of the repeated texture with a writer of its size.
template <typename Writer>
void WriteRepeated(const PaintClass& texture, int width, int height, Writer& writer,
                   const ProgressHook& progress) {
    std::vector<std::uint8_t> rgb(static_cast<std::size_t>(width) * colorPlanes);
    for (int y = 0; y < height; ++y) {
        FillRepeatedRow(texture, static_cast<short>(y % texture.grY), rgb);
        writer.WriteRow(rgb);
        if (progress) {
            progress(static_cast<double>(y + 1) / height);
        }
    }
    writer.Finish();
}

void SaveTmpTexture(const PaintClass& texture, const fs::path& file) {
    OutputFile output(file);
    if (!WriteTexture(output.Stream(), texture)) {
        output.Fail();
    }
    output.Commit();
}

}  // namespace

std::unique_ptr<PaintClass> NewTexture(short width, short height) {
    std::unique_ptr<PaintClass> texture = PaintClass::Make(width, height);
    if (!texture) {
        throw std::bad_alloc();
    }
    texture->SetAllAlpha(opaque);
    texture->SaveUndo();
    return texture;
}

std::unique_ptr<PaintClass> LoadTexture(const fs::path& file) {
    const std::string extension = LowerCaseExtension(host::Utf8Name(file));
    if (extension == ".png") {
        return LoadPngTexture(file);
    }
    auto texture = extension == ".tmp" ? LoadTmpTexture(file) : LoadJpegTexture(file);
    CompleteUndo(*texture);
    return texture;
}

void SaveTexture(const PaintClass& texture, const fs::path& file) {
    if (LowerCaseExtension(host::Utf8Name(file)) == ".tmp") {
        SaveTmpTexture(texture, file);
    } else {
        SaveRepeated(texture, 1, 1, file, nullptr);
    }
}

void SaveRepeated(const PaintClass& texture, int columns, int rows, const fs::path& file,
                  const ProgressHook& progress) {
    const int width = texture.grX * columns;
    const int height = texture.grY * rows;
    OutputFile output(file);
    if (LowerCaseExtension(host::Utf8Name(file)) == ".png") {
        host::PngWriter png({.width = static_cast<std::uint32_t>(width),
                             .height = static_cast<std::uint32_t>(height)},
                            nullptr, [&](std::span<const std::uint8_t> bytes) {
                                output.Write(bytes.data(), bytes.size());
                            });
        WriteRepeated(texture, width, height, png, progress);
    } else {
        JpegWriter jpeg(output, width, height);
        WriteRepeated(texture, width, height, jpeg, progress);
    }
    output.Commit();
}

}  // namespace recipe
