// The record that a dialog keeps of each of its controls.
#pragma once

#include <cstdint>

/// Kinds of items, as letters. `itemEdit` is added to the kind of a validated edit field, whose
/// letter alone is that of a static text with the same content.
enum ItemKind : std::uint8_t {
    itemUnknown = 0,
    itemButton = 'B',
    itemCombo = 'C',
    itemScrollBar = 'S',
    itemCustom = 'T',
    itemTab = 'Y',
    itemText = 's',
    itemInteger = 'd',
    itemReal = 'f',
    itemEdit = 0x80,
};

/// Bits of ItemRecord::flags: how an item follows the window's size.
enum ResizeRule : std::uint8_t {
    resizeMoveRight = 1,
    resizeGrowRight = 2,
    resizeMoveDown = 4,
    resizeGrowDown = 8,
    resizeRules = 15,
};
/// Further bits of ItemRecord::flags.
enum ItemFlag : std::uint8_t {
    /// A required text field that is empty now.
    itemIsEmpty = 0x40,
    /// The format's "+": a number shows its plus sign, a text must not be empty.
    itemHasPlus = 0x80,
};

/// One a control, in item order.
struct ItemRecord {
    std::uint8_t flags = 0;
    std::uint8_t kind = itemUnknown;
    /// Numbers: the least number of characters, filled with blanks. Texts: the greatest, 0 for any.
    std::uint8_t width = 0;
    std::uint8_t decimals = 0;
    /// The last good value, whatever the control shows.
    float value = 0;
    float minimum = -32768;
    float maximum = 32767;
    std::int16_t lineStep = 1;
    std::int16_t pageStep = 1;
    /// The program put the text there.
    bool isProgrammatic = false;
    /// The scroll bar is being dragged.
    bool isTracking = false;
    /// HWND.
    void* control = nullptr;
    /// Where the drag of a scroll bar was last, whether or not the value was stored.
    float tracked = 0;

    /// The letter, without the mark of an edit field.
    std::uint8_t Letter() const { return kind & 0x7F; }
    bool IsEditField() const { return (kind & itemEdit) != 0; }
    bool IsNumeric() const { return Letter() == itemInteger || Letter() == itemReal; }
    bool IsTextual() const { return IsNumeric() || Letter() == itemText; }
};

/// The kind of a control by the name of its window class: by the first two letters, in any case,
/// after a prefix that ends in "_" if there is one.
std::uint8_t KindOfClass(const char* className);
