#include "host/picture/Selection.h"

#include <gtest/gtest.h>

namespace host {

namespace {

int Sum(const Selection& selection) {
    int sum = 0;
    for (std::uint8_t value : selection.mask) {
        sum += value;
    }
    return sum;
}

}  // namespace

TEST(SelectionTest, NothingSelectedIsTheWholePicture) {
    const Selection selection = SelectNothing(MakePicture(5, 4, 3));
    EXPECT_TRUE(AreEqual(selection.bounds, {0, 0, 4, 5}));
    EXPECT_FALSE(selection.isExplicit);
    EXPECT_FALSE(selection.HasMask());
}

TEST(SelectionTest, ARectangleCoversItselfAndNothingElse) {
    const Selection selection = SelectRectangle({1, 2, 3, 5});
    for (int y = -1; y < 6; ++y) {
        for (int x = -1; x < 8; ++x) {
            const bool isInside = y >= 1 && y < 3 && x >= 2 && x < 5;
            EXPECT_EQ(selection.Coverage(x, y), isInside ? 255 : 0) << x << "," << y;
        }
    }
    EXPECT_TRUE(selection.isExplicit);
}

TEST(SelectionTest, EmptyAndInvertedBoundsAreRefused) {
    EXPECT_THROW(SelectRectangle({0, 0, 0, 5}), SelectionError);
    EXPECT_THROW(SelectRectangle({0, 5, 4, 1}), SelectionError);
    EXPECT_THROW(SelectEllipse({3, 0, 1, 5}, 0), SelectionError);
    EXPECT_THROW(SelectEllipse({0, 0, 5, 5}, -1), SelectionError);
    EXPECT_THROW(SelectByMask({0, 0, 0, 0}, MakePicture(1, 1, 3), MakePicture(1, 1, 3)),
                 SelectionError);
}

TEST(SelectionTest, AnEllipseHasTheAreaOfAnEllipse) {
    const Selection selection = SelectEllipse({10, 20, 90, 220}, 0);
    EXPECT_NEAR(Sum(selection) / 255.0, 3.14159265 * 100 * 40, 60);
    EXPECT_EQ(selection.Coverage(120, 50), 255);
    EXPECT_EQ(selection.Coverage(20, 10), 0);
    EXPECT_EQ(selection.Coverage(219, 89), 0);
}

TEST(SelectionTest, AnEllipseIsSymmetrical) {
    for (double feather : {0.0, 7.5, 40.0}) {
        const Selection selection = SelectEllipse({0, 0, 31, 52}, feather);
        for (int y = 0; y < 31; ++y) {
            for (int x = 0; x < 52; ++x) {
                EXPECT_EQ(selection.Coverage(x, y), selection.Coverage(51 - x, y));
                EXPECT_EQ(selection.Coverage(x, y), selection.Coverage(x, 30 - y));
            }
        }
    }
}

TEST(SelectionTest, FeatherSoftensTheEdgeOnBothSides) {
    const Selection sharp = SelectEllipse({0, 0, 100, 100}, 0);
    const Selection soft = SelectEllipse({0, 0, 100, 100}, 20);
    // From the left edge to the centre: the soft one rises all the way across its 20 pixels.
    for (int x = 1; x < 50; ++x) {
        EXPECT_GE(soft.Coverage(x, 50), soft.Coverage(x - 1, 50));
    }
    EXPECT_EQ(sharp.Coverage(2, 50), 255);
    EXPECT_NEAR(soft.Coverage(2, 50), 255 * 0.625, 4);
    EXPECT_EQ(soft.Coverage(50, 50), 255);
    // Outside the ellipse, inside the bounds.
    EXPECT_EQ(sharp.Coverage(13, 13), 0);
    EXPECT_GT(soft.Coverage(13, 13), 0);
}

TEST(SelectionTest, APixelIsAnEllipseToo) {
    EXPECT_EQ(SelectEllipse({4, 4, 5, 5}, 0).Coverage(4, 4), 255);
}

TEST(SelectionTest, AMaskSelectsByItsGreyValues) {
    const Picture picture = MakePicture(4, 3, 3);
    Picture mask = MakePicture(4, 3, 3, 0);
    mask.Pixel(2, 1)[0] = 30;
    mask.Pixel(2, 1)[1] = 60;
    mask.Pixel(2, 1)[2] = 90;
    const Selection whole = SelectByMask(picture.Bounds(), mask, picture);
    EXPECT_EQ(whole.Coverage(2, 1), 60);
    EXPECT_EQ(Sum(whole), 60);
    const Selection part = SelectByMask({1, 2, 3, 4}, mask, picture);
    EXPECT_EQ(part.Coverage(2, 1), 60);
    EXPECT_EQ(part.mask.size(), 4U);
}

TEST(SelectionTest, AMaskMayHaveTheSelectionsSize) {
    const Picture picture = MakePicture(10, 10, 3);
    Picture mask = MakePicture(2, 2, 4, 0);
    mask.Pixel(1, 0)[0] = mask.Pixel(1, 0)[1] = mask.Pixel(1, 0)[2] = 200;
    const Selection selection = SelectByMask({5, 5, 7, 7}, mask, picture);
    EXPECT_EQ(selection.Coverage(6, 5), 200);
    EXPECT_EQ(selection.Coverage(5, 5), 0);
    EXPECT_THROW(SelectByMask({5, 5, 7, 8}, mask, picture), SelectionError);
}

TEST(SelectionTest, AMaskOfThePicturesSizeCannotReachBeyondIt) {
    const Picture picture = MakePicture(4, 4, 3);
    EXPECT_THROW(SelectByMask({0, 0, 5, 3}, MakePicture(4, 4, 3), picture), SelectionError);
}

}  // namespace host
