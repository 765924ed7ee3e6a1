#include "host/picture/Picture.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <new>
#include <system_error>

#include "host/picture/PictureFormats.h"

namespace host {

namespace {

namespace fs = std::filesystem;

void RequireSides(int width, int height, const std::string& name) {
    if (width < 1 || height < 1 || width > maximumPictureSide || height > maximumPictureSide) {
        throw PictureError(name + ": " + std::to_string(width) + " by " + std::to_string(height) +
                           " pixels; each side must have 1 to " +
                           std::to_string(maximumPictureSide));
    }
}

std::vector<std::uint8_t> ReadFile(const fs::path& file) {
    std::error_code ignored;
    if (fs::is_directory(file, ignored)) {
        throw PictureError(Utf8Name(file) + ": is a folder");
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw PictureError(Utf8Name(file) + ": cannot be opened");
    }
    std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(stream), {}};
    if (stream.bad()) {
        throw PictureError(Utf8Name(file) + ": cannot be read");
    }
    return bytes;
}

void WriteFile(const fs::path& file, const std::vector<std::uint8_t>& bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(bytes.data()),
                 static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) {
        throw PictureError(Utf8Name(file) + ": cannot be written");
    }
}

// A name beside the target that no file has.
fs::path PartialName(const fs::path& file) {
    fs::path partial;
    std::error_code ignored;
    int number = 0;
    do {
        partial = file;
        partial += ".partial" + std::to_string(number++);
    } while (fs::exists(partial, ignored));
    return partial;
}

}  // namespace

Picture MakePicture(int width, int height, int planes, std::uint8_t value) {
    RequireSides(width, height, "picture");
    if (planes != 3 && planes != 4) {
        throw PictureError("picture: " + std::to_string(planes) + " planes instead of 3 or 4");
    }
    Picture picture;
    picture.width = width;
    picture.height = height;
    picture.planes = planes;
    const std::size_t size = picture.RowBytes() * static_cast<std::size_t>(height);
    if (size > picture.pixels.max_size()) {
        throw std::bad_alloc();
    }
    picture.pixels.assign(size, value);
    return picture;
}

Picture DecodePicture(const std::vector<std::uint8_t>& bytes, const std::string& name) {
    try {
        const PictureHeader header = ReadPictureHeader(bytes, name);
        RequireSides(header.width, header.height, name);
        Picture picture = DecodePixels(bytes, header, name);
        const Resolution resolution = ReadResolution(bytes);
        picture.horizontalResolution = resolution.horizontal;
        picture.verticalResolution = resolution.vertical;
        return picture;
    } catch (const std::bad_alloc&) {
        throw PictureError(name + ": too large for the memory");
    }
}

Picture LoadPicture(const fs::path& file) {
    try {
        return DecodePicture(ReadFile(file), Utf8Name(file));
    } catch (const std::bad_alloc&) {
        throw PictureError(Utf8Name(file) + ": too large for the memory");
    }
}

void SavePicture(const Picture& picture, const fs::path& file) {
    const std::vector<std::uint8_t> bytes = EncodePng(picture);
    const fs::path partial = PartialName(file);
    try {
        WriteFile(partial, bytes);
        std::error_code error;
        fs::rename(partial, file, error);
        if (error) {
            throw PictureError(Utf8Name(file) + ": cannot be written");
        }
    } catch (const PictureError&) {
        std::error_code ignored;
        fs::remove(partial, ignored);
        throw PictureError(Utf8Name(file) + ": cannot be written");
    }
}

fs::path PathFromUtf8(const std::string& name) {
    return fs::path(std::u8string(name.begin(), name.end()));
}

std::string Utf8Name(const fs::path& path) {
    const std::u8string name = path.u8string();
    return std::string(name.begin(), name.end());
}

}  // namespace host
