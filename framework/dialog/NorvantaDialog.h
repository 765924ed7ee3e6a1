// The base of every window of the plug-in.
//
// A dialog wraps one dialog resource and gives each of its controls a 1-based item number: the
// control's id. What happens in the window reaches a subclass as a handful of virtual operations
// that deal in item numbers and values, and controls are read and written through one value
// interface that knows each item's kind. A subclass overrides Setup (calls the base first, then
// fills in its controls), ItemHit, often KeyDown and DrawItem, and its owner calls Run.
//
//     class SizeDialog : public SmallPSDialog {
//         void Setup() override {
//             SmallPSDialog::Setup();
//             SetFormat(widthItem, "%d", 1, 512);
//             SetValue(widthItem, width);
//         }
//         short ItemHit(short item) override {
//             if (item == 1) width = GetShort(widthItem);
//             return item <= 2 ? item : 0;
//         }
//     };
//
// Faults: a throw that leaves a virtual operation does not leave the window procedure. Its id stays
// in the error cell, and the next message closes the dialog with that id as Run's result. Calls of
// the dialog layer with a bad item are FatalError 20008, without a window FatalError 20009.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "framework/access/ItemDescription.h"
#include "framework/dialog/FocusState.h"
#include "framework/dialog/ItemRecord.h"
#include "framework/drawing/InterfaceLib.h"
#include "framework/drawing/ScreenScale.h"

/// Conventional items of every dialog.
constexpr short okItem = 1;
constexpr short cancelItem = 2;

/// Given to SetFormat and SetRange where there is no limit: the stored one stays (-32768 or 32767
/// unless set before).
constexpr double noMinimum = -1e30;
constexpr double noMaximum = 1e30;

/// Characters that KeyDown gets for keys without one.
constexpr int upArrowCharacter = 30;
constexpr int downArrowCharacter = 31;

/// The requests of keys to a user item: a step or a page to less or more, or the same as a click.
enum class ItemKey { back, on, pageBack, pageOn, press };

/// How far the frame of the focus lies from what it is around, in pixels at 96 dots an inch.
constexpr int focusFrameMargin = 2;

class NorvantaDialog {
  public:
    /// All dialogs of the program are modal.
    enum class Kind : std::uint16_t { modal = 0, floating = 2 };

    /// Receives the paths of files that are dropped on the dialog, one call a file.
    using DropHandler = void (*)(void* context, const char* path);

    /// Joins the list of dialogs; no window yet. `newOwner` is the dialog that this one opens over;
    /// without one it opens over the newest dialog that is open, or over the window that was active
    /// when the first dialog was made.
    explicit NorvantaDialog(short newResourceId, NorvantaDialog* newOwner = nullptr,
                            Kind newKind = Kind::modal);
    NorvantaDialog(const NorvantaDialog&) = delete;
    NorvantaDialog& operator=(const NorvantaDialog&) = delete;

    // --- The virtual operations, in the order of their table ---

    /// Closes an open window and leaves the list.
    virtual ~NorvantaDialog();
    /// Opens a floating dialog without blocking. FatalError 20001 without its resource.
    virtual void Create();
    /// Opens the dialog modally. Returns the item that closed it, or the id of an error.
    /// FatalError 20001 without its resource.
    virtual int Run();
    /// The window exists and is not shown yet. Subclasses call the base first.
    virtual void Setup();
    /// Ends the dialog with this result. Does nothing without a window.
    virtual void Close(int result);
    /// Item `item` was used, or its value changed and is good. A result other than 0 closes the
    /// dialog. The base returns the item.
    virtual short ItemHit(short item);
    /// A character for the dialog (upArrowCharacter and downArrowCharacter for those keys), with
    /// Modifier bits. Returns an item to be hit, 0 to swallow the key, or a negative value to leave
    /// it to the system. The base steps numeric fields and refuses characters that no number has.
    virtual short KeyDown(int key, int modifiers);
    /// A command of the window's menu. The base does the Edit commands on the focused field.
    virtual void MenuCommand(short id);
    /// A menu is about to open. The base enables the Edit commands.
    virtual void UpdateMenus();
    /// A volume arrived.
    virtual void DiskEvent();
    /// Returns the item to be hit. The base returns the cancel item; without one it hides a
    /// floating dialog and returns 0. A modal one stays: nobody could end it when it is hidden.
    virtual short CloseBox();
    /// The client area has changed by this much. The base moves and grows items by their rules.
    virtual void Resize(short widthChange, short heightChange);
    /// The resource id of the cursor over this item (0: no item), or 0 for the arrow. The base
    /// returns the system's text cursor over an edit field.
    virtual short CursorAt(short item);
    /// The help id of an item (0: no item), 0 for none.
    virtual std::uint32_t HelpAt(short item);
    /// Opens the help pages. What the system refuses is thrown, as an id.
    virtual void HelpCommand();
    /// A scroll bar or slider has moved. True stores the value in the item; false leaves that to
    /// the end of the drag. The base hits the item and returns true.
    virtual bool ScrollChanged(short item, int value);
    /// The host's program came to the foreground or left it.
    virtual void AppActivate(bool on);
    /// The window became active or stopped being so.
    virtual void SetActive(bool on);
    /// Takes the update region, clips to it, calls Paint.
    virtual void PaintMessage();
    /// Calls DrawItem for each visible item that meets the region.
    virtual void Paint(const Region& region);
    /// Draws what the item's control does not draw itself.
    virtual void DrawItem(short item);
    /// About every 10 ms, except while the dialog shows an alert.
    virtual void Idle();

