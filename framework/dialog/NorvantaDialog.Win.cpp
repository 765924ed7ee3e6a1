// The dialog layer: windows, controls, mouse.
#include "framework/dialog/NorvantaDialog.h"

#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <algorithm>

#include "base/FatalError.h"
#include "base/Module.Win.h"
#include "base/Platform.h"
#include "framework/alerts/Alert.Win.h"
#include "framework/controls/ControlClasses.Win.h"
#include "framework/dialog/DialogState.h"
#include "framework/dialog/DialogWindow.Win.h"
#include "framework/dialog/TabNames.h"
#include "framework/fields/NumberField.h"

namespace {

constexpr char sourceName[] = "NorvantaDialog.Win";
constexpr UINT idlePeriod = 10;
constexpr UINT_PTR idleTimer = 1;
/// The accelerators of dialogs without a table of their own.
constexpr int editAccelerators = 18000;

HWND ControlOf(const ItemRecord& record) {
    return static_cast<HWND>(record.control);
}

std::string TextOf(HWND window) {
    char text[textBufferSize];
    const int length = GetWindowTextA(window, text, static_cast<int>(sizeof text));
    return std::string(text, static_cast<std::size_t>(length));
}

HACCEL FindAccelerators(short id) {
    const HACCEL own = LoadAcceleratorsA(instanceHandle, ResourceName(id));
    return own != nullptr ? own : LoadAcceleratorsA(instanceHandle, ResourceName(editAccelerators));
}

char LocaleCharacter(LCTYPE type) {
    char text[8] = "";
    GetLocaleInfoA(LOCALE_USER_DEFAULT, type, text, sizeof text);
    return text[0];
}

/// Both separators are read as the decimal one. Equal ones are not taken, so numbers have a point
/// whatever the locale; that is meant.
NumberCharacters LocaleCharacters() {
    return {LocaleCharacter(LOCALE_SDECIMAL), LocaleCharacter(LOCALE_SDECIMAL),
            LocaleCharacter(LOCALE_SPOSITIVESIGN), LocaleCharacter(LOCALE_SNEGATIVESIGN)};
}

/// The work area of the screen that the window is on, or nearest to.
ScreenRect WorkAreaOf(HWND window) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoA(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &info);
    return FromSystem(info.rcWork);
}

ScreenRect WindowRect(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return FromSystem(rect);
}

ScreenRect ClientOnScreen(HWND window) {
    RECT rect{};
    GetClientRect(window, &rect);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&rect), 2);
    return FromSystem(rect);
}

