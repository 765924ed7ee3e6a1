// Colours in dialogs: how they are shown, and the system's dialog to choose one.
#pragma once

#include "framework/dialog/SmallPSDialog.h"
#include "paint/Color.h"

/// Returns a colour as the screen shows it: the high byte of each component.
constexpr Color24 ShownColor(const RGBColor16& color) {
    return MakeColor24(HighByte(color.red), HighByte(color.green), HighByte(color.blue));
}

/// A 24-bit colour with each component in the high byte: 255 becomes 0xFF00.
constexpr RGBColor16 ColorFromShown(Color24 shown) {
    return {static_cast<std::uint16_t>((shown & 0xFF) << 8),
            static_cast<std::uint16_t>((shown >> 8 & 0xFF) << 8),
            static_cast<std::uint16_t>((shown >> 16 & 0xFF) << 8)};
}

/// Runs the system's colour dialog over `owner`. It always opens on black, whatever `color` is. On
/// Cancel the colour stays, and the answer is false. Defined with the window system.
bool ChooseColorFor(NorvantaDialog& owner, RGBColor16* color);