    // --- Virtual operations that stand in no table ---

    // The menu of a popup opens, and is closed again. Hits of a tRealtimeMenu in between say what
    // is passed in its menu; the entry that it has in the end is the choice, or, if the menu was
    // left without one, that from the beginning. The base does nothing.
    virtual void PopupOpens(short item);
    virtual void PopupIsClosed(short item);

    /// A key on a user item that has the focus. Returns false if it means nothing there. The base
    /// presses what shows a colour.
    virtual bool UserItemKey(short item, ItemKey key, int modifiers);
    /// Where a user item shows that it has the focus, outside of what it draws; empty for nowhere.
    /// The base knows dials and what shows a colour.
    virtual hostapi::Rect FocusFrame(short item) const;

    /// A part of an item that Describe tells of, from 1 on, is to be used as by a click on it. The
    /// base does nothing.
    virtual void UsePart(short item, int part);

    /// Tells of an item for screen readers. The base knows it from the control and from the
    /// texts around it; dialogs add what is theirs alone.
    virtual ItemDescription Describe(short item) const;

    // --- Values ---

    /// The value of the control: a button 1 or 0, a combo box, popup or tab its 1-based selection,
    /// a scroll bar or slider its position, a number field its last good number. 0 for item 0.
    double GetValue(short item) const;
    /// The same, rounded half away from zero.
    short GetShort(short item) const;
    /// `select` selects a field's whole text. Never comes back as a hit. A number's text changes
    /// only if the value does, by what the field shows.
    void SetValue(short item, double value, bool select = false);
    /// A minimum above the maximum raises the maximum. noMinimum and noMaximum leave the stored
    /// limits. Not for buttons.
    void SetRange(short item, double minimum, double maximum);
    /// "%", an optional "+", an optional width, an optional "." with decimals, and d, f or s.
    /// A fault in it is FatalError 18018. For edit fields and static texts.
    void SetFormat(short item, const char* format, double minimum = noMinimum,
                   double maximum = noMaximum);
    /// How far a scroll bar moves by its arrows and by its shaft.
    void SetSteps(short item, short lineStep, short pageStep);

    // --- Texts; longer ones are cut at 255 bytes ---

    std::string GetText(short item) const;
    void SetText(short item, const char* text);

    // --- State ---

    short ItemCount() const { return itemCount; }
    void Enable(short item, bool on);
    bool IsEnabled(short item) const;
    /// A hidden item is neither drawn nor found under the mouse.
    void Show(short item, bool on);
    bool IsShown(short item) const;
    /// In client coordinates.
    hostapi::Rect GetBounds(short item) const;
    void SetBounds(short item, const hostapi::Rect& bounds);
    void MoveItem(short item, int horizontal, int vertical);
    /// Rules of ResizeRule, together.
    void SetResizeRule(short item, std::uint8_t rules);
    /// Gives the focus to the item, or to the tab stop after (`step` above 0) or before it. The
    /// text of an edit field is selected.
    void SetFocus(short item, int step = 0);
    /// 0 if no item has the focus.
    short GetFocusItem() const;
    /// Tab and the arrow keys come to these items one after the other, in place of the order of the
    /// item numbers. The first one keeps its place. A text whose mnemonic leads to the next item
    /// has to go along with it. Without a window: each time that one opens.
    void SetTabOrder(const std::vector<short>& order);
    /// Alt and the mnemonic of a text give `item` the focus, where the tab stop after the text is
    /// another one. A custom control takes the mnemonic of its own text.
    void SetLabel(short label, short item);
    /// Says what a user item is. The name and, for a dial, the value are those of the item `named`.
    void SetRole(short item, ItemRole role, short named = 0);
    /// The name of an item that shows what it is by a picture, by its place or by the words at its
    /// ends. Without one, its own text names it, or the label before it.
    void SetName(short item, const std::string& name) { names.push_back({item, name}); }
    /// The name by which a screen reader is told of the item; empty if nothing names it.
    std::string NameOf(short item) const;
    /// The key that gives the item the focus together with Alt; 0 for none.
    char KeyOf(short item) const;
    /// A push button that Return presses; 0 for none.
    void SetDefaultItem(short item);
    /// The item that Escape and the close box hit; 0 for none.
    void SetCancelItem(short item);
    /// The item that shows HelpAt's strings; 0 for none.
    void SetHelpItem(short item) { helpItem = item; }