void PlaceWindow(HWND window, const ScreenRect& rect) {
    SetWindowPos(window, nullptr, rect.left, rect.top, rect.Width(), rect.Height(),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

/// The message of the button's press has just been taken, and that of its release is not there yet.
/// Wine goes on calling a button released for up to 50 ms after its last look at the keys: a stroke
/// that went by that alone would end at its first look.
bool HasJustBeenPressed() {
    constexpr DWORD lookMilliseconds = 100;
    if (GetKeyState(VK_LBUTTON) >= 0 ||
        GetTickCount() - static_cast<DWORD>(GetMessageTime()) > lookMilliseconds) {
        return false;
    }
    MSG release;
    return !PeekMessageA(&release, nullptr, WM_LBUTTONUP, WM_LBUTTONUP, PM_NOREMOVE | PM_NOYIELD);
}

/// The window's left button, whichever side of the mouse it is on.
bool IsButtonDown() {
    const int button = GetSystemMetrics(SM_SWAPBUTTON) != 0 ? VK_RBUTTON : VK_LBUTTON;
    return (GetAsyncKeyState(button) & 0x8000) != 0 || HasJustBeenPressed();
}

}  // namespace

// --- Life ---

NorvantaDialog::NorvantaDialog(short newResourceId, NorvantaDialog* newOwner, Kind newKind)
    : next(dialogState.newest),
      owner(newOwner),
      resourceId(newResourceId),
      kind(newKind),
      defaultItem(newKind == Kind::modal ? okItem : short{0}),
      cancellingItem(newKind == Kind::modal ? cancelItem : short{0}) {
    if (next == nullptr) {
        const HWND active = GetActiveWindow();
        dialogState.rootWindow = active != nullptr ? active : dialogState.hostWindow;
        RegisterControlClasses();
        DialogWindow::InstallFilter();
    }
    dialogState.newest = this;
}

NorvantaDialog::~NorvantaDialog() {
    // Not Close: whoever overrides it is gone already.
    NorvantaDialog::Close(0);
    NorvantaDialog** link = &dialogState.newest;
    while (*link != this) {
        link = &(*link)->next;
    }
    *link = next;
    DialogWindow::Forget(*this);
    if (dialogState.newest == nullptr) {
        DialogWindow::RemoveFilter();
        UnregisterControlClasses();
        dialogState = DialogState{};
    }
}

void NorvantaDialog::Create() {
    dialogState.openingResource = resourceId;
    isClosing = false;
    const HWND window =
        CreateDialogParamA(instanceHandle, ResourceName(resourceId), DialogWindow::OwnerOf(*this),
                           DialogWindow::Procedure, reinterpret_cast<LPARAM>(this));
    if (window == nullptr) {
        FatalError(faultResourceMissing, sourceName, __LINE__);
    }
}

int NorvantaDialog::Run() {
    dialogState.openingResource = resourceId;
    isClosing = false;
    result = 0;
    // A control that holds the mouse would keep it from the dialog.
    ReleaseCapture();
    const INT_PTR answer =
        DialogBoxParamA(instanceHandle, ResourceName(resourceId), DialogWindow::OwnerOf(*this),
                        DialogWindow::Procedure, reinterpret_cast<LPARAM>(this));
    if (answer == -1 || !isClosing) {
        FatalError(faultResourceMissing, sourceName, __LINE__);
    }
    return result;
}

void NorvantaDialog::Setup() {
    const HWND window = DialogWindow::Window(*this);
    DialogWindow::CountItems(*this);
    accelerators = FindAccelerators(resourceId);
    DialogWindow::MeasureText(*this);
    numberCharacters = TakeLocaleCharacters(numberCharacters, LocaleCharacters());
    systemProcedure = reinterpret_cast<void*>(SetWindowLongPtrA(
        window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&DialogWindow::Subclass)));
    SetDefaultItem(defaultItem);
    if (dropHandler != nullptr) {
        DragAcceptFiles(window, TRUE);
    }
    Center();
    DialogWindow::NoteClientRectangle(*this);
    initialSize = {static_cast<std::int16_t>(Height(clientRectangle)),
                   static_cast<std::int16_t>(Width(clientRectangle))};
    const hostapi::Rect frame = ToRect(WindowRect(window));
    minimumSize = {static_cast<std::int16_t>(Height(frame)),
                   static_cast<std::int16_t>(Width(frame))};
    if (kind == Kind::modal) {
        timer = SetTimer(window, idleTimer, idlePeriod, nullptr);
    }
}

void NorvantaDialog::Close(int newResult) {
    if (!windowExists || isClosing) {
        return;
    }
    const HWND window = DialogWindow::Window(*this);
    isClosing = true;
    result = newResult;
    if (timer != 0) {
        KillTimer(window, idleTimer);
        timer = 0;
    }
    DialogWindow::EndScrolling(*this);
    windowExists = false;
    // The window's own message of this does not find the dialog any more.
    DialogWindow::Forget(*this);
    if (kind == Kind::modal) {
        EndDialog(window, newResult);
    } else {
        DestroyWindow(window);
    }
    isShown = false;
}

/// No longer the active dialog nor that with the focus.
void DialogWindow::Forget(const NorvantaDialog& dialog) {
    for (NorvantaDialog** state : {&dialogState.active, &dialogState.focused}) {
        if (*state == &dialog) {
            *state = nullptr;
        }
    }
}

/// The end of a scroll bar's drag does not reach a dialog that has closed.
void DialogWindow::EndScrolling(NorvantaDialog& dialog) {
    for (ItemRecord& record : dialog.items) {
        if (record.isTracking && record.kind == itemScrollBar) {
            --dialogState.dragDepth;
        }
        record.isTracking = false;
    }
}

