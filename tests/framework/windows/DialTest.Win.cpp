// The dial that GlobeControl draws in a user item.
#include <atomic>
#include <cstdlib>

#include "base/FatalError.h"
#include "fixtures/InputDesktop.Win.h"
#include "framework/controls/GlobeControl.h"
#include "framework/controls/GlobeGeometry.h"
#include "tests/framework/windows/ControlsTest.Win.h"

namespace {

/// The dialog with a dial in item 16 and its angle in field 3.
class DialTest : public ControlsTest {
  protected:
    DialTest() {
        setup = [this] {
            dialog.SetFormat(3, "%d", -180, 180);
            globe.Initialize(&dialog, dial, 600, 601, 7, &DialTest::ShowAngle);
            globe.SetAngle(0);
        };
        dialog.atDraw = [this](short item) {
            if (item == dial) {
                globe.Draw();
            }
        };
        dialog.atHit = [this](short item) {
            if (item == dial) {
                EXPECT_TRUE(globe.Track());
                ++drags;
            }
            return item <= 2 ? item : short{0};
        };
    }

    static void ShowAngle(GlobeControl* control, int elevation, int angle) {
        EXPECT_EQ(elevation, -1);
        control->Dialog()->SetValue(3, angle);
    }

    POINT OnDial(Script& script, int right, int down) const {
        const POINT middle = script.Middle(dial);
        return {middle.x + right, middle.y + down};
    }

    GlobeControl globe;
    std::atomic<int> drags = 0;
};

TEST_F(DialTest, ADragTurnsTheDial) {
    Run([&](Script& script) {
        script.Press(OnDial(script, 30, 0));
        script.WaitUntil("90 degrees", [&] { return script.Text(3) == "90"; });
        MoveMouse(OnDial(script, -80, 0));
        script.WaitUntil("-90 degrees", [&] { return script.Text(3) == "-90"; });
        MoveMouse(OnDial(script, 40, -40));
        script.WaitUntil("45 degrees", [&] {
            const int angle = std::atoi(script.Text(3).c_str());
            return angle >= 43 && angle <= 47;
        });
        ReleaseMouse();
        script.WaitUntil("the end", [&] { return drags == 1; });
        script.KeepPicture("dial");
    });
    EXPECT_NEAR(globe.Angle(), 45, 2);
}

TEST_F(DialTest, AClickAloneSetsTheAngle) {
    Run([&](Script& script) {
        script.Press(OnDial(script, 0, 25));
        script.WaitUntil("180 degrees",
                         [&] { return std::abs(std::atoi(script.Text(3).c_str())) >= 178; });
        ReleaseMouse();
        script.WaitUntil("the end", [&] { return drags == 1; });
    });
}

TEST_F(DialTest, AClickOnTheKnobSetsTheAngleOfItsPoint) {
    Run([&](Script& script) {
        const GlobeGeometry geometry = MeasureGlobe(dialog.GetBounds(dial), 7);
        const hostapi::Point knob = KnobPlace(geometry, {-1, 0});
        const hostapi::Point place{knob.v, static_cast<std::int16_t>(knob.h + 3)};
        const int expected = ValueUnder(geometry, {-1, 0}, place).angle;
        ASSERT_GT(expected, 0);
        POINT screen{place.h, place.v};
        ClientToScreen(script.Dialog(), &screen);
        script.Click(screen);
        script.WaitUntil("the angle", [&] { return script.Text(3) == std::to_string(expected); });
    });
}

TEST_F(DialTest, ADragAcrossTheBottomStaysWithinHalfATurn) {
    std::vector<int> angles;
    Run([&](Script& script) {
        script.Press(OnDial(script, 6, 30));
        for (const int right : {3, 1, 0, -1, -3, -6}) {
            MoveMouse(OnDial(script, right, 30));
            script.WaitUntil("the other side", [&] {
                const int angle = std::atoi(script.Text(3).c_str());
                return right > 0 ? angle > 0 : right < 0 ? angle < 0 : std::abs(angle) >= 178;
            });
            angles.push_back(std::atoi(script.Text(3).c_str()));
        }
        ReleaseMouse();
        script.WaitUntil("the end", [&] { return drags == 1; });
    });
    for (const int angle : angles) {
        EXPECT_GE(std::abs(angle), 165);
        EXPECT_LE(std::abs(angle), 180);
    }
}

/// The colour in the middle of the dial's knob.
COLORREF KnobColor(Script& script, TestDialog& dialog) {
    const hostapi::Rect bounds = dialog.GetBounds(dial);
    const hostapi::Point knob = KnobPlace(MeasureGlobe(bounds, 7), {-1, 0});
    // The dialog paints it, in its own time.
    script.Settle();
    return ColorAt(script.Shot(dial), knob.h - bounds.left, knob.v - bounds.top);
}

TEST_F(DialTest, TheDialIsDrawnUnderItsKnob) {
    Run([&](Script& script) {
        const hostapi::Rect bounds = dialog.GetBounds(dial);
        const hostapi::Rect square = MeasureGlobe(bounds, 7).square;
        script.Settle();
        // The knob is at the top.
        const COLORREF middle =
            ColorAt(script.Shot(dial), (square.left + square.right) / 2 - bounds.left,
                    (square.top + square.bottom) / 2 - bounds.top);
        EXPECT_EQ(middle, RGB(0xE8, 0xE8, 0xE8));
    });
}

/// Returns the colour in the middle of an icon, which it draws in the other user item.
COLORREF IconColor(Script& script, TestDialog& dialog, short icon) {
    const hostapi::Rect bounds = dialog.GetBounds(userItem);
    const hostapi::Point size = dialog.Port().IconSize(icon);
    dialog.Port().FillRect(bounds);
    dialog.Port().DrawIcon(icon, {bounds.top, bounds.left});
    const HDC context = GetDC(script.Dialog());
    const COLORREF color = GetPixel(context, bounds.left + size.h / 2, bounds.top + size.v / 2);
    ReleaseDC(script.Dialog(), context);
    return color;
}

TEST_F(DialTest, ADisabledDialHasAnotherKnob) {
    Run([&](Script& script) {
        const COLORREF normal = IconColor(script, dialog, 601);
        const COLORREF disabled = IconColor(script, dialog, 602);
        ASSERT_NE(normal, disabled);
        EXPECT_EQ(KnobColor(script, dialog), normal);
        EnableWindow(script.Item(dial), FALSE);
        EXPECT_EQ(KnobColor(script, dialog), disabled);
        EnableWindow(script.Item(dial), TRUE);
        EXPECT_EQ(KnobColor(script, dialog), normal);
    });
}

TEST_F(DialTest, WithoutADisabledKnobTheNormalOneIsDrawn) {
    setup = [this] {
        globe.Initialize(&dialog, dial, 600, 602, 7, &DialTest::ShowAngle);
        globe.SetAngle(0);
        dialog.Enable(dial, false);
    };
    Run([&](Script& script) {
        EXPECT_EQ(KnobColor(script, dialog), IconColor(script, dialog, 602));
    });
}

TEST_F(DialTest, ADialThatWasNotInitializedIsAFault) {
    GlobeControl other;
    EXPECT_EQ(FaultOf([&] { other.Draw(); }), 20008);
    EXPECT_EQ(FaultOf([&] { other.Track(); }), 20008);
    EXPECT_EQ(FaultOf([&] { other.SetAngle(3); }), 20008);
}

}  // namespace
