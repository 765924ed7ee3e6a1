// The editor's drawing area as it is on the screen.
#pragma once

#include "fixtures/GuiDriver.Win.h"
#include "resources/Ids.h"
#include "tests/support/Pictures.h"

constexpr Pixel white = Color(255, 255, 255);
constexpr Pixel black = Color(0, 0, 0);

/// A copy of it.
class ShownView {
  public:
    explicit ShownView(const DrivenDialog& editor) : ShownView(editor, editor.Grab()) {}
    /// `window` is the editor's client area.
    ShownView(const DrivenDialog& editor, host::Picture window)
        : picture(std::move(window)), area(editor.Bounds(TextureItems::drawingArea)) {}

    Pixel At(ItemPlace place) const {
        const std::uint8_t* const pixel = picture.Pixel(static_cast<int>(area.left) + place.x,
                                                        static_cast<int>(area.top) + place.y);
        return Color(pixel[0], pixel[1], pixel[2]);
    }
    /// How many pixels of the row (or column) through the view's middle are not its grey ground.
    int Across() const { return Count(area.right - area.left, area.bottom - area.top, true); }
    int Down() const { return Count(area.bottom - area.top, area.right - area.left, false); }

  private:
    int Count(LONG length, LONG breadth, bool across) const {
        constexpr int frame = 2;
        constexpr int scrollBar = 15;
        const int middle = static_cast<int>(breadth - scrollBar) / 2;
        int count = 0;
        for (int i = frame; i < length - frame - scrollBar; ++i) {
            const Pixel pixel = At(across ? ItemPlace{i, middle} : ItemPlace{middle, i});
            count += pixel != Color(0x9C, 0x9C, 0x9C) ? 1 : 0;
        }
        return count;
    }

    host::Picture picture;
    RECT area;
};