    // --- Popup menus (tPopupMenu and tRealtimeMenu); positions are 1-based ---

    short PopupCount(short item) const;
    std::string PopupText(short item, short position) const;
    /// Before the entry at `position`; a position after the last appends.
    void InsertPopupEntry(short item, short position, const char* text);
    void DeletePopupEntry(short item, short position);
    void EnablePopupEntry(short item, short position, bool on);
    /// The bitmap resource, above 1, that stands beside the entry.
    void SetPopupPicture(short item, short position, short picture);

    // --- Mouse ---

    /// Where the mouse is, in client coordinates; true while the left button is down.
    bool GetMouse(hostapi::Point* place) const;
    /// The same. A drag is a loop that runs while it returns true: while the mouse stands still the
    /// active dialog's Idle runs.
    bool TrackMouse(hostapi::Point* place);
    /// Where the mouse was at the message that is being handled.
    hostapi::Point Mouse() const { return mouse; }
    /// The click that is being handled is the second of a double click.
    static bool IsDoubleClick();
    /// The visible item there, the topmost first; 0 for none.
    short ItemAtPoint(hostapi::Point place) const;

    // --- Drawing ---

    /// The window's port. FatalError 20009 without a window.
    DrawingPort& Port() const;
    void InvalidateRect(const hostapi::Rect& rect);
    void InvalidateItem(short item);
    /// Paints what is invalid, at once.
    void UpdateNow();
    /// A part of the rectangle is invalid: its paint is still to come.
    bool NeedsPaint(const hostapi::Rect& rect) const;
    /// The scale of the window's screen: of all figures in pixels. 96 dots an inch before Setup.
    ScreenScale Scale() const { return scale; }
    /// Measures of the dialog's font, in pixels.
    short TextHeight() const { return textHeight; }
    short TextAscent() const { return textAscent; }
    short TextDescent() const { return textDescent; }

    // --- The window ---

    bool IsOpen() const { return windowExists; }
    short ResourceId() const { return resourceId; }
    NorvantaDialog* Owner() const { return owner; }
    /// HWND; null without a window.
    void* Window() const;
    void SetTitle(const char* title);
    /// The window's icon, from the resources.
    void SetIcon(short icon);
    /// Puts an icon on a push button of the style for one.
    void SetButtonIcon(short item, short icon);
    /// The client area on the screen.
    hostapi::Rect ClientRectangle() const { return clientRectangle; }
    /// Centres the client area on the owner's and keeps it 8 pixels (at 96 dots an inch) inside the
    /// work area. Without an owner the dialog stays where it is.
    void Center();
    /// Moves and sizes the client area. The sign bit of `top` asks for a maximised window.
    void SetPlacement(const hostapi::Rect& placement);
    /// The argument for SetPlacement: the client area, or the normal one with the sign bit.
    hostapi::Rect Placement() const;
    /// Before Run: the dialog opens without being shown.
    void KeepHidden() { isKeptHidden = true; }
    void SetDropHandler(DropHandler handler, void* context);

    /// The dialog whose window is active; null for none.
    static NorvantaDialog* Active();
    /// Shows a cursor by its id, as CursorAt gives it, until the mouse moves on: what a tool does
    /// for the time of its drag.
    static void ShowCursor(short cursor);

  private:
    friend class DialogWindow;
    friend class SmallPSDialog;
    friend class DialogSuspension;
    friend class AlertSection;
    friend class OpeningSection;