void DialogWindow::CountItems(NorvantaDialog& dialog) {
    const HWND window = Window(dialog);
    dialog.items.clear();
    while (const HWND control = GetDlgItem(window, static_cast<int>(dialog.items.size()) + 1)) {
        ItemRecord record;
        record.control = control;
        char className[64];
        GetClassNameA(control, className, static_cast<int>(sizeof className));
        record.kind = KindOfClass(className);
        dialog.items.push_back(record);
    }
    dialog.itemCount = static_cast<short>(dialog.items.size());
    if (dialog.itemCount == 0) {
        FatalError(faultBadArgument, sourceName, __LINE__);
    }
    PrepareControls(dialog.items);
}

void DialogWindow::MeasureText(NorvantaDialog& dialog) {
    const HWND window = Window(dialog);
    const HDC context = GetDC(window);
    const HGDIOBJ font = reinterpret_cast<HGDIOBJ>(SendMessageA(window, WM_GETFONT, 0, 0));
    const HGDIOBJ before = font != nullptr ? SelectObject(context, font) : nullptr;
    TEXTMETRICA metrics{};
    GetTextMetricsA(context, &metrics);
    if (before != nullptr) {
        SelectObject(context, before);
    }
    ReleaseDC(window, context);
    dialog.textHeight = static_cast<short>(metrics.tmHeight);
    dialog.textAscent = static_cast<short>(metrics.tmAscent);
    dialog.textDescent = static_cast<short>(metrics.tmDescent);
}

void DialogWindow::NoteClientRectangle(NorvantaDialog& dialog) {
    dialog.clientRectangle = ToRect(ClientOnScreen(Window(dialog)));
}

// --- Values ---

int NorvantaDialog::ControlValue(const ItemRecord& record) const {
    const HWND control = ControlOf(record);
    switch (record.kind) {
        case itemButton:
            return SendMessageA(control, BM_GETCHECK, 0, 0) == BST_CHECKED ? 1 : 0;
        case itemCombo:
            return static_cast<int>(SendMessageA(control, CB_GETCURSEL, 0, 0)) + 1;
        case itemScrollBar:
            return GetScrollPos(control, SB_CTL);
        case itemTab:
            return static_cast<int>(SendMessageA(control, TCM_GETCURSEL, 0, 0)) + 1;
        default:
            return static_cast<int>(SendMessageA(control, controlGetValue, 0, 0));
    }
}

void NorvantaDialog::SetControlValue(const ItemRecord& record, int value) {
    const HWND control = ControlOf(record);
    const WPARAM position = static_cast<WPARAM>(value - 1);
    switch (record.kind) {
        case itemButton:
            SendMessageA(control, BM_SETCHECK, value > 0 ? BST_CHECKED : BST_UNCHECKED, 0);
            break;
        case itemCombo:
            SendMessageA(control, CB_SETCURSEL, position, 0);
            break;
        case itemScrollBar:
            SetScrollPos(control, SB_CTL, value, TRUE);
            break;
        case itemTab:
            SendMessageA(control, TCM_SETCURSEL, position, 0);
            break;
        default:
            SendMessageA(control, controlSetValue, 0, value);
            break;
    }
}

void NorvantaDialog::SetControlRange(const ItemRecord& record) {
    const HWND control = ControlOf(record);
    const int minimum = static_cast<int>(record.minimum);
    const int maximum = static_cast<int>(record.maximum);
    if (record.kind == itemCustom) {
        SendMessageA(control, controlSetRange, TRUE, MAKELPARAM(minimum, maximum));
        return;
    }
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE;
    info.nPage = static_cast<UINT>((std::max)(record.pageStep, std::int16_t{1}));
    info.nMin = minimum;
    // The system ends a page before its own maximum.
    info.nMax = maximum + static_cast<int>(info.nPage) - 1;
    SetScrollInfo(control, SB_CTL, &info, TRUE);
    EnableWindow(control, maximum > minimum ? TRUE : FALSE);
}

// --- Texts ---

std::string NorvantaDialog::GetText(short item) const {
    return TextOf(ControlOf(Record(item)));
}

void NorvantaDialog::WriteText(short item, const char* text, bool select) {
    ItemRecord& record = Record(item);
    char cut[textBufferSize];
    CopyText(cut, text);
    ++textDepth;
    SetWindowTextA(ControlOf(record), cut);
    --textDepth;
    if (dialogState.dragDepth > 0) {
        // A drag takes no messages in which the control could paint itself.
        UpdateWindow(ControlOf(record));
    }
    record.isProgrammatic = true;
    if (select && record.IsEditField()) {
        SendMessageA(ControlOf(record), EM_SETSEL, 0, -1);
    }
}

