#include "framework/access/Accessibility.Win.h"

#include <unordered_map>

#include "base/Callback.Win.h"
#include "base/TryMake.h"
#include "framework/access/ItemAccessible.Win.h"
#include "framework/dialog/DialogWindow.Win.h"

namespace {

/// From the first question to the end of the last dialog.
std::unique_ptr<AccessLibraries> libraries;

/// The controls' own procedures. A property of the window would do, but to read it is a call of the
/// system's server for every message of every control.
std::unordered_map<HWND, WNDPROC> ownProcedures;

WNDPROC OwnProcedure(HWND control) {
    const auto found = ownProcedures.find(control);
    return found != ownProcedures.end() ? found->second : nullptr;
}

LRESULT AnswerFor(HWND control, WPARAM wParam) {
    NorvantaDialog* const dialog = DialogWindow::Of(GetParent(control));
    const short item = static_cast<short>(GetDlgCtrlID(control));
    if (dialog == nullptr || item < 1 || item > dialog->ItemCount() ||
        dialog->Describe(item).role == ItemRole::system) {
        return 0;
    }
    if (libraries == nullptr) {
        libraries = TryMake<AccessLibraries>();
    }
    if (libraries == nullptr || !libraries->AreUsable()) {
        return 0;
    }
    auto* const object = new ItemAccessible(*dialog, item, control, *libraries);
    const LRESULT result = libraries->resultOf(__uuidof(IAccessible), wParam, object);
    // Whoever asked holds it now.
    object->Release();
    // Errors are negative.
    return result > 0 ? result : 0;
}

LRESULT CALLBACK ServingProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam) {
    const WNDPROC own = OwnProcedure(control);
    if (own == nullptr) {
        return DefWindowProcA(control, message, wParam, lParam);
    }
    if (message == WM_GETOBJECT) {
        if (const LRESULT answer = accessibility::Answer(control, wParam, lParam)) {
            return answer;
        }
    }
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrA(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(own));
        ownProcedures.erase(control);
    }
    return CallWindowProcA(own, control, message, wParam, lParam);
}

}  // namespace

namespace accessibility {

LRESULT Answer(HWND control, WPARAM wParam, LPARAM lParam) {
    // The number of the object has 32 bits, with zeros above them or not.
    if (static_cast<LONG>(lParam) != OBJID_CLIENT) {
        return 0;
    }
    return Guarded(LRESULT{0}, [&] { return AnswerFor(control, wParam); });
}

void Serve(HWND control) {
    const LONG_PTR own = GetWindowLongPtrA(control, GWLP_WNDPROC);
    ownProcedures[control] = reinterpret_cast<WNDPROC>(own);
    SetWindowLongPtrA(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&ServingProcedure));
}

void Disconnect(const NorvantaDialog& dialog) {
    for (ItemAccessible* object = ItemAccessible::Newest(); object != nullptr;) {
        if (!object->IsOf(dialog)) {
            object = object->Next();
            continue;
        }
        // Releases the references that readers in other processes hold, so that those processes can
        // end.
        object->Disconnect();
        object->AddRef();
        libraries->disconnect(object, 0);
        object->Release();
        object = ItemAccessible::Newest();
    }
}

void Release() {
    if (ItemAccessible::Newest() == nullptr) {
        libraries.reset();
        return;
    }
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCSTR>(&ServingProcedure), &module);
}

int ObjectCount() {
    int count = 0;
    for (const ItemAccessible* object = ItemAccessible::Newest(); object != nullptr;
         object = object->Next()) {
        ++count;
    }
    return count;
}

}  // namespace accessibility
