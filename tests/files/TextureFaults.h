// A texture that is saved and loaded while the system refuses. The editor reports a failed load
// with alert 16106 and a failed save with 16107, and nothing else.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "files/FileDialog.h"
#include "files/TextureFile.h"
#include "tests/files/ImageTest.h"
#include "tests/support/Pictures.h"

class RefusedTextureTest : public ImageTest {
  protected:
    RefusedTextureTest() {
        platformServices.runFileDialog = [](FileDialog& dialog) {
            dialog.path[chosenPath.copy(dialog.path, filePathCapacity - 1)] = '\0';
            return true;
        };
        editor.textureName = "before.jpg";
        FillWithNoise(*picture);
        pixels = PixelsOf(*picture);
    }

    bool SaveAs(const std::string& path) {
        chosenPath = path;
        return SaveTexture(picture.get(), editor);
    }
    bool LoadFrom(const std::string& path) {
        file.SetPath(path);
        return LoadTexture(picture, editor, file);
    }
    void ExpectTextureAsBefore() {
        EXPECT_EQ(PixelsOf(*picture), pixels);
        EXPECT_EQ(editor.textureName, "before.jpg");
        EXPECT_TRUE(Log().faults.empty());
        EXPECT_TRUE(Log().alerts.empty());
        EXPECT_EQ(file.handle, nullptr);
    }

    struct QuietEditor final : TextureFileOwner {
        void* Window() const override { return nullptr; }
        void SuspendDialogs() override {}
        void ResumeDialogs() override {}
    };
    QuietEditor editor;
    std::unique_ptr<PaintClass> picture = std::make_unique<PaintClass>(short{20}, short{10});
    std::vector<Pixel> pixels;

  private:
    /// Where the file dialog's user saves to.
    inline static std::string chosenPath;
};