// --- State ---

void NorvantaDialog::Enable(short item, bool on) {
    const HWND control = ControlOf(Record(item));
    if (!on && GetFocus() == control) {
        // A disabled control would keep the keys to itself.
        SetFocus(item, 1);
    }
    EnableWindow(control, on ? TRUE : FALSE);
}

bool NorvantaDialog::IsEnabled(short item) const {
    return IsWindowEnabled(ControlOf(Record(item))) != FALSE;
}

void NorvantaDialog::Show(short item, bool on) {
    const ItemRecord& record = Record(item);
    ShowWindow(ControlOf(record), on ? SW_SHOWNA : SW_HIDE);
    if (record.kind == itemCustom) {
        InvalidateItem(item);
    }
}

bool NorvantaDialog::IsShown(short item) const {
    // Of the control alone: the dialog may still be hidden.
    return (GetWindowLongA(ControlOf(Record(item)), GWL_STYLE) & WS_VISIBLE) != 0;
}

hostapi::Rect NorvantaDialog::GetBounds(short item) const {
    RECT rect{};
    GetWindowRect(ControlOf(Record(item)), &rect);
    MapWindowPoints(nullptr, DialogWindow::Window(*this), reinterpret_cast<POINT*>(&rect), 2);
    return RectFromSystem(rect);
}