    bool IsItem(short item) const { return item >= 1 && item <= itemCount; }
    ItemRecord& Record(short item);
    const ItemRecord& Record(short item) const;
    std::vector<void*> ControlsOf(const std::vector<short>& order) const;
    ItemRole ControlRole(const ItemRecord& record) const;
    ItemRole RoleOf(short item) const;
    std::string ValueTextOf(short item, ItemRole role) const;
    short NamedAs(short item) const;
    short LabelOf(short item) const;
    std::string OwnNameOf(short item) const;
    short GroupOf(short item) const;
    bool IsNameShared(short item) const;
    void CheckWindow() const;

    // The way of a hit.
    void HitItem(short item);
    short CheckField(short item);
    short CheckNumber(short item);
    short AnswerBadNumber(short item, std::int16_t status);
    short CheckText(short item);
    short StepField(short item, int key, int modifiers);
    void RememberGoodText(short item, const std::string& text);
    void UpdateDefaultItem();
    /// `client` on the screen.
    void PlaceClient(const hostapi::Rect& client);
    void TakeFocusStep();
    void ShowHelp(std::uint32_t id);

    // Texts that the program writes, which never come back as hits.
    void WriteText(short item, const char* text, bool select);
    void WriteNumber(short item, bool select);
    void WriteValue(short item, double value, bool select);

    // How a new value or range reaches an item's control.
    void SetControlValue(const ItemRecord& record, int value);
    void SetControlRange(const ItemRecord& record);
    int ControlValue(const ItemRecord& record) const;

    // In the order of the program's description of a dialog. The port outlives the window, so that
    // whoever draws when the dialog closes finds it.
    std::unique_ptr<DrawingPort> port;
    NorvantaDialog* next;
    NorvantaDialog* owner;
    NorvantaDialog* previousFocus = nullptr;
    short resourceId;
    Kind kind;
    short itemCount = 0;
    hostapi::Point initialSize{};
    hostapi::Point minimumSize{};
    hostapi::Rect clientRectangle{};
    bool windowExists = false;
    /// HWND; stands when the port cannot be made.
    void* systemWindow = nullptr;
    /// Setup runs.
    bool isOpening = false;
    bool isShown = false;
    bool wasPlaced = false;
    /// It opened maximised, and the user, who alone makes it a normal window, has not done anything
    /// yet.
    bool staysMaximized = false;
    bool isKeptHidden = false;
    bool isEnabled = true;
    short defaultItem;
    /// The default item is disabled because a required text is empty.
    bool isDefaultHeld = false;
    short cancellingItem;
    hostapi::Point mouse{};
    FocusState focus;
    ScreenScale scale;
    short textHeight = 0;
    short textAscent = 0;
    short textDescent = 0;
    short helpItem = 0;
    std::uint32_t helpId = 0;
    std::vector<ItemRecord> items;
    /// HWNDs: all children of the window, from the top.
    std::vector<void*> stacking;
    /// As SetTabOrder got it before the window opened.
    std::vector<short> tabOrder;
    struct Label {
        short text;
        short item;
    };
    std::vector<Label> labels;
    /// HICONs that controls show.
    using OwnedIcon = std::unique_ptr<void, void (*)(void* icon)>;
    std::vector<OwnedIcon> icons;
    struct Role {
        short item;
        ItemRole role;
        short named;
    };
    std::vector<Role> roles;
    struct Name {
        short item;
        std::string name;
    };
    std::vector<Name> names;
    int textDepth = 0;
    std::uintptr_t timer = 0;
    bool isInAlert = false;
    DropHandler dropHandler = nullptr;
    void* dropContext = nullptr;
    void* accelerators = nullptr;
    bool isClosing = false;
    int result = 0;
    /// The window procedure that ours stands before.
    void* systemProcedure = nullptr;
};

/// Shows alert `id` over the dialog's window (null: over none), with up to four texts for ^0 to ^3.
/// Returns the button that ended it, 1 or 2; 2 for any other way out. Without the resource, for ids
/// of 2 and above: FatalError with the id if a string has it, else FatalError 20001.
short Alert(NorvantaDialog* dialog, short id, const char* text0 = nullptr,
            const char* text1 = nullptr, const char* text2 = nullptr, const char* text3 = nullptr);

/// Keeps the dialogs out of the way while the system's own dialogs run: no dialog is active or has
/// the focus, floating ones are hidden. All comes back at the end.
class DialogSuspension {
  public:
    /// Ends a drag that is under way, too: the system's dialogs need the mouse.
    DialogSuspension();
    DialogSuspension(const DialogSuspension&) = delete;
    DialogSuspension& operator=(const DialogSuspension&) = delete;
    ~DialogSuspension();

  private:
    NorvantaDialog* active;
    NorvantaDialog* focused;
    std::vector<NorvantaDialog*> hidden;
};
