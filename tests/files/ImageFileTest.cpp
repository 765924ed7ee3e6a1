#include "files/ImageFile.h"

#include <cstring>

#include "files/FileDialog.h"
#include "files/JPEGSupport.h"
#include "hostapi/Suites.h"
#include "tests/files/ImageTest.h"
#include "tests/support/FileTypes.h"

namespace {

/// The last dialog that was asked for.
struct {
    FileDialogMode mode;
    void* window;
    std::string filter;
    const char* answer;
    int suspended;
    int suspendedInside;
    const File* file;
    const void* ownerInside;
} dialog;

bool RunDialog(FileDialog& asked) {
    dialog.mode = asked.mode;
    dialog.window = asked.ownerWindow;
    dialog.filter = asked.filter.c_str();
    dialog.suspendedInside = dialog.suspended;
    dialog.ownerInside = dialog.file->owner;
    if (dialog.answer == nullptr) {
        return false;
    }
    std::strcpy(asked.path, dialog.answer);
    return true;
}

struct Owner final : FileDialogOwner {
    void* Window() const override { return const_cast<Owner*>(this); }
    void SuspendDialogs() override { ++dialog.suspended; }
    void ResumeDialogs() override { --dialog.suspended; }
};

class ImageFileTest : public ImageTest {
  protected:
    ImageFileTest() {
        dialog = {};
        dialog.file = &file;
        platformServices.runFileDialog = RunDialog;
    }

