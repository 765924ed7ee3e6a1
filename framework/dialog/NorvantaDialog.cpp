// The part of the dialogs that follows from the items alone. NorvantaDialog.Win.cpp has the
// window's.
#include "framework/dialog/NorvantaDialog.h"

#include <cmath>

#include "base/FatalError.h"
#include "base/Platform.h"
#include "framework/dialog/DialogGeometry.h"
#include "framework/dialog/DialogState.h"
#include "framework/fields/FieldCheck.h"
#include "framework/fields/NumberField.h"

namespace {

constexpr char sourceName[] = "NorvantaDialog";
/// The system's text cursor.
constexpr short textCursor = 32513;

}  // namespace

NorvantaDialog* NorvantaDialog::Active() {
    return dialogState.active;
}

bool NorvantaDialog::IsDoubleClick() {
    return dialogState.isDoubleClick;
}

// --- Virtual operations ---

short NorvantaDialog::ItemHit(short item) {
    return item;
}

short NorvantaDialog::KeyDown(int key, int modifiers) {
    NorvantaDialog* const focused = dialogState.focused;
    if (focused != nullptr && focused != this) {
        const short item = focused->KeyDown(key, modifiers);
        if (item > 0) {
            focused->HitItem(item);
        }
        return item < 0 ? item : short{0};
    }
    const short item = GetFocusItem();
    const bool isNumeric = item != 0 && Record(item).IsEditField() && Record(item).IsNumeric();
    if (isNumeric && (key == upArrowCharacter || key == downArrowCharacter)) {
        return StepField(item, key, modifiers);
    }
    if (key == 0) {
        return 0;
    }
    if (isNumeric && IsRefusedCharacter(Record(item), key)) {
        platformServices.beep();
        return 0;
    }
    return -1;
}

void NorvantaDialog::DiskEvent() {}

short NorvantaDialog::CloseBox() {
    if (cancellingItem == 0) {
        AppActivate(false);
    }
    return cancellingItem;
}

void NorvantaDialog::Resize(short widthChange, short heightChange) {
    for (short item = 1; item <= itemCount; ++item) {
        const std::uint8_t rules = Record(item).flags & resizeRules;
        if (rules != 0) {
            SetBounds(item, FollowResize(GetBounds(item), rules, widthChange, heightChange));
        }
    }
}

short NorvantaDialog::CursorAt(short item) {
    return IsItem(item) && Record(item).IsEditField() ? textCursor : short{0};
}

std::uint32_t NorvantaDialog::HelpAt(short item) {
    if (!IsItem(item)) {
        return 0;
    }
    return static_cast<std::uint32_t>(static_cast<std::uint16_t>(resourceId)) << 16 |
           static_cast<std::uint16_t>(item);
}

bool NorvantaDialog::ScrollChanged(short item, int) {
    ItemHit(item);
    return true;
}

void NorvantaDialog::Paint(const Region& region) {
    for (short item = 1; item <= itemCount; ++item) {
        if (IsShown(item) && region.Meets(GetBounds(item))) {
            DrawItem(item);
        }
    }
    if (const short focused = GetFocusItem(); focused != 0) {
        Port().DrawFocus(FocusFrame(focused));
    }
}

void NorvantaDialog::DrawItem(short) {}

void NorvantaDialog::UsePart(short, int) {}

bool NorvantaDialog::UserItemKey(short item, ItemKey key, int) {
    if (key != ItemKey::press || RoleOf(item) != ItemRole::swatch) {
        return false;
    }
    HitItem(item);
    return true;
}

hostapi::Rect NorvantaDialog::FocusFrame(short item) const {
    const ItemRole role = RoleOf(item);
    if (role != ItemRole::dial && role != ItemRole::swatch) {
        return {};
    }
    const int margin = Scale().Pixels(focusFrameMargin);
    return Inset(GetBounds(item), -margin, -margin);
}

void NorvantaDialog::Idle() {}

void NorvantaDialog::PopupOpens(short) {}

void NorvantaDialog::PopupIsClosed(short) {}

// --- Items ---

void NorvantaDialog::CheckWindow() const {
    if (!windowExists) {
        FatalError(faultNoWindow, sourceName, __LINE__);
    }
}

const ItemRecord& NorvantaDialog::Record(short item) const {
    CheckWindow();
    if (!IsItem(item)) {
        FatalError(faultBadArgument, sourceName, __LINE__);
    }
    return items[static_cast<std::size_t>(item - 1)];
}

ItemRecord& NorvantaDialog::Record(short item) {
    return const_cast<ItemRecord&>(static_cast<const NorvantaDialog*>(this)->Record(item));
}

DrawingPort& NorvantaDialog::Port() const {
    CheckWindow();
    return *port;
}

