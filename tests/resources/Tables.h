// The parts of the resources that text and code rely on, written down once more.
#pragma once

#include <vector>

/// Kinds of controls, by class and style.
enum class Kind {
    button,
    checkBox,
    radioButton,
    groupBox,
    field,
    text,
    line,
    bitmap,
    icon,
    scrollBar,
    tab,
    palette,
    popup,
    livePopup,
    slider,
    userItem,
    pictureButton,
};

/// An item of a dialog. The text is without mnemonics and the tabs after a popup's label.
struct ExpectedItem {
    int dialog;
    int item;
    Kind kind;
    const wchar_t* text;
};

struct ExpectedText {
    int id;
    const wchar_t* text;
};

/// A text that a control can come to show.
struct LongText {
    int dialog;
    int item;
    const wchar_t* text;
};

/// An entry of a menu; 0 is a separator. A popup's name has -1.
struct ExpectedEntry {
    int id;
    const wchar_t* text;
};

struct ExpectedKey {
    int command;
    int key;
};

extern const std::vector<ExpectedItem> expectedItems;
extern const std::vector<ExpectedText> expectedTitles;
/// The text is control 3.
extern const std::vector<ExpectedText> expectedAlerts;
/// The alerts with Cancel.
extern const std::vector<int> expectedQuestions;
extern const std::vector<ExpectedText> expectedStrings;
extern const std::vector<LongText> longestTexts;
extern const std::vector<ExpectedEntry> expectedMenuBar;
extern const std::vector<ExpectedKey> expectedKeys;