void NorvantaDialog::SetBounds(short item, const hostapi::Rect& bounds) {
    const ItemRecord& record = Record(item);
    const hostapi::Rect before = GetBounds(item);
    if (AreEqual(before, bounds)) {
        return;
    }
    SetWindowPos(ControlOf(record), nullptr, bounds.left, bounds.top, Width(bounds), Height(bounds),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    if (record.kind == itemCustom) {
        // What the dialog draws there is no part of the control.
        InvalidateRect(bounds);
    }
}

void NorvantaDialog::SetFocus(short item, int step) {
    const HWND window = DialogWindow::Window(*this);
    HWND control = ControlOf(Record(item));
    if (step != 0) {
        control = GetNextDlgTabItem(window, control, step < 0 ? TRUE : FALSE);
    }
    if (control == nullptr) {
        return;
    }
    SendMessageA(window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
    for (const ItemRecord& record : items) {
        if (record.control == control && record.IsEditField()) {
            SendMessageA(control, EM_SETSEL, 0, -1);
        }
    }
}

short NorvantaDialog::GetFocusItem() const {
    CheckWindow();
    const HWND focused = GetFocus();
    for (std::size_t i = 0; focused != nullptr && i < items.size(); ++i) {
        const HWND control = ControlOf(items[i]);
        if (control == focused || IsChild(control, focused)) {
            return static_cast<short>(i + 1);
        }
    }
    return 0;
}

void NorvantaDialog::SetDefaultItem(short item) {
    defaultItem = item;
    if (windowExists) {
        SendMessageA(DialogWindow::Window(*this), DM_SETDEFID,
                     static_cast<WPARAM>(IsItem(item) ? item : 0), 0);
    }
}

void NorvantaDialog::SetCancelItem(short item) {
    cancellingItem = item;
}

// --- Popups ---

short NorvantaDialog::PopupCount(short item) const {
    return static_cast<short>(SendMessageA(ControlOf(Record(item)), CB_GETCOUNT, 0, 0));
}

std::string NorvantaDialog::PopupText(short item, short position) const {
    char text[textBufferSize] = "";
    SendMessageA(ControlOf(Record(item)), CB_GETLBTEXT, static_cast<WPARAM>(position - 1),
                 reinterpret_cast<LPARAM>(text));
    return text;
}

void NorvantaDialog::InsertPopupEntry(short item, short position, const char* text) {
    char cut[textBufferSize];
    CopyText(cut, text);
    SendMessageA(ControlOf(Record(item)), CB_INSERTSTRING, static_cast<WPARAM>(position - 1),
                 reinterpret_cast<LPARAM>(cut));
}

void NorvantaDialog::DeletePopupEntry(short item, short position) {
    SendMessageA(ControlOf(Record(item)), CB_DELETESTRING, static_cast<WPARAM>(position - 1), 0);
}

void NorvantaDialog::EnablePopupEntry(short item, short position, bool on) {
    SendMessageA(ControlOf(Record(item)), CB_SETITEMDATA, static_cast<WPARAM>(position - 1),
                 on ? 1 : 0);
}

void NorvantaDialog::SetPopupPicture(short item, short position, short picture) {
    SendMessageA(ControlOf(Record(item)), CB_SETITEMDATA, static_cast<WPARAM>(position - 1),
                 picture);
}

// --- Mouse ---

bool NorvantaDialog::GetMouse(hostapi::Point* place) const {
    CheckWindow();
    POINT cursor{};
    GetCursorPos(&cursor);
    ScreenToClient(DialogWindow::Window(*this), &cursor);
    *place = {static_cast<std::int16_t>(cursor.y), static_cast<std::int16_t>(cursor.x)};
    return IsButtonDown();
}

bool NorvantaDialog::TrackMouse(hostapi::Point* place) {
    static hostapi::Point last{};
    const bool isDown = GetMouse(place);
    const bool hasMoved = place->h != last.h || place->v != last.v;
    last = *place;
    if (!hasMoved && dialogState.active != nullptr) {
        dialogState.active->Idle();
        // Looking at the queue tells the system that the program is alive; the pause leaves the
        // processor to others while the hand rests.
        MSG waiting;
        PeekMessageA(&waiting, nullptr, WM_NULL, WM_NULL, PM_NOREMOVE | PM_NOYIELD);
        Sleep(1);
    }
    return isDown;
}

namespace {

/// Boxes and frames, which lie behind what they hold.
bool IsFrame(HWND control) {
    char className[16];
    GetClassNameA(control, className, static_cast<int>(sizeof className));
    const LONG style = GetWindowLongA(control, GWL_STYLE);
    if (lstrcmpiA(className, "Button") == 0) {
        return (style & BS_TYPEMASK) == BS_GROUPBOX;
    }
    const LONG type = style & SS_TYPEMASK;
    return lstrcmpiA(className, "Static") == 0 &&
           ((type >= SS_BLACKRECT && type <= SS_WHITEFRAME) ||
            (type >= SS_ETCHEDHORZ && type <= SS_ETCHEDFRAME));
}

}  // namespace

short NorvantaDialog::ItemAtPoint(hostapi::Point place) const {
    short frame = 0;
    for (short item = 1; item <= itemCount; ++item) {
        if (!IsShown(item) || !Contains(GetBounds(item), place)) {
            continue;
        }
        if (!IsFrame(ControlOf(Record(item)))) {
            return item;
        }
        frame = frame == 0 ? item : frame;
    }
    return frame;
}

// --- The window ---

void* NorvantaDialog::Window() const {
    return systemWindow;
}

void NorvantaDialog::UpdateNow() {
    CheckWindow();
    UpdateWindow(DialogWindow::Window(*this));
}

void NorvantaDialog::SetTitle(const char* title) {
    CheckWindow();
    SetWindowTextA(DialogWindow::Window(*this), title);
}

void NorvantaDialog::SetIcon(short icon) {
    CheckWindow();
    const HWND window = DialogWindow::Window(*this);
    const auto load = [icon](int width, int height) {
        return reinterpret_cast<LPARAM>(LoadImageA(instanceHandle, ResourceName(icon), IMAGE_ICON,
                                                   GetSystemMetrics(width),
                                                   GetSystemMetrics(height), LR_SHARED));
    };
    SendMessageA(window, WM_SETICON, ICON_BIG, load(SM_CXICON, SM_CYICON));
    SendMessageA(window, WM_SETICON, ICON_SMALL, load(SM_CXSMICON, SM_CYSMICON));
}

void NorvantaDialog::SetButtonIcon(short item, short icon) {
    const HANDLE loaded =
        LoadImageA(instanceHandle, ResourceName(icon), IMAGE_ICON, 0, 0, LR_SHARED);
    SendMessageA(ControlOf(Record(item)), BM_SETIMAGE, IMAGE_ICON,
                 reinterpret_cast<LPARAM>(loaded));
}

void NorvantaDialog::Center() {
    CheckWindow();
    const HWND window = DialogWindow::Window(*this);
    const HWND over = GetWindow(window, GW_OWNER);
    if (over == nullptr) {
        return;
    }
    const ScreenRect client = ClientOnScreen(window);
    const ScreenRect centered = CenteredOn(client, ClientOnScreen(over));
    const ScreenRect frame = WindowRect(window);
    const int horizontal = centered.left - client.left;
    const int vertical = centered.top - client.top;
    const ScreenRect moved{frame.left + horizontal, frame.top + vertical, frame.right + horizontal,
                           frame.bottom + vertical};
    PlaceWindow(window, PushedInto(moved, Shrunk(WorkAreaOf(over), dialogMargin)));
}

void NorvantaDialog::PlaceClient(const hostapi::Rect& newClient) {
    CheckWindow();
    const HWND window = DialogWindow::Window(*this);
    const ScreenRect client = ClientOnScreen(window);
    const ScreenRect wanted = ToScreenRect(newClient);
    const ScreenRect frame = WindowRect(window);
    const ScreenRect moved{
        frame.left + wanted.left - client.left, frame.top + wanted.top - client.top,
        frame.right + wanted.right - client.right, frame.bottom + wanted.bottom - client.bottom};
    if (!(moved == frame)) {
        PlaceWindow(window, moved);
    }
}

void NorvantaDialog::SetPlacement(const hostapi::Rect& placement) {
    const Placing placing = UnpackPlacement(placement);
    PlaceClient(placing.client);
    if (placing.isMaximized) {
        // The place before stays the normal one.
        ShowWindow(DialogWindow::Window(*this), SW_MAXIMIZE);
    }
}

hostapi::Rect NorvantaDialog::Placement() const {
    CheckWindow();
    const HWND window = DialogWindow::Window(*this);
    if ((GetWindowLongA(window, GWL_STYLE) & WS_MAXIMIZEBOX) == 0) {
        // Nothing but the place: it may lie on a screen above the main one.
        return ToRect(ClientOnScreen(window));
    }
    WINDOWPLACEMENT place{};
    place.length = sizeof place;
    if (!IsZoomed(window) || !GetWindowPlacement(window, &place)) {
        return PackPlacement({ToRect(ClientOnScreen(window)), false});
    }
    // The normal window's client area lies in it as the maximised one's does, but for the border,
    // which goes off the screen.
    RECT border{};
    AdjustWindowRectEx(&border, static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE)),
                       GetMenu(window) != nullptr ? TRUE : FALSE,
                       static_cast<DWORD>(GetWindowLongA(window, GWL_EXSTYLE)));
    const RECT& normal = place.rcNormalPosition;
    const ScreenRect area = WorkAreaOf(window);
    const ScreenRect screen = WindowRect(GetDesktopWindow());
    const int left = area.left - screen.left;
    const int top = area.top - screen.top;
    return PackPlacement({ToRect({static_cast<int>(normal.left - border.left) + left,
                                  static_cast<int>(normal.top - border.top) + top,
                                  static_cast<int>(normal.right - border.right) + left,
                                  static_cast<int>(normal.bottom - border.bottom) + top}),
                          true});
}

