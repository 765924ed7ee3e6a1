// The description of an item for somebody who does not see it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/drawing/InterfaceLib.h"
#include "hostapi/HostTypes.h"

enum class ItemRole {
    /// The system's own control, of which the system itself tells.
    system,
    pushButton,
    checkBox,
    radioButton,
    field,
    slider,
    dial,
    popup,
    /// A button that shows a colour.
    swatch,
    scrollBar,
    progress,
    text,
    picture,
    /// Has parts, of which one is chosen.
    palette,
    /// Has parts that are buttons.
    group,
    border,
};

/// A cell of a palette, or whatever else of an item is clicked on by itself.
struct ItemPart {
    std::string name;
    std::string value;
    bool isChosen = false;
    /// In client coordinates of the dialog.
    hostapi::Rect bounds{};
    /// The letter that does the same wherever the focus is; 0 for none.
    char key = '\0';
};

struct ItemDescription {
    ItemRole role = ItemRole::system;
    std::string name;
    /// Empty for what has none.
    std::string value;
    /// Whether a radio button or a check box is checked.
    bool isChosen = false;
    /// A sentence or two; empty for what explains itself.
    std::string help;
    std::vector<ItemPart> parts;
    /// The part that keys act on, from 1 on; 0 for the whole item.
    int focusedPart = 0;
};

/// The text of a control as it is read out: without the mark of its mnemonic, the key that a menu
/// shows after it, and the colon that leads to the next control.
std::string SpokenText(const std::string& text);
/// A word of recipes, such as upRight, as it is read out: "Up right".
std::string SpokenWord(std::string_view word);
/// The character after the text's single ampersand; 0 for none.
char MnemonicIn(const std::string& text);
/// The character in a hint's brackets, as in "Move Tool.  [V]"; 0 for none.
char KeyInHint(const std::string& hint);
/// Whether the text is one that names the control after it.
bool IsLabel(const std::string& text);
/// Up to its first full stop, without that.
std::string FirstSentence(const std::string& text);
/// The colour in words: "red 255, green 128, blue 0".
std::string ColorText(Color24 color);
