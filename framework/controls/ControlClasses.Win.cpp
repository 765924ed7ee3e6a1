#include "framework/controls/ControlClasses.Win.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "base/Module.Win.h"
#include "base/TryMake.h"
#include "framework/controls/ControlSupport.Win.h"
#include "framework/controls/SystemLibrary.Win.h"
#include "framework/dialog/StackingOrder.h"
#include "framework/dialog/TabNames.h"
#include "framework/drawing/InterfaceLib.Win.h"

namespace {

constexpr char bitmapButtonClass[] = "tBitmapButton";

struct ControlClass {
    const char* name;
    WNDPROC procedure;
};

constexpr ControlClass controlClasses[] = {
    {"tToolPalette", ToolPaletteProcedure}, {"tPopupMenu", PopupMenuProcedure},
    {"tRealtimeMenu", PopupMenuProcedure},  {"tLinearSlider", LinearSliderProcedure},
    {"tPadLock", PadLockProcedure},         {"tUserItem", UserItemProcedure},
};

void Register(const ControlClass& control, HCURSOR arrow) {
    WNDCLASSA windowClass{};
    windowClass.style = CS_DBLCLKS;
    windowClass.lpfnWndProc = control.procedure;
    windowClass.cbWndExtra = static_cast<int>(sizeof(LONG_PTR));
    windowClass.hInstance = instanceHandle;
    windowClass.hCursor = arrow;
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    windowClass.lpszClassName = control.name;
    RegisterClassA(&windowClass);
}

void RegisterBitmapButton() {
    WNDCLASSA windowClass{};
    if (!GetClassInfoA(nullptr, "BUTTON", &windowClass)) {
        return;
    }
    TakeOverButton(windowClass);
    windowClass.style &= ~static_cast<UINT>(CS_GLOBALCLASS | CS_PARENTDC);
    windowClass.hInstance = instanceHandle;
    windowClass.lpszClassName = bitmapButtonClass;
    RegisterClassA(&windowClass);
}

/// BM_SETDONTCLICK, which older headers and systems don't know.
constexpr UINT setDontClick = 0x00F8;

/// The system's theme library; not there on every system.
class ThemeLibrary {
  public:
    ThemeLibrary() : library(LoadSystemLibrary(L"uxtheme.dll")) {
        if (library != nullptr) {
            setTheme = reinterpret_cast<SetTheme>(
                reinterpret_cast<void*>(GetProcAddress(library, "SetWindowTheme")));
        }
    }
    ThemeLibrary(const ThemeLibrary&) = delete;
    ThemeLibrary& operator=(const ThemeLibrary&) = delete;
    ~ThemeLibrary() {
        if (library != nullptr) {
            FreeLibrary(library);
        }
    }

    void SwitchOff(HWND control) const {
        // A system that takes no empty names knows no theme by the name of a blank either.
        if (setTheme != nullptr && FAILED(setTheme(control, L"", L""))) {
            setTheme(control, L" ", L" ");
        }
    }

  private:
    using SetTheme = HRESULT(WINAPI*)(HWND, LPCWSTR, LPCWSTR);

    HMODULE library;
    SetTheme setTheme = nullptr;
};

std::unique_ptr<ThemeLibrary> themes;

void BuildTabs(HWND control) {
    char text[textBufferSize];
    GetWindowTextA(control, text, static_cast<int>(sizeof text));
    int index = 0;
    for (std::string& name : TabNames(text)) {
        TCITEMA tab{};
        tab.mask = TCIF_TEXT;
        tab.pszText = name.data();
        SendMessageA(control, TCM_INSERTITEMA, static_cast<WPARAM>(index++),
                     reinterpret_cast<LPARAM>(&tab));
    }
}

}  // namespace

void RegisterControlClasses() {
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_TAB_CLASSES};
    InitCommonControlsEx(&controls);
    const HCURSOR arrow = LoadCursor(nullptr, IDC_ARROW);
    for (const ControlClass& control : controlClasses) {
        Register(control, arrow);
    }
    RegisterBitmapButton();
    // TryMake returns null without memory: themes change only the look, and a throw from here would
    // leave the classes registered.
    themes = TryMake<ThemeLibrary>();
}

void UnregisterControlClasses() {
    for (const ControlClass& control : controlClasses) {
        UnregisterClassA(control.name, instanceHandle);
    }
    UnregisterClassA(bitmapButtonClass, instanceHandle);
    FreePaintBuffer();
    themes.reset();
}

void StackInOrder(const std::vector<void*>& wanted, std::vector<void*>& stacking) {
    std::vector<std::size_t> places;
    for (void* const window : wanted) {
        places.push_back(static_cast<std::size_t>(
            std::find(stacking.begin(), stacking.end(), window) - stacking.begin()));
    }
    for (const std::size_t index : WindowsToMove(places)) {
        const HWND window = static_cast<HWND>(wanted[index]);
        SetWindowPos(window, index == 0 ? HWND_TOP : static_cast<HWND>(wanted[index - 1]), 0, 0, 0,
                     0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | RedrawOfMoved(window));
    }
    stacking = wanted;
}

UINT RedrawOfMoved(HWND control) {
    return IsWindowVisible(control) ? UINT{0} : UINT{SWP_NOREDRAW | SWP_DEFERERASE};
}

void PrepareControls(const std::vector<ItemRecord>& items) {
    for (const ItemRecord& record : items) {
        const HWND control = static_cast<HWND>(record.control);
        if (themes != nullptr) {
            themes->SwitchOff(control);
        }
        if (record.Letter() == itemButton) {
            // A radio button that gets the focus would count as pressed.
            SendMessageA(control, setDontClick, TRUE, 0);
        }
        if (record.kind == itemTab) {
            BuildTabs(control);
        } else if (record.IsEditField()) {
            SendMessageA(control, EM_LIMITTEXT, maximalTextLength, 0);
        }
    }
}
