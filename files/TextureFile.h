// Textures in image files, as the editor opens and saves them.
#pragma once

#include <memory>
#include <string>

#include "files/ImageFile.h"
#include "paint/PaintClass.h"

/// The editor, as far as these operations need it.
class TextureFileOwner : public FileDialogOwner {
  public:
    /// The name of its texture: that of the file, with the extension.
    std::string textureName;

  protected:
    ~TextureFileOwner() = default;
};

/// Lets the user choose a file and loads it into `picture`. True also if the user cancelled. After
/// a failure picture and name are as they were.
bool OpenTextureFile(std::unique_ptr<PaintClass>& picture, TextureFileOwner& dialog);
/// Loads the file, which has a name, into `picture`, and takes over its name. False, with picture
/// and name as they were, for a picture of more than maximalTextureSide on a side, one that cannot
/// be read, and without memory.
bool LoadTexture(std::unique_ptr<PaintClass>& picture, TextureFileOwner& dialog, ImageFile& file);
/// Lets the user choose where to save the picture at the best quality, under its name at first, and
/// takes over the name that it got. True also if the user cancelled. A null picture is false. A
/// file that could not be written whole stays on the disk.
bool SaveTexture(const PaintClass* picture, TextureFileOwner& dialog);

/// The file's picture; null in the cases in which LoadTexture fails. Alpha bytes are 255, and the
/// undo buffer holds a white raster.
std::unique_ptr<PaintClass> ReadTextureImage(ImageFile& file);

/// The JPEG quality of saved textures: hardly any loss.
constexpr std::int16_t textureQuality = 100;