void NorvantaDialog::InvalidateRect(const hostapi::Rect& rect) {
    Port().InvalidateRect(rect);
}

void NorvantaDialog::InvalidateItem(short item) {
    Port().InvalidateRect(GetBounds(item));
}

void NorvantaDialog::MoveItem(short item, int horizontal, int vertical) {
    SetBounds(item, Offset(GetBounds(item), horizontal, vertical));
}

void NorvantaDialog::SetResizeRule(short item, std::uint8_t rules) {
    ItemRecord& record = Record(item);
    record.flags = static_cast<std::uint8_t>((record.flags & ~resizeRules) | (rules & resizeRules));
}

void NorvantaDialog::SetSteps(short item, short lineStep, short pageStep) {
    ItemRecord& record = Record(item);
    record.lineStep = lineStep;
    record.pageStep = pageStep;
    if (record.kind == itemScrollBar) {
        SetControlRange(record);
    }
}

// --- Values ---

namespace {

/// Rounded half away from zero and kept within 32 bits.
int RoundToInt(double value) {
    constexpr double greatest = 2147483647.0;
    if (!(std::fabs(value) < greatest)) {
        return value > 0 ? INT32_MAX : value < 0 ? INT32_MIN : 0;
    }
    return static_cast<int>(std::lround(value));
}

bool HasControlValue(const ItemRecord& record) {
    switch (record.kind) {
        case itemButton:
        case itemCombo:
        case itemScrollBar:
        case itemCustom:
        case itemTab:
            return true;
        default:
            return false;
    }
}

}  // namespace

double NorvantaDialog::GetValue(short item) const {
    if (item == 0) {
        return 0;
    }
    const ItemRecord& record = Record(item);
    if (record.IsTextual()) {
        return static_cast<double>(record.value);
    }
    if (!HasControlValue(record)) {
        FatalError(faultBadArgument, sourceName, __LINE__);
    }
    return ControlValue(record);
}

short NorvantaDialog::GetShort(short item) const {
    return static_cast<short>(RoundToInt(GetValue(item)));
}

void NorvantaDialog::SetValue(short item, double value, bool select) {
    ItemRecord& record = Record(item);
    if (record.IsTextual()) {
        WriteValue(item, value, select);
        return;
    }
    if (!HasControlValue(record)) {
        FatalError(faultBadArgument, sourceName, __LINE__);
    }
    SetControlValue(record, RoundToInt(value));
    record.value = static_cast<float>(ControlValue(record));
}

void NorvantaDialog::WriteValue(short item, double value, bool select) {
    ItemRecord& record = Record(item);
    // A field that shows nothing shows no value either; but one that the user has just emptied is
    // left alone.
    const bool isBlank = !(focus.isEmptied && focus.item == item) && GetText(item).empty();
    const bool isWritten = isBlank || IsShownAnew(record, value);
    record.value = static_cast<float>(value);
    if (isWritten) {
        WriteNumber(item, select);
        // From here on the field goes back to the new value.
        RememberGoodText(item, GetText(item));
    }
}

void NorvantaDialog::WriteNumber(short item, bool select) {
    const ItemRecord& record = Record(item);
    std::string text;
    FatalError(FormatNumber(static_cast<double>(record.value), &record, &text), sourceName,
               __LINE__);
    WriteText(item, text.c_str(), select);
}

void NorvantaDialog::SetRange(short item, double minimum, double maximum) {
    ItemRecord& record = Record(item);
    if (record.kind == itemButton || record.kind == itemUnknown) {
        FatalError(faultBadArgument, sourceName, __LINE__);
    }
    StoreLimits(record, minimum, maximum);
    if (record.kind == itemScrollBar || record.kind == itemCustom) {
        SetControlRange(record);
        record.value = static_cast<float>(ControlValue(record));
    }
}

void NorvantaDialog::SetFormat(short item, const char* format, double minimum, double maximum) {
    ItemRecord& record = Record(item);
    FieldFormat parsed;
    const std::int16_t status =
        record.IsTextual() ? ParseFormat(format, &parsed) : std::int16_t{fieldBadFormat};
    FatalError(status, sourceName, __LINE__);
    record.kind = static_cast<std::uint8_t>((record.kind & itemEdit) | parsed.letter);
    record.width = parsed.width;
    record.decimals = parsed.decimals;
    record.flags = static_cast<std::uint8_t>((record.flags & ~itemHasPlus) |
                                             (parsed.hasPlus ? itemHasPlus : 0));
    UpdateDefaultItem();
    SetRange(item, minimum, maximum);
}

void NorvantaDialog::SetText(short item, const char* text) {
    WriteText(item, text, false);
    if (Record(item).IsEditField()) {
        UpdateDefaultItem();
    }
}

