#include "raster/PicStorage.h"

#include <cstring>

#include "base/FatalError.h"
#include "base/Progress.h"
#include "base/TryMake.h"
#include "hostapi/Results.h"
#include "raster/PicClass.h"

namespace {

constexpr std::size_t pixelBytes = sizeof(Pixel);

/// Exchanges `size` bytes at `offset` in the file with those at `pixels`, through `saved`, which
/// has room for them. Bytes that the disk fails to read or write stay unchanged on both sides, and
/// each exchange seeks its place, so that one failure does not shift the rest.
void ExchangeWithFile(std::FILE* file, std::size_t offset, unsigned char* pixels,
                      unsigned char* saved, std::size_t size) {
    const auto place = static_cast<long>(offset);
    // A full disk may show only when the stream's buffer is written, hence the flush.
    if (std::fseek(file, place, SEEK_SET) == 0 && std::fread(saved, 1, size, file) == size &&
        std::fseek(file, place, SEEK_SET) == 0 && std::fwrite(pixels, 1, size, file) == size &&
        std::fflush(file) == 0) {
        std::memcpy(pixels, saved, size);
    }
}

}  // namespace

FilePointer (*PicStorage::openFile)() = OpenAnonymousFile;

PicStorage::PicStorage(PicClass* pic) : grX(pic->grX), grY(pic->grY) {
    const std::int32_t size = grY * pic->RowBytes();
    if (storage.Allocate(size) == hostapi::noErr) {
        memory = static_cast<unsigned char*>(storage.Lock(false));
    }
    if (memory == nullptr) {
        ReserveFile();
    }
    Store(pic);
}

PicStorage::~PicStorage() = default;

std::size_t PicStorage::PixelCount() const {
    return static_cast<std::size_t>(grX) * static_cast<std::size_t>(grY);
}

/// Takes the disk space at once, so that a later Store does not find the disk full.
void PicStorage::ReserveFile() {
    file = openFile();
    if (!file) {
        return;
    }
    const Pixel blank = 0;
    for (std::size_t i = 0; i < PixelCount(); ++i) {
        if (std::fwrite(&blank, pixelBytes, 1, file.get()) != 1) {
            file.reset();
            return;
        }
    }
    if (std::fflush(file.get()) != 0) {
        file.reset();
        return;
    }
    inFile = true;
}

bool PicStorage::Store(PicClass* pic) {
    Assert(grX == pic->grX && grY == pic->grY,
           "PicClass.Win / Zeile 450 !((grX == pic->grX) && (grY == pic->grY))");
    if (inFile) {
        return std::fseek(file.get(), 0, SEEK_SET) == 0 &&
               std::fwrite(pic->Base(), pixelBytes, PixelCount(), file.get()) == PixelCount() &&
               std::fflush(file.get()) == 0;
    }
    if (memory == nullptr) {
        return false;
    }
    std::memcpy(memory, pic->Base(), PixelCount() * pixelBytes);
    return true;
}

void PicStorage::Restore(PicClass* pic) {
    Assert(grX == pic->grX && grY == pic->grY,
           "PicClass.Win / Zeile 546 !((grX == pic->grX) && (grY == pic->grY))");
    if (inFile) {
        if (std::fseek(file.get(), 0, SEEK_SET) == 0 &&
            std::fread(pic->Base(), pixelBytes, PixelCount(), file.get()) != PixelCount()) {
            // Pixels that cannot be read back stay as they are in the picture.
            std::clearerr(file.get());
        }
    } else if (memory != nullptr) {
        std::memcpy(pic->Base(), memory, PixelCount() * pixelBytes);
    }
}

void PicStorage::Swap(PicClass* pic) {
    Assert(grX == pic->grX && grY == pic->grY,
           "PicClass.Win / Zeile 483 !((grX == pic->grX) && (grY == pic->grY))");
    if (inFile) {
        SwapWithFile(pic);
    } else if (memory != nullptr) {
        SwapWithMemory(pic);
    }
}

void PicStorage::SwapWithMemory(PicClass* pic) {
    unsigned char* saved = memory;
    for (short y = 0; y < grY; ++y) {
        for (short x = 0; x < grX; ++x, saved += pixelBytes) {
            Pixel earlier;
            std::memcpy(&earlier, saved, pixelBytes);
            const Pixel present = pic->GetPixel(x, y);
            pic->SetPixel(x, y, earlier);
            std::memcpy(saved, &present, pixelBytes);
        }
    }
}

void PicStorage::SwapWithFile(PicClass* pic) {
    const auto rowBytes = static_cast<std::size_t>(pic->RowBytes());
    std::size_t offset = 0;
    CursorClass cursor;
    const std::unique_ptr<unsigned char[]> row = TryMakeArray<unsigned char>(rowBytes);
    if (row) {
        for (short y = 0; y < grY; ++y, offset += rowBytes) {
            cursor.Tick();
            ExchangeWithFile(file.get(), offset, pic->PixelAddress(0, y), row.get(), rowBytes);
        }
        return;
    }
    unsigned char pixel[pixelBytes];
    for (short y = 0; y < grY; ++y) {
        for (short x = 0; x < grX; ++x, offset += pixelBytes) {
            cursor.Tick();
            ExchangeWithFile(file.get(), offset, pic->PixelAddress(x, y), pixel, pixelBytes);
        }
    }
}