void NorvantaDialog::SetDropHandler(DropHandler handler, void* context) {
    dropHandler = handler;
    dropContext = context;
    if (windowExists) {
        DragAcceptFiles(DialogWindow::Window(*this), handler != nullptr ? TRUE : FALSE);
    }
}

void NorvantaDialog::SetHostWindow(void* window) {
    dialogState.hostWindow = window;
}

void NorvantaDialog::ShowCursor(short cursor) {
    constexpr short firstSystemCursor = 32512;
    const bool isSystems = cursor == 0 || cursor >= firstSystemCursor;
    static short currentId = -1;
    static HCURSOR current = nullptr;
    if (cursor != currentId || current == nullptr) {
        current = LoadCursorA(isSystems ? nullptr : instanceHandle,
                              cursor == 0 ? LPCSTR{IDC_ARROW} : ResourceName(cursor));
        currentId = cursor;
    }
    // Others set cursors, too: the busy one, the system's over a frame.
    if (current != nullptr && GetCursor() != current) {
        SetCursor(current);
    }
}

// --- Activation and painting ---

void NorvantaDialog::AppActivate(bool on) {
    if (kind == Kind::floating && windowExists) {
        ShowWindow(DialogWindow::Window(*this), on ? SW_SHOWNA : SW_HIDE);
    }
}

