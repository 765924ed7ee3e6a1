#include "framework/access/ItemAccessible.Win.h"

#include "base/Callback.Win.h"
#include "framework/dialog/DialogWindow.Win.h"

namespace {

LONG RoleNumber(ItemRole role) {
    switch (role) {
        case ItemRole::pushButton:
        case ItemRole::swatch:
            return ROLE_SYSTEM_PUSHBUTTON;
        case ItemRole::checkBox:
            return ROLE_SYSTEM_CHECKBUTTON;
        case ItemRole::radioButton:
            return ROLE_SYSTEM_RADIOBUTTON;
        case ItemRole::field:
            return ROLE_SYSTEM_TEXT;
        case ItemRole::slider:
            return ROLE_SYSTEM_SLIDER;
        case ItemRole::dial:
            return ROLE_SYSTEM_DIAL;
        case ItemRole::popup:
            return ROLE_SYSTEM_COMBOBOX;
        case ItemRole::scrollBar:
            return ROLE_SYSTEM_SCROLLBAR;
        case ItemRole::progress:
            return ROLE_SYSTEM_PROGRESSBAR;
        case ItemRole::text:
            return ROLE_SYSTEM_STATICTEXT;
        case ItemRole::picture:
            return ROLE_SYSTEM_GRAPHIC;
        case ItemRole::palette:
            return ROLE_SYSTEM_TOOLBAR;
        case ItemRole::group:
            return ROLE_SYSTEM_GROUPING;
        case ItemRole::border:
            return ROLE_SYSTEM_BORDER;
        case ItemRole::system:
            break;
    }
    return ROLE_SYSTEM_CLIENT;
}

/// The parts of a group are found by the place of the mouse, which a reader does not move.
bool CanPress(const ItemDescription& description, LONG child) {
    switch (description.role) {
        case ItemRole::pushButton:
        case ItemRole::swatch:
        case ItemRole::checkBox:
        case ItemRole::radioButton:
            return child == CHILDID_SELF;
        case ItemRole::palette:
        case ItemRole::group:
            return child != CHILDID_SELF;
        default:
            return false;
    }
}

/// The key that needs nothing else held, or the mnemonic.
std::string ShortcutText(const ItemPart* part, char mnemonic) {
    if (part != nullptr) {
        return part->key != '\0' ? std::string(1, part->key) : "";
    }
    return mnemonic != '\0' ? std::string("Alt+") + mnemonic : "";
}

VARIANT Self() {
    VARIANT self{};
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    return self;
}

const ItemPart* PartOf(const ItemDescription& description, LONG child) {
    return child != CHILDID_SELF ? &description.parts[static_cast<std::size_t>(child - 1)]
                                 : nullptr;
}

}  // namespace

// --- Life ---

ItemAccessible::ItemAccessible(NorvantaDialog& newDialog, short newItem, HWND newControl,
                               const AccessLibraries& newLibraries)
    : next(newest),
      dialog(&newDialog),
      item(newItem),
      control(newControl),
      libraries(newLibraries),
      thread(GetCurrentThreadId()) {
    if (next != nullptr) {
        next->previous = this;
    }
    newest = this;
}

ItemAccessible::~ItemAccessible() {
    (previous != nullptr ? previous->next : newest) = next;
    if (next != nullptr) {
        next->previous = previous;
    }
}

void ItemAccessible::Disconnect() {
    dialog = nullptr;
}

HRESULT ItemAccessible::QueryInterface(REFIID id, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = nullptr;
    if (id != __uuidof(IUnknown) && id != __uuidof(IDispatch) && id != __uuidof(IAccessible)) {
        return E_NOINTERFACE;
    }
    *object = static_cast<IAccessible*>(this);
    AddRef();
    return S_OK;
}

ULONG ItemAccessible::AddRef() {
    return static_cast<ULONG>(InterlockedIncrement(&holders));
}

ULONG ItemAccessible::Release() {
    const LONG left = InterlockedDecrement(&holders);
    if (left == 0) {
        delete this;
    }
    return static_cast<ULONG>(left);
}

HRESULT ItemAccessible::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

// --- The item ---

template <typename Work>
HRESULT ItemAccessible::WithChild(const VARIANT& child, Work work) const {
    if (GetCurrentThreadId() != thread) {
        return RPC_E_WRONG_THREAD;
    }
    if (dialog == nullptr || !dialog->IsOpen()) {
        return CO_E_OBJNOTCONNECTED;
    }
    return Guarded(E_OUTOFMEMORY, [&]() -> HRESULT {
        const ItemDescription description = dialog->Describe(item);
        const LONG parts = static_cast<LONG>(description.parts.size());
        const bool isChild = child.vt == VT_I4 && child.lVal >= CHILDID_SELF && child.lVal <= parts;
        return isChild ? work(description, child.lVal) : E_INVALIDARG;
    });
}