/// Required texts that are empty keep the default item disabled.
void NorvantaDialog::UpdateDefaultItem() {
    bool isOneEmpty = false;
    bool isOneRequired = false;
    for (short item = 1; item <= itemCount; ++item) {
        ItemRecord& record = Record(item);
        const bool isRequired =
            record.kind == (itemEdit | itemText) && (record.flags & itemHasPlus) != 0;
        const bool isEmpty = isRequired && GetText(item).empty();
        record.flags =
            static_cast<std::uint8_t>((record.flags & ~itemIsEmpty) | (isEmpty ? itemIsEmpty : 0));
        isOneRequired |= isRequired;
        isOneEmpty |= isEmpty;
    }
    if ((isOneRequired || isDefaultHeld) && IsItem(defaultItem)) {
        Enable(defaultItem, !isOneEmpty);
        isDefaultHeld = isOneEmpty;
    }
}

// --- The way of a hit ---

void NorvantaDialog::HitItem(short item) {
    const short checked = item > 0 && windowExists ? CheckField(item) : short{0};
    if (checked == 0) {
        return;
    }
    if (const short closing = ItemHit(checked); closing != 0) {
        Close(closing);
    }
}

/// Returns the item to continue with, or 0.
short NorvantaDialog::CheckField(short item) {
    if (!IsItem(item) || !Record(item).IsEditField()) {
        return item;
    }
    return Record(item).IsNumeric() ? CheckNumber(item) : CheckText(item);
}

short NorvantaDialog::CheckNumber(short item) {
    const std::string text = GetText(item);
    const NumberCheck check = CheckNumberText(text.c_str(), Record(item));
    switch (check.outcome) {
        case NumberCheck::Outcome::unchanged:
            RememberGoodText(item, text);
            return 0;
        case NumberCheck::Outcome::changed:
            RememberGoodText(item, text);
            Record(item).value = static_cast<float>(check.value);
            return item;
        case NumberCheck::Outcome::emptied:
            focus.isEmptied = focus.isEmptied || item == focus.item;
            return 0;
        case NumberCheck::Outcome::bad:
            break;
    }
    return AnswerBadNumber(item, check.status);
}

short NorvantaDialog::AnswerBadNumber(short item, std::int16_t status) {
    const FieldAlert alert = ChooseFieldAlert(Record(item), status);
    const short answer = Alert(this, alert.id, alert.texts[0].c_str(), alert.texts[1].c_str());
    const bool takesClosest = answer == okItem && alert.offersClosest;
    if (takesClosest) {
        Record(item).value = ClosestValue(Record(item), status);
    }
    WriteNumber(item, true);
    RememberGoodText(item, GetText(item));
    return takesClosest ? item : short{0};
}

short NorvantaDialog::CheckText(short item) {
    const ItemRecord& record = Record(item);
    const std::string text = GetText(item);
    if (IsTooLong(record, text)) {
        const std::size_t width = record.width;
        Alert(this, alertTextTooLong, std::to_string(width).c_str());
        const std::string good = item == focus.item ? focus.goodText : text.substr(0, width);
        WriteText(item, good.c_str(), true);
        return 0;
    }
    UpdateDefaultItem();
    RememberGoodText(item, text);
    return item;
}

void NorvantaDialog::RememberGoodText(short item, const std::string& text) {
    if (item == focus.item) {
        focus.goodText = text;
        focus.isEmptied = false;
    }
}

/// The field check that follows finds the new value.
short NorvantaDialog::StepField(short item, int key, int modifiers) {
    const ItemRecord& record = Record(item);
    const double value =
        StepValue(record, key == upArrowCharacter, (modifiers & modifierShift) != 0);
    std::string text;
    FatalError(FormatNumber(value, &record, &text), sourceName, __LINE__);
    WriteText(item, text.c_str(), true);
    return item;
}

void NorvantaDialog::TakeFocusStep() {
    if (!windowExists) {
        return;
    }
    const short item = GetFocusItem();
    if (item == focus.item) {
        return;
    }
    if (focus.isEmptied && IsItem(focus.item)) {
        WriteText(focus.item, focus.goodText.c_str(), false);
    }
    focus = FocusState{};
    focus.item = item;
    if (item == 0) {
        return;
    }
    focus.kind = Record(item).kind;
    focus.control = Record(item).control;
    if (Record(item).IsEditField()) {
        focus.goodText = GetText(item);
    }
}

// --- Help ---

void NorvantaDialog::ShowHelp(std::uint32_t id) {
    if (helpItem == 0 || id == helpId) {
        return;
    }
    helpId = id;
    char text[textBufferSize];
    LoadIndexedString(text, static_cast<int>(id >> 16), static_cast<int>(id & 0xFFFF));
    SetText(helpItem, text);
}
