// The life of a dialog's window. Its controls are in DialogItems.Win.cpp, its place on the screen
// in DialogPlacement.Win.cpp, the mouse in DialogMouse.Win.cpp.
#include "framework/dialog/NorvantaDialog.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>

#include "base/FatalError.h"
#include "base/HostServices.h"
#include "base/Module.Win.h"
#include "base/WindowContext.Win.h"
#include "framework/access/Accessibility.Win.h"
#include "framework/controls/ControlClasses.Win.h"
#include "framework/dialog/ChildWindows.Win.h"
#include "framework/dialog/DialogState.h"
#include "framework/dialog/DialogWindow.Win.h"
#include "framework/dialog/DisabledWindows.Win.h"
#include "framework/dialog/ProgramEnd.Win.h"
#include "framework/dialog/StackingOrder.h"
#include "framework/drawing/GdiObject.Win.h"
#include "framework/drawing/InterfaceLib.Win.h"
#include "framework/drawing/ScreenScale.Win.h"
#include "framework/fields/NumberField.h"

namespace {

constexpr char sourceName[] = "NorvantaDialog.Win";
constexpr UINT idlePeriod = 10;
constexpr UINT_PTR idleTimer = 1;
/// The accelerators of dialogs without a table of their own.
constexpr int editAccelerators = 18000;

/// The host's palettes, as long as there are dialogs.
DisabledWindows hostsOtherWindows;

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
/// whatever the locale; that is intended.
NumberCharacters LocaleCharacters() {
    return {LocaleCharacter(LOCALE_SDECIMAL), LocaleCharacter(LOCALE_SDECIMAL),
            LocaleCharacter(LOCALE_SPOSITIVESIGN), LocaleCharacter(LOCALE_SNEGATIVESIGN)};
}

/// Those with the ids 1, 2 and so on, up to the first id that none has. Of several with one id it
/// is the topmost. `children` are from the top.
std::vector<void*> ControlsAmong(const std::vector<void*>& children) {
    std::vector<void*> controls(children.size());
    for (void* const child : children) {
        const auto place =
            static_cast<std::size_t>(GetDlgCtrlID(static_cast<HWND>(child))) - std::size_t{1};
        if (place < controls.size() && controls[place] == nullptr) {
            controls[place] = child;
        }
    }
    controls.erase(std::find(controls.begin(), controls.end(), nullptr), controls.end());
    return controls;
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
        // The host's own, so that none of its windows takes input meanwhile; another one may be
        // active, or none when the user has gone to another program.
        dialogState.rootWindow = hostWindow != nullptr ? hostWindow : GetActiveWindow();
        hostsOtherWindows.Disable(static_cast<HWND>(dialogState.rootWindow));
        RegisterControlClasses();
        DialogWindow::InstallFilter();
        ProgramEnd::Watch();
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
        ProgramEnd::Unwatch();
        DialogWindow::RemoveFilter();
        UnregisterControlClasses();
        hostsOtherWindows.Restore();
        accessibility::Release();
        dialogState = DialogState{};
    }
}

void NorvantaDialog::Create() {
    dialogState.openingResource = resourceId;
    StartScale();
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
    StartScale();
    isClosing = false;
    result = 0;
    // A control that holds the mouse would keep it from the dialog.
    ReleaseCapture();
    const INT_PTR answer =
        DialogBoxParamA(instanceHandle, ResourceName(resourceId), DialogWindow::OwnerOf(*this),
                        DialogWindow::Procedure, reinterpret_cast<LPARAM>(this));
    if (answer == -1 || (!isClosing && !windowExists)) {
        FatalError(faultResourceMissing, sourceName, __LINE__);
    }
    if (!isClosing) {
        // The program is to end: the system has left the loop, and has put its message back for the
        // loops around this one.
        DialogWindow::TakeQuit(*this);
    }
    return result;
}

/// The window is gone already.
void DialogWindow::TakeQuit(NorvantaDialog& dialog) {
    EndScrolling(dialog);
    accessibility::Disconnect(dialog);
    dialog.isClosing = true;
    dialog.result = cancelItem;
    dialog.timer = 0;
    dialog.windowExists = false;
    dialog.isShown = false;
    Forget(dialog);
}