HRESULT ItemAccessible::GiveText(const std::string& text, BSTR* given) const {
    *given = nullptr;
    if (text.empty()) {
        return S_FALSE;
    }
    const int bytes = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), bytes, wide.data(), bytes);
    *given = libraries.makeText(wide.data(), static_cast<UINT>(length));
    return *given != nullptr ? S_OK : E_OUTOFMEMORY;
}

HRESULT ItemAccessible::get_accParent(IDispatch** parent) {
    *parent = nullptr;
    if (dialog == nullptr) {
        return CO_E_OBJNOTCONNECTED;
    }
    return libraries.objectOf(control, static_cast<DWORD>(OBJID_WINDOW), __uuidof(IDispatch),
                              reinterpret_cast<void**>(parent));
}

HRESULT ItemAccessible::get_accChildCount(LONG* count) {
    *count = 0;
    return WithChild(Self(), [&](const ItemDescription& description, LONG) {
        *count = static_cast<LONG>(description.parts.size());
        return S_OK;
    });
}

HRESULT ItemAccessible::get_accChild(VARIANT child, IDispatch** object) {
    *object = nullptr;
    // The parts have no objects of their own.
    return WithChild(child, [](const ItemDescription&, LONG) { return S_FALSE; });
}

HRESULT ItemAccessible::get_accName(VARIANT child, BSTR* name) {
    *name = nullptr;
    return WithChild(child, [&](const ItemDescription& description, LONG id) {
        const ItemPart* const part = PartOf(description, id);
        return GiveText(part != nullptr ? part->name : description.name, name);
    });
}

HRESULT ItemAccessible::get_accValue(VARIANT child, BSTR* value) {
    *value = nullptr;
    return WithChild(child, [&](const ItemDescription& description, LONG id) {
        const ItemPart* const part = PartOf(description, id);
        return GiveText(part != nullptr ? part->value : description.value, value);
    });
}

HRESULT ItemAccessible::get_accDescription(VARIANT child, BSTR* description) {
    return get_accHelp(child, description);
}

HRESULT ItemAccessible::get_accRole(VARIANT child, VARIANT* role) {
    return WithChild(child, [&](const ItemDescription& description, LONG id) {
        const LONG ofPart = description.role == ItemRole::palette ? ROLE_SYSTEM_RADIOBUTTON
                                                                  : ROLE_SYSTEM_PUSHBUTTON;
        role->vt = VT_I4;
        role->lVal = id != CHILDID_SELF ? ofPart : RoleNumber(description.role);
        return S_OK;
    });
}

LONG ItemAccessible::StateOf(const ItemDescription& description, LONG child) const {
    const LONG style = GetWindowLongA(control, GWL_STYLE);
    LONG state = IsWindowEnabled(control) ? 0 : STATE_SYSTEM_UNAVAILABLE;
    state |= IsWindowVisible(control) ? 0 : STATE_SYSTEM_INVISIBLE;
    if (const ItemPart* const part = PartOf(description, child)) {
        state |= part->isChosen ? STATE_SYSTEM_CHECKED : 0;
        const bool isFocused = child == description.focusedPart && GetFocus() == control;
        return state | (isFocused ? STATE_SYSTEM_FOCUSABLE | STATE_SYSTEM_FOCUSED : 0);
    }
    // Arrows lead to the radio buttons that Tab passes by.
    const bool isRadio = (SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0;
    if ((style & WS_TABSTOP) != 0 || isRadio) {
        state |= state == 0 ? STATE_SYSTEM_FOCUSABLE : 0;
    }
    state |= GetFocus() == control ? STATE_SYSTEM_FOCUSED : 0;
    state |= description.isChosen ? STATE_SYSTEM_CHECKED : 0;
    return state | (description.role == ItemRole::popup ? STATE_SYSTEM_HASPOPUP : 0);
}

HRESULT ItemAccessible::get_accState(VARIANT child, VARIANT* state) {
    return WithChild(child, [&](const ItemDescription& description, LONG id) {
        state->vt = VT_I4;
        state->lVal = StateOf(description, id);
        return S_OK;
    });
}

HRESULT ItemAccessible::get_accHelp(VARIANT child, BSTR* help) {
    *help = nullptr;
    return WithChild(child, [&](const ItemDescription& description, LONG id) {
        return GiveText(id == CHILDID_SELF ? description.help : "", help);
    });
}

HRESULT ItemAccessible::get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) {
    *shortcut = nullptr;
    return WithChild(child, [&](const ItemDescription& description, LONG id) {
        return GiveText(ShortcutText(PartOf(description, id), dialog->KeyOf(item)), shortcut);
    });
}

