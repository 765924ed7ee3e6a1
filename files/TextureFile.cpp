#include "files/TextureFile.h"

#include <utility>

#include "base/TryMake.h"
#include "hostapi/Results.h"
#include "hostapi/Suites.h"
#include "resources/Strings.h"

namespace {

constexpr std::int16_t colorPlanes = 3;
constexpr std::int16_t standardDialog = -1;
constexpr std::uint32_t qualityTag = hostapi::FourCharacters('M', 'I', 'B', '8');

std::int16_t AnswerBestQuality(File&, std::int16_t, std::int16_t) {
    return textureQuality;
}

ImageInfo LayoutOfSides(short width, short height) {
    ImageInfo info;
    info.mode = hostapi::imageModeRGB;
    info.planes = colorPlanes;
    info.bottom = height;
    info.right = width;
    return info;
}

/// Red, green and blue of all pixels, one after the other. Null without memory.
std::unique_ptr<unsigned char[]> PackedColors(const PaintClass& picture) {
    const auto pixels =
        static_cast<std::size_t>(picture.grX) * static_cast<std::size_t>(picture.grY);
    std::unique_ptr<unsigned char[]> colors = TryMakeArray<unsigned char>(pixels * colorPlanes);
    if (!colors) {
        return nullptr;
    }
    const unsigned char* source = picture.Base();
    unsigned char* target = colors.get();
    for (std::size_t i = 0; i < pixels; ++i) {
        target[0] = source[0];
        target[1] = source[1];
        target[2] = source[2];
        source += bytesPerPixel;
        target += colorPlanes;
    }
    return colors;
}

/// Returns the status: that of full memory if it fails before the file is touched.
std::int16_t WriteTextureImage(const PaintClass& picture, ImageFile& file) {
    const std::unique_ptr<unsigned char[]> colors = PackedColors(picture);
    picture.Unlock();
    if (!colors) {
        return hostapi::memFullErr;
    }
    ImageInfo layout = LayoutOfSides(picture.grX, picture.grY);
    layout.colBytes = colorPlanes;
    layout.rowBytes = picture.grX * colorPlanes;
    const std::int16_t status = file.SetImageLayout(&layout);
    if (status != 0) {
        return status;
    }
    file.callback = AnswerBestQuality;
    file.tag = qualityTag;
    return file.WriteImagePixels(colors.get());
}

}  // namespace

std::unique_ptr<PaintClass> ReadTextureImage(ImageFile& file) {
    ImageInfo info;
    if (file.ReadImageInfo(&info) != 0 || info.Width() > maximalTextureSide ||
        info.Height() > maximalTextureSide) {
        return nullptr;
    }
    std::unique_ptr<PaintClass> picture = PaintClass::Make(info.Width(), info.Height());
    if (!picture) {
        return nullptr;
    }
    ImageInfo layout = LayoutOfSides(info.Width(), info.Height());
    layout.colBytes = bytesPerPixel;
    layout.rowBytes = picture->RowBytes();
    if (file.SetImageLayout(&layout) != 0 || file.ReadImagePixels(picture->Base()) != 0) {
        return nullptr;
    }
    picture->Unlock();
    return picture;
}

bool OpenTextureFile(std::unique_ptr<PaintClass>& picture, TextureFileOwner& dialog) {
    ImageFile file;
    const std::int16_t status = file.ChooseImageToOpen(dialog, nullptr, standardDialog);
    if (status == fileCancelled) {
        return true;
    }
    return status == 0 && LoadTexture(picture, dialog, file);
}

bool LoadTexture(std::unique_ptr<PaintClass>& picture, TextureFileOwner& dialog, ImageFile& file) {
    std::unique_ptr<PaintClass> loaded = ReadTextureImage(file);
    if (!loaded) {
        return false;
    }
    // Before anything changes: there may be no memory for it.
    std::string name = file.GetFileName();
    picture = std::move(loaded);
    dialog.textureName = std::move(name);
    return true;
}

bool SaveTexture(const PaintClass* picture, TextureFileOwner& dialog) {
    if (picture == nullptr) {
        return false;
    }
    constexpr FileType types[] = {jpegExtension, noFileType};
    ImageFile file;
    file.SetFileName(dialog.textureName.empty() ? StringText(stringUntitled) : dialog.textureName);
    const std::int16_t status = file.ChooseImageToSave(dialog, types, standardDialog);
    if (status == fileCancelled) {
        return true;
    }
    if (status != 0 || WriteTextureImage(*picture, file) != 0) {
        return false;
    }
    dialog.textureName = file.GetFileName();
    return true;
}
