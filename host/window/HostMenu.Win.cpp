#include "host/window/HostMenu.Win.h"

#include <initializer_list>

#include "host/window/FilterMenu.Win.h"
#include "host/window/NativeWindow.Win.h"
#include "host/window/WindowResources.h"

namespace host {

namespace {

void Enable(HMENU menu, UINT command, bool isEnabled) {
    EnableMenuItem(menu, command,
                   MF_BYCOMMAND | static_cast<UINT>(isEnabled ? MF_ENABLED : MF_GRAYED));
}

std::wstring StepText(const wchar_t* verb, const std::string& name, const wchar_t* keys) {
    return verb + (name.empty() ? L"" : L" " + Wide(name)) + keys;
}

}  // namespace

void UpdateMenu(HMENU menu, const MenuState& state) {
    const Document* const document = state.document;
    const bool hasPicture = document != nullptr;
    for (UINT command : std::initializer_list<UINT>{
             COMMAND_SAVE_AS, COMMAND_SELECT_ALL, COMMAND_BOUNDS, COMMAND_ZOOM_IN, COMMAND_ZOOM_OUT,
             COMMAND_ACTUAL_SIZE, COMMAND_FIT}) {
        Enable(menu, command, hasPicture);
    }
    Enable(menu, COMMAND_DESELECT, hasPicture && document->Selected().isExplicit);
    Enable(menu, COMMAND_UNDO, hasPicture && document->CanUndo());
    Enable(menu, COMMAND_REDO, hasPicture && document->CanRedo());
    SetItemText(menu, COMMAND_UNDO,
                StepText(L"&Undo", hasPicture ? document->UndoName() : "", L"\tCtrl+Z"));
    SetItemText(menu, COMMAND_REDO,
                StepText(L"&Redo", hasPicture ? document->RedoName() : "", L"\tCtrl+Y"));
    CheckMenuRadioItem(menu, COMMAND_RECTANGLE, COMMAND_ELLIPSE,
                       state.shape == SelectionShape::ellipse ? COMMAND_ELLIPSE : COMMAND_RECTANGLE,
                       MF_BYCOMMAND);
    for (std::size_t filter = 0; filter < state.filterCount; ++filter) {
        Enable(menu, COMMAND_FIRST_FILTER + static_cast<UINT>(filter), hasPicture);
    }
    Enable(menu, COMMAND_LAST_FILTER, hasPicture && state.lastFilter);
    const std::string last = state.lastFilter.value_or("");
    SetItemText(menu, COMMAND_LAST_FILTER,
                L"&Last Filter" + (last.empty() ? L"" : L": " + WideFromAnsi(last)) + L"\tCtrl+F");
}

}  // namespace host
