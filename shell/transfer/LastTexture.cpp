#include "shell/transfer/LastTexture.h"

#include <cstring>

#include "base/FatalError.h"
#include "base/Platform.h"
#include "raster/PicStorage.h"

namespace {

constexpr int pathCapacity = 1024;
constexpr char fileName[] = "Zandermolite.tmp";

/// Room for the longest folder, a separator and the name.
using PathBuffer = char[pathCapacity + 1 + sizeof fileName];

bool LastTexturePath(PathBuffer& path) {
    const int length = platformServices.temporaryPath(path, pathCapacity);
    if (length < 1 || length >= pathCapacity) {
        return false;
    }
    // The folder usually ends in a separator already, which makes two; systems take that as one.
    path[length] = platformServices.pathSeparator;
    std::memcpy(path + length + 1, fileName, sizeof fileName);
    return true;
}

FilePointer OpenLastTexture(const char* mode) {
    PathBuffer path;
    return FilePointer(LastTexturePath(path) ? std::fopen(path, mode) : nullptr);
}

}  // namespace

bool WriteTexture(std::FILE* file, const PicClass& pic) {
    const auto rows = static_cast<std::size_t>(pic.grY);
    return std::fwrite(&pic.grX, sizeof pic.grX, 1, file) == 1 &&
           std::fwrite(&pic.grY, sizeof pic.grY, 1, file) == 1 &&
           std::fwrite(pic.Base(), static_cast<std::size_t>(pic.RowBytes()), rows, file) == rows;
}

std::unique_ptr<PaintClass> ReadTexture(std::FILE* file) {
    short width = 0;
    short height = 0;
    if (std::fread(&width, sizeof width, 1, file) != 1 ||
        std::fread(&height, sizeof height, 1, file) != 1) {
        return nullptr;
    }
    std::unique_ptr<PaintClass> pic = PaintClass::Make(width, height);
    if (!pic) {
        return nullptr;
    }
    const auto rows = static_cast<std::size_t>(height);
    if (std::fread(pic->Base(), static_cast<std::size_t>(pic->RowBytes()), rows, file) != rows) {
        return nullptr;
    }
    return pic;
}

bool SaveLastTexture(const PicClass* pic) {
    Assert(pic != nullptr, "Zandermolite / Zeile 175 !(pic != NULL)");
    const FilePointer file = OpenLastTexture("wb");
    return file && WriteTexture(file.get(), *pic);
}

std::unique_ptr<PaintClass> LoadLastTexture() {
    const FilePointer file = OpenLastTexture("rb");
    return file ? ReadTexture(file.get()) : nullptr;
}
