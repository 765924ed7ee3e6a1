#include "tests/support/windows/ScreenReader.Win.h"

#include "fixtures/WindowAccess.Win.h"

namespace {

VARIANT Child(LONG id) {
    VARIANT child{};
    child.vt = VT_I4;
    child.lVal = id;
    return child;
}

void Expect(HRESULT result, const char* what) {
    if (result != S_OK) {
        throw GuiError(std::string(what) + " is refused: " + std::to_string(result));
    }
}

/// The text that the method returns, if any.
template <typename Method>
std::string TextBy(IAccessible* object, Method method, LONG id, const char* what) {
    BSTR text = nullptr;
    const HRESULT result = (object->*method)(Child(id), &text);
    if (result == S_FALSE || result == DISP_E_MEMBERNOTFOUND) {
        return "";
    }
    Expect(result, what);
    std::string narrow(text, text + SysStringLen(text));
    SysFreeString(text);
    return narrow;
}

template <typename Method>
long NumberBy(IAccessible* object, Method method, LONG id, const char* what) {
    VARIANT number{};
    Expect((object->*method)(Child(id), &number), what);
    return number.lVal;
}

Heard HearChild(IAccessible* object, LONG id) {
    Heard heard;
    heard.role = NumberBy(object, &IAccessible::get_accRole, id, "the role");
    heard.state = NumberBy(object, &IAccessible::get_accState, id, "the state");
    heard.name = TextBy(object, &IAccessible::get_accName, id, "the name");
    heard.value = TextBy(object, &IAccessible::get_accValue, id, "the value");
    heard.shortcut = TextBy(object, &IAccessible::get_accKeyboardShortcut, id, "the key");
    return heard;
}

}  // namespace

VARIANT WholeItem() {
    return Child(CHILDID_SELF);
}

ScreenReader::ScreenReader() {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
}

ScreenReader::~ScreenReader() {
    CoUninitialize();
}

IAccessible* ScreenReader::ObjectOf(HWND control) const {
    void* object = nullptr;
    AccessibleObjectFromWindow(control, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                               &object);
    return static_cast<IAccessible*>(object);
}

Heard ScreenReader::Hear(HWND control) const {
    struct Held {
        IAccessible* object;
        ~Held() {
            if (object != nullptr) {
                object->Release();
            }
        }
    } const held{ObjectOf(control)};
    if (held.object == nullptr) {
        throw GuiError("a control gives no object");
    }
    Heard heard = HearChild(held.object, CHILDID_SELF);
    LONG count = 0;
    Expect(held.object->get_accChildCount(&count), "the number of parts");
    for (LONG id = 1; id <= count; ++id) {
        heard.parts.push_back(HearChild(held.object, id));
    }
    return heard;
}