    static ImageInfo ColorLayout(std::int16_t width, std::int16_t height) {
        ImageInfo layout;
        layout.mode = hostapi::imageModeRGB;
        layout.planes = 3;
        layout.colBytes = 4;
        layout.rowBytes = width * 4;
        layout.bottom = height;
        layout.right = width;
        return layout;
    }
    /// The fault of stating this layout.
    int LayoutFault(const ImageInfo& layout) {
        return FaultOf([&] { file.SetImageLayout(&layout); });
    }
};

TEST_F(ImageFileTest, SupportsTheThreeTypesAndTheExtension) {
    for (const FileType type : {Type("JPEG"), Type("JFIF"), Type(".JPG")}) {
        file.type = type;
        file.SetPath("whatever");
        EXPECT_TRUE(file.IsSupportedImage());
    }
    for (const FileType type : {noFileType, Type(".PNG"), Type("JPG "), Type(".JPE")}) {
        file.type = type;
        file.SetPath("whatever");
        EXPECT_FALSE(file.IsSupportedImage());
        file.SetPath("what.jpg");
        EXPECT_TRUE(file.IsSupportedImage());
    }
    file.type = noFileType;
    for (const char* const name : {"a.JPG", "a.jPg", ".jpg", "a.png.jpg"}) {
        file.SetPath(name);
        EXPECT_TRUE(file.IsSupportedImage()) << name;
    }
    // The last four characters decide, so a longer extension is none.
    for (const char* const name :
         {"a.jpeg", "a.jfif", "ajpg", "jpg", "a.jp", "a.jpg ", "a.jpg.png"}) {
        file.SetPath(name);
        EXPECT_FALSE(file.IsSupportedImage()) << name;
    }
}

TEST_F(ImageFileTest, OtherTypesAreStatus17400) {
    Put(Fixture("baseline.jpg"), "a.png");
    ImageInfo info;
    unsigned char byte;
    EXPECT_EQ(file.ReadImageInfo(&info), 17400);
    EXPECT_EQ(file.ReadImageInfo(nullptr), 17400);
    EXPECT_EQ(file.SetImageLayout(&info), 17400);
    EXPECT_EQ(file.ReadImagePixels(&byte), 17400);
    EXPECT_EQ(file.WriteImagePixels(&byte), 17400);
    EXPECT_EQ(BytesIn("a.png"), Fixture("baseline.jpg"));
}

TEST_F(ImageFileTest, WithoutANameIsAFault) {
    ImageInfo info;
    unsigned char byte;
    EXPECT_EQ(FaultOf([&] { file.ReadImageInfo(&info); }), 20008);
    EXPECT_EQ(FaultOf([&] { file.SetImageLayout(&info); }), 20008);
    EXPECT_EQ(FaultOf([&] { file.ReadImagePixels(&byte); }), 20008);
    EXPECT_EQ(FaultOf([&] { file.WriteImagePixels(&byte); }), 20008);
    EXPECT_EQ(Log().faults.size(), 4u);
    EXPECT_EQ(Log().faults.back().file, "ImageFile");
}

TEST_F(ImageFileTest, WithoutARecordIsAFault) {
    file.SetPath("a.jpg");
    EXPECT_EQ(FaultOf([&] { file.ReadImageInfo(nullptr); }), 20009);
    EXPECT_EQ(FaultOf([&] { file.SetImageLayout(nullptr); }), 20009);
}

TEST_F(ImageFileTest, LayoutsThatCannotBeAreAFault) {
    file.SetPath("a.jpg");
    const ImageInfo good = ColorLayout(5, 2);
    EXPECT_EQ(LayoutFault(good), 0);
    ImageInfo layout = good;
    layout.planes = 1;
    EXPECT_EQ(LayoutFault(layout), 20008);
    layout = good;
    layout.mode = 10;
    EXPECT_EQ(LayoutFault(layout), 20008);
    layout = good;
    layout.mode = -1;
    layout.planes = 0;
    EXPECT_EQ(LayoutFault(layout), 20008);
    layout = good;
    layout.colBytes = 2;
    EXPECT_EQ(LayoutFault(layout), 20008);
    layout.colBytes = 3;
    layout.rowBytes = 15;
    EXPECT_EQ(LayoutFault(layout), 0);
    layout.rowBytes = 14;
    EXPECT_EQ(LayoutFault(layout), 20008);
    layout = good;
    layout.colBytes = 0x40000000;
    EXPECT_EQ(LayoutFault(layout), 20008);
}

TEST_F(ImageFileTest, EveryModeHasItsPlanes) {
    constexpr int planes[] = {0, 1, 1, 3, 4, 3, 3, 1, 1, 3};
    for (std::int16_t mode = 0; mode < 10; ++mode) {
        EXPECT_EQ(PlanesOfMode(mode), planes[mode]);
    }
    EXPECT_EQ(PlanesOfMode(10), 0);
    EXPECT_EQ(PlanesOfMode(-1), 0);
}

TEST_F(ImageFileTest, OpeningOffersTheExtensionsOfTheSupportedTypes) {
    int window = 0;
    dialog.answer = "some.jpg";
    EXPECT_EQ(file.ChooseImageToOpen(&window, nullptr, -1), 0);
    EXPECT_EQ(dialog.mode, FileDialogMode::open);
    EXPECT_EQ(dialog.window, &window);
    EXPECT_EQ(dialog.filter, "*.JPG");
    EXPECT_STREQ(file.path, "some.jpg");
    EXPECT_EQ(file.type, jpegExtension);
}

TEST_F(ImageFileTest, SavingOffersTheGivenTypesAndTakesTheTypeOfTheName) {
    constexpr FileType types[] = {Type(".ABC"), Type(".JPG"), 0};
    dialog.answer = "some.jpg";
    for (const std::int16_t id : std::initializer_list<std::int16_t>{-1, 0, 17200}) {
        EXPECT_EQ(file.ChooseImageToSave(nullptr, types, id), 0);
        EXPECT_EQ(dialog.mode, FileDialogMode::save);
        EXPECT_EQ(dialog.filter, "*.ABC");
        EXPECT_EQ(file.type, jpegExtension);
    }
}

TEST_F(ImageFileTest, LeavingTheDialogIsStatus32512) {
    file.SetPath("old.jpg");
    EXPECT_EQ(file.ChooseImageToOpen(nullptr, nullptr, 1), 32512);
    EXPECT_EQ(file.ChooseImageToSave(nullptr, nullptr, 1), 32512);
    EXPECT_STREQ(file.path, "old.jpg");
}

TEST_F(ImageFileTest, OverADialogTheFloatingWindowsAreOutOfTheWay) {
    Owner owner;
    dialog.answer = "some.jpg";
    EXPECT_EQ(file.ChooseImageToOpen(owner, nullptr, 1), 0);
    EXPECT_EQ(dialog.suspendedInside, 1);
    EXPECT_EQ(dialog.suspended, 0);
    EXPECT_EQ(dialog.window, &owner);
    EXPECT_EQ(dialog.ownerInside, static_cast<FileDialogOwner*>(&owner));
    EXPECT_EQ(file.owner, nullptr) << "the file may outlive the dialog";
    dialog.answer = nullptr;
    EXPECT_EQ(file.ChooseImageToSave(owner, nullptr, 1), 32512);
    EXPECT_EQ(dialog.suspendedInside, 1);
    EXPECT_EQ(dialog.suspended, 0);
    EXPECT_EQ(dialog.ownerInside, static_cast<FileDialogOwner*>(&owner));
    EXPECT_EQ(file.owner, nullptr);
}

}  // namespace
