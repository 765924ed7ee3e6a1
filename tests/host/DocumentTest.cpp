#include "host/window/Document.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

namespace host {

namespace {

bool Is(const std::optional<hostapi::VRect>& rect, const hostapi::VRect& expected) {
    return rect && AreEqual(*rect, expected);
}

/// The document's picture with one pixel changed.
Picture WithPixel(const Document& document, int x, int y, std::uint8_t value) {
    Picture picture = document.Image();
    picture.Pixel(x, y)[1] = value;
    return picture;
}

}  // namespace

TEST(DocumentTest, BeginsUnmodifiedWithNothingSelected) {
    const Document document(MakePicture(7, 5, 3));
    EXPECT_FALSE(document.IsModified());
    EXPECT_FALSE(document.CanUndo());
    EXPECT_FALSE(document.CanRedo());
    EXPECT_EQ(document.UndoName(), "");
    EXPECT_FALSE(document.Selected().isExplicit);
    EXPECT_EQ(document.Name(), "Untitled");
}

TEST(DocumentTest, BearsItsFilesName) {
    EXPECT_EQ(Document(MakePicture(1, 1, 3), "folder/wall.png").Name(), "wall.png");
}

TEST(DocumentTest, StepsGoBackAndForth) {
    Document document(MakePicture(9, 8, 4, 10));
    const Picture first = document.Image();
    EXPECT_TRUE(Is(document.Replace(WithPixel(document, 3, 2, 50), "Dots"), {2, 3, 3, 4}));
    const Picture second = document.Image();
    Picture changed = WithPixel(document, 8, 7, 60);
    changed.Pixel(0, 1)[3] = 9;
    EXPECT_TRUE(Is(document.Replace(changed, "Lines"), {1, 0, 8, 9}));
    EXPECT_EQ(document.Image(), changed);
    EXPECT_EQ(document.UndoName(), "Lines");
    EXPECT_TRUE(Is(document.Undo(), {1, 0, 8, 9}));
    EXPECT_EQ(document.Image(), second);
    EXPECT_EQ(document.UndoName(), "Dots");
    EXPECT_EQ(document.RedoName(), "Lines");
    EXPECT_TRUE(Is(document.Undo(), {2, 3, 3, 4}));
    EXPECT_EQ(document.Image(), first);
    EXPECT_FALSE(document.Undo());
    EXPECT_TRUE(document.Redo());
    EXPECT_TRUE(document.Redo());
    EXPECT_EQ(document.Image(), changed);
    EXPECT_FALSE(document.Redo());
}

TEST(DocumentTest, AStepThatChangesNothingIsNone) {
    Document document(MakePicture(4, 4, 3));
    EXPECT_FALSE(document.Replace(document.Image(), "Nothing"));
    EXPECT_FALSE(document.CanUndo());
    EXPECT_FALSE(document.IsModified());
}

TEST(DocumentTest, ANewStepForgetsTheUndoneOnes) {
    Document document(MakePicture(4, 4, 3));
    document.Replace(WithPixel(document, 0, 0, 1), "One");
    document.Undo();
    document.Replace(WithPixel(document, 0, 0, 2), "Two");
    EXPECT_FALSE(document.CanRedo());
    document.Undo();
    EXPECT_EQ(document.RedoName(), "Two");
}

TEST(DocumentTest, RefusesAPictureOfAnotherSize) {
    Document document(MakePicture(4, 4, 3));
    EXPECT_THROW(document.Replace(MakePicture(4, 5, 3), "Larger"), PictureError);
    EXPECT_THROW(document.Replace(MakePicture(4, 4, 4), "Deeper"), PictureError);
    EXPECT_FALSE(document.CanUndo());
}

TEST(DocumentTest, ForgetsTheOldestStepsBeyondItsMemory) {
    // A step of one pixel takes 3 bytes.
    Document document(MakePicture(4, 4, 3), {}, 7);
    for (std::uint8_t value = 1; value <= 4; ++value) {
        document.Replace(WithPixel(document, 1, 1, value), "Step");
    }
    document.Undo();
    document.Undo();
    EXPECT_FALSE(document.CanUndo());
    EXPECT_EQ(document.Image().Pixel(1, 1)[1], 2);
    // The picture that was read cannot be restored any more.
    EXPECT_TRUE(document.IsModified());
}

TEST(DocumentTest, KeepsTheNewestStepWhateverItsSize) {
    Document document(MakePicture(20, 20, 3, 0), {}, 10);
    document.Replace(MakePicture(20, 20, 3, 9), "All");
    ASSERT_TRUE(document.Undo());
    EXPECT_EQ(document.Image(), MakePicture(20, 20, 3, 0));
    EXPECT_FALSE(document.IsModified());
}

TEST(DocumentTest, KnowsWhichPictureIsSaved) {
    const auto file = std::filesystem::temp_directory_path() / "document-test-saved.png";
    Document document(MakePicture(4, 4, 3));
    document.Replace(WithPixel(document, 0, 0, 1), "One");
    EXPECT_TRUE(document.IsModified());
    document.SaveAs(file);
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(document.File(), file);
    EXPECT_EQ(LoadPicture(file).pixels, document.Image().pixels);
    document.Undo();
    EXPECT_TRUE(document.IsModified());
    document.Redo();
    EXPECT_FALSE(document.IsModified());
    // Another way to as many steps is not the saved picture.
    document.Undo();
    document.Replace(WithPixel(document, 2, 2, 1), "Other");
    EXPECT_TRUE(document.IsModified());
    std::filesystem::remove(file);
}

TEST(DocumentTest, StaysAsItIsWhenItCannotBeSaved) {
    Document document(MakePicture(4, 4, 3), "old.png");
    document.Replace(WithPixel(document, 0, 0, 1), "One");
    EXPECT_THROW(document.SaveAs("no-such-folder/new.png"), PictureError);
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(document.Name(), "old.png");
}

TEST(DocumentTest, SelectsInsideThePictureOnly) {
    Document document(MakePicture(10, 10, 3));
    document.Select(SelectRectangle({1, 2, 3, 4}));
    EXPECT_TRUE(AreEqual(document.Selected().bounds, {1, 2, 3, 4}));
    EXPECT_THROW(document.Select(SelectRectangle({1, 2, 3, 11})), SelectionError);
    EXPECT_THROW(document.Select(Selection{{5, 5, 5, 8}, {}, true}), SelectionError);
    EXPECT_THROW(document.Select(Selection{{0, 0, 2, 2}, {255, 255, 255}, true}), SelectionError);
    EXPECT_TRUE(AreEqual(document.Selected().bounds, {1, 2, 3, 4}));
    document.SelectAll();
    EXPECT_TRUE(document.Selected().isExplicit);
    EXPECT_TRUE(AreEqual(document.Selected().bounds, {0, 0, 10, 10}));
    document.Deselect();
    EXPECT_FALSE(document.Selected().isExplicit);
}

TEST(ChangedBoundsTest, IsTheSmallestRectangle) {
    const Picture before = MakePicture(6, 5, 3, 0);
    EXPECT_TRUE(IsEmpty(ChangedBounds(before, before)));
    Picture after = before;
    after.Pixel(5, 4)[2] = 1;
    EXPECT_TRUE(AreEqual(ChangedBounds(before, after), {4, 5, 5, 6}));
    after.Pixel(0, 0)[0] = 1;
    EXPECT_TRUE(AreEqual(ChangedBounds(before, after), {0, 0, 5, 6}));
}

}  // namespace host