void NorvantaDialog::SetActive(bool on) {
    isEnabled = on;
    if (!windowExists) {
        return;
    }
    const HWND window = DialogWindow::Window(*this);
    CallWindowProcA(reinterpret_cast<WNDPROC>(systemProcedure), window, WM_NCACTIVATE,
                    on ? TRUE : FALSE, 0);
    if (kind == Kind::floating) {
        EnableWindow(window, on ? TRUE : FALSE);
    }
    if (!on) {
        ShowHelp(0);
    }
}

void NorvantaDialog::PaintMessage() {
    const HWND window = DialogWindow::Window(*this);
    Region update;
    GetUpdateRgn(window, static_cast<HRGN>(update.Handle()), FALSE);
    PAINTSTRUCT paint;
    BeginPaint(window, &paint);
    port->SetExtraClip(&update);
    // Drawing must not leave the clip behind, whatever it throws.
    struct Ending {
        NorvantaDialog& dialog;
        HWND window;
        PAINTSTRUCT& paint;
        ~Ending() {
            dialog.port->SetExtraClip(nullptr);
            EndPaint(window, &paint);
        }
    } const ending{*this, window, paint};
    Paint(update);
}

// --- Suspension and alerts ---

DialogSuspension::DialogSuspension() : active(dialogState.active), focused(dialogState.focused) {
    ReleaseCapture();
    dialogState.active = nullptr;
    dialogState.focused = nullptr;
    for (NorvantaDialog* dialog = dialogState.newest; dialog != nullptr; dialog = dialog->next) {
        if (dialog->kind == NorvantaDialog::Kind::floating && dialog->windowExists) {
            dialog->AppActivate(false);
            hidden.push_back(dialog);
        }
    }
}

DialogSuspension::~DialogSuspension() {
    // An error may have closed them meanwhile.
    const auto ifOpen = [](NorvantaDialog* dialog) {
        return dialog != nullptr && dialog->windowExists ? dialog : nullptr;
    };
    dialogState.active = ifOpen(active);
    dialogState.focused = ifOpen(focused);
    for (NorvantaDialog* const dialog : hidden) {
        dialog->AppActivate(true);
    }
}

/// The time that a dialog shows an alert.
class AlertSection {
  public:
    explicit AlertSection(NorvantaDialog* newDialog) : dialog(newDialog) { Mark(true); }
    AlertSection(const AlertSection&) = delete;
    AlertSection& operator=(const AlertSection&) = delete;
    ~AlertSection() { Mark(false); }

  private:
    void Mark(bool on) {
        if (dialog != nullptr) {
            dialog->isInAlert = on;
        }
    }

    NorvantaDialog* dialog;
};

namespace {

/// The dialog's window, or what it stood over when it has closed.
HWND WindowUnderAlert(const NorvantaDialog* dialog) {
    if (dialog == nullptr) {
        return nullptr;
    }
    return dialog->IsOpen() ? DialogWindow::Window(*dialog) : DialogWindow::OwnerOf(*dialog);
}

bool HasString(short id) {
    char text[textBufferSize];
    return LoadIndexedString(text, id, 0) == 0;
}

}  // namespace

short Alert(NorvantaDialog* dialog, short id, const char* text0, const char* text1,
            const char* text2, const char* text3) {
    const AlertSection section(dialog);
    if (dialog != nullptr) {
        platformServices.showArrowCursor();
    }
    int answer = 0;
    {
        const DialogSuspension suspension;
        answer = RunAlert(WindowUnderAlert(dialog), id, {text0, text1, text2, text3},
                          AlertIcon::warning);
    }
    if (dialogState.active != nullptr) {
        dialogState.active->AppActivate(true);
    }
    constexpr short firstKnownId = 2;
    if (answer == 0 && id >= firstKnownId) {
        FatalError(HasString(id) ? id : std::int16_t{faultResourceMissing}, sourceName, __LINE__);
    }
    return static_cast<short>(answer != 0 ? answer : int{cancelItem});
}