void NorvantaDialog::Setup() {
    const HWND window = DialogWindow::Window(*this);
    scale = KeepScale(window);
    DialogWindow::CountItems(*this);
    DialogWindow::FitPictures(*this);
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
    DialogWindow::NoteFirstSize(*this);
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
    accessibility::Disconnect(*this);
    windowExists = false;
    // The window's own message of this does not find the dialog any more.
    DialogWindow::Forget(*this);
    // A menu of the dialog would stay on the screen, and its loop go on.
    EndMenu();
    if (kind == Kind::modal) {
        EndDialog(window, newResult);
        DialogWindow::FreePictures(*this);
    } else {
        DialogWindow::FreePictures(*this);
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
    dialog.items.clear();
    dialog.stacking = ChildrenOf(Window(dialog));
    for (void* const control : ControlsAmong(dialog.stacking)) {
        ItemRecord record;
        record.control = control;
        char className[64];
        GetClassNameA(static_cast<HWND>(control), className, static_cast<int>(sizeof className));
        record.kind = KindOfClass(className);
        dialog.items.push_back(record);
    }
    dialog.itemCount = static_cast<short>(dialog.items.size());
    if (dialog.itemCount == 0) {
        FatalError(faultBadArgument, sourceName, __LINE__);
    }
    OrderControls(dialog);
    PrepareControls(dialog.items);
    for (const ItemRecord& served : dialog.items) {
        if (dialog.ControlRole(served) != ItemRole::system) {
            accessibility::Serve(static_cast<HWND>(served.control));
        }
    }
}

/// The tab order is the items', but for what the dialog has asked for. Whatever of it the template
/// has already is no move.
void DialogWindow::OrderControls(NorvantaDialog& dialog) {
    std::vector<void*> controls;
    for (const ItemRecord& record : dialog.items) {
        controls.push_back(record.control);
    }
    const std::vector<void*> byNumber =
        Restacked(dialog.stacking, controls, FirstWindow::goesToTop);
    StackInOrder(Restacked(byNumber, dialog.ControlsOf(dialog.tabOrder), FirstWindow::stays),
                 dialog.stacking);
}

void DialogWindow::MeasureText(NorvantaDialog& dialog) {
    const HWND window = Window(dialog);
    const WindowContext context(window);
    const auto font = reinterpret_cast<HGDIOBJ>(SendMessageA(window, WM_GETFONT, 0, 0));
    const Selection selected(context.Get(), font != nullptr ? font : GetStockObject(SYSTEM_FONT));
    TEXTMETRICA metrics{};
    GetTextMetricsA(context.Get(), &metrics);
    dialog.textHeight = static_cast<short>(metrics.tmHeight);
    dialog.textAscent = static_cast<short>(metrics.tmAscent);
    dialog.textDescent = static_cast<short>(metrics.tmDescent);
}

// --- The window ---

void* NorvantaDialog::Window() const {
    return systemWindow;
}

void NorvantaDialog::UpdateNow() {
    CheckWindow();
    UpdateWindow(DialogWindow::Window(*this));
}

bool NorvantaDialog::NeedsPaint(const hostapi::Rect& rect) const {
    CheckWindow();
    RECT invalid{};
    const RECT asked = ToSystem(rect);
    RECT both{};
    return GetUpdateRect(DialogWindow::Window(*this), &invalid, FALSE) != FALSE &&
           IntersectRect(&both, &invalid, &asked) != FALSE;
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
    // The small one first: without it the system makes one of the large.
    SendMessageA(window, WM_SETICON, ICON_SMALL, load(SM_CXSMICON, SM_CYSMICON));
    SendMessageA(window, WM_SETICON, ICON_BIG, load(SM_CXICON, SM_CYICON));
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

void NorvantaDialog::SetDropHandler(DropHandler handler, void* context) {
    dropHandler = handler;
    dropContext = context;
    if (windowExists) {
        DragAcceptFiles(DialogWindow::Window(*this), handler != nullptr ? TRUE : FALSE);
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
    // -1 notes the state and draws nothing: a hidden window draws its caption when it is shown.
    CallWindowProcA(reinterpret_cast<WNDPROC>(systemProcedure), window, WM_NCACTIVATE,
                    on ? TRUE : FALSE, IsWindowVisible(window) ? 0 : -1);
    if (kind == Kind::floating) {
        EnableWindow(window, on ? TRUE : FALSE);
    }
    if (!on) {
        ShowHelp(0);
    }
}

void NorvantaDialog::PaintMessage() {
    const HWND window = DialogWindow::Window(*this);
    Region& update = port->PaintRegion();
    GetUpdateRgn(window, static_cast<HRGN>(update.Handle()), FALSE);
    const PaintContext context(window);
    port->SetExtraClip(&update);
    // Removes the clip on every path, a throw from drawing included.
    struct Ending {
        NorvantaDialog& dialog;
        ~Ending() { dialog.port->SetExtraClip(nullptr); }
    } const ending{*this};
    Paint(update);
}