HRESULT ItemAccessible::get_accFocus(VARIANT* child) {
    child->vt = VT_EMPTY;
    return WithChild(Self(), [&](const ItemDescription& description, LONG) {
        if (GetFocus() != control) {
            return S_FALSE;
        }
        child->vt = VT_I4;
        child->lVal = description.focusedPart;
        return S_OK;
    });
}

HRESULT ItemAccessible::get_accSelection(VARIANT* children) {
    children->vt = VT_EMPTY;
    return WithChild(Self(), [&](const ItemDescription& description, LONG) {
        for (std::size_t i = 0; i < description.parts.size(); ++i) {
            if (description.parts[i].isChosen) {
                children->vt = VT_I4;
                children->lVal = static_cast<LONG>(i + 1);
                return S_OK;
            }
        }
        return S_FALSE;
    });
}

// --- Places ---

RECT ItemAccessible::PlaceOf(const ItemDescription& description, LONG child) const {
    const ItemPart* const part = PartOf(description, child);
    const hostapi::Rect bounds = part != nullptr ? part->bounds : dialog->GetBounds(item);
    RECT rect{bounds.left, bounds.top, bounds.right, bounds.bottom};
    MapWindowPoints(static_cast<HWND>(dialog->Window()), nullptr, reinterpret_cast<POINT*>(&rect),
                    2);
    return rect;
}

HRESULT ItemAccessible::accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                    VARIANT child) {
    return WithChild(child, [&](const ItemDescription& description, LONG id) {
        const RECT place = PlaceOf(description, id);
        *left = place.left;
        *top = place.top;
        *width = place.right - place.left;
        *height = place.bottom - place.top;
        return S_OK;
    });
}

HRESULT ItemAccessible::accHitTest(LONG left, LONG top, VARIANT* child) {
    child->vt = VT_EMPTY;
    return WithChild(Self(), [&](const ItemDescription& description, LONG) {
        for (LONG id = static_cast<LONG>(description.parts.size()); id >= CHILDID_SELF; --id) {
            const RECT place = PlaceOf(description, id);
            if (PtInRect(&place, {left, top})) {
                child->vt = VT_I4;
                child->lVal = id;
                return S_OK;
            }
        }
        return S_FALSE;
    });
}

HRESULT ItemAccessible::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
    end->vt = VT_EMPTY;
    return WithChild(start, [&](const ItemDescription& description, LONG id) {
        const LONG last = static_cast<LONG>(description.parts.size());
        LONG to = 0;
        if (id == CHILDID_SELF) {
            to = direction == NAVDIR_FIRSTCHILD ? 1 : direction == NAVDIR_LASTCHILD ? last : 0;
        } else {
            to = direction == NAVDIR_NEXT ? id + 1 : direction == NAVDIR_PREVIOUS ? id - 1 : 0;
        }
        if (to < 1 || to > last) {
            return S_FALSE;
        }
        end->vt = VT_I4;
        end->lVal = to;
        return S_OK;
    });
}

// --- Doing ---

HRESULT ItemAccessible::accSelect(LONG flags, VARIANT child) {
    return WithChild(child, [&](const ItemDescription& description, LONG id) {
        const bool canFocus = (StateOf(description, CHILDID_SELF) & STATE_SYSTEM_FOCUSABLE) != 0;
        if (flags != SELFLAG_TAKEFOCUS || id != CHILDID_SELF || !canFocus) {
            return E_INVALIDARG;
        }
        dialog->SetFocus(item);
        return S_OK;
    });
}

HRESULT ItemAccessible::get_accDefaultAction(VARIANT child, BSTR* action) {
    *action = nullptr;
    return WithChild(child, [&](const ItemDescription& description, LONG id) {
        return GiveText(CanPress(description, id) ? "Press" : "", action);
    });
}

/// Posted, as the mouse does it: the press may open a dialog, and a screen reader cannot wait for
/// its end.
HRESULT ItemAccessible::accDoDefaultAction(VARIANT child) {
    return WithChild(child, [&](const ItemDescription& description, LONG id) -> HRESULT {
        if (!IsWindowEnabled(control) || !IsWindowEnabled(static_cast<HWND>(dialog->Window()))) {
            return E_ACCESSDENIED;
        }
        if (!CanPress(description, id)) {
            return DISP_E_MEMBERNOTFOUND;
        }
        if (description.role == ItemRole::group) {
            // Where the dialog looks for the mouse, it is not.
            PostMessageA(static_cast<HWND>(dialog->Window()), messageUsePart,
                         static_cast<WPARAM>(item), id);
            return S_OK;
        }
        const RECT place = PlaceOf(description, id);
        POINT middle{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
        ScreenToClient(control, &middle);
        const LPARAM at = MAKELPARAM(middle.x, middle.y);
        PostMessageA(control, WM_LBUTTONDOWN, MK_LBUTTON, at);
        PostMessageA(control, WM_LBUTTONUP, 0, at);
        return S_OK;
    });
}
