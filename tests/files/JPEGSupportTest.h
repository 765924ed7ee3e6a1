// A JPEG that is read or written, with a quality dialog that ends at once.
#pragma once

#include <string>
#include <vector>

#include "files/JPEGQuality.h"
#include "files/JPEGSupport.h"
#include "plain/PlainJpeg.h"
#include "tests/files/ImageTest.h"

/// The quality dialog, as tests see it.
struct SeenQuality {
    std::vector<int> operations;
    std::int16_t wanted;
    int dialogs;
    std::int16_t dialogResult;
    std::int16_t dialogQuality;
};
inline SeenQuality quality;

inline std::int16_t AnswerQuality(File&, std::int16_t operation, std::int16_t value) {
    quality.operations.push_back(operation);
    return operation == qualityWanted ? quality.wanted : value;
}

inline std::int16_t RunQualityDialog(JPEGQualityChoice& choice) {
    ++quality.dialogs;
    if (quality.dialogQuality != 0) {
        choice.Change(quality.dialogQuality);
    }
    return quality.dialogResult;
}

class JPEGSupportTest : public ImageTest {
  protected:
    JPEGSupportTest() {
        quality = {};
        platformServices.runQualityDialog = RunQualityDialog;
    }

    static ImageInfo LayoutFor(std::int16_t mode, int width, int height, std::int32_t colBytes) {
        ImageInfo layout;
        layout.mode = mode;
        layout.planes = PlanesOfMode(mode);
        layout.colBytes = colBytes;
        layout.rowBytes = width * colBytes;
        layout.bottom = static_cast<std::int16_t>(height);
        layout.right = static_cast<std::int16_t>(width);
        return layout;
    }
    /// Reads the file's pixels in the layout, into bytes that were 0x55.
    std::int16_t Read(const ImageInfo& layout) {
        pixels.assign(static_cast<std::size_t>(layout.rowBytes * layout.Height()), '\x55');
        EXPECT_EQ(file.SetImageLayout(&layout), 0);
        const std::int16_t status = file.ReadImagePixels(pixels.data());
        EXPECT_EQ(file.handle, nullptr);
        return status;
    }
    /// Writes a picture without gaps between its rows.
    std::int16_t Write(const PlainPicture& picture, ImageInfo layout) {
        file.SetPath(NameOf("written.jpg"));
        layout.rowBytes = picture.width * layout.colBytes;
        EXPECT_EQ(file.SetImageLayout(&layout), 0);
        const std::int16_t status = file.WriteImagePixels(picture.bytes.data());
        EXPECT_EQ(file.handle, nullptr);
        return status;
    }

    std::string pixels;
    const PlainPicture tiny{3, 2, 3,
                            "\xFF\x10\x20\x40\xC0\x80\x01\x02\x03"
                            "\x77\x66\x55\xA0\xA0\xA0\x30\x90\xF0"};
    const ImageInfo tinyLayout = LayoutFor(3, 3, 2, 3);
};
