#include "host/window/NativeWindow.Win.h"

#include <exception>
#include <new>
#include <stdexcept>

#include "base/WindowContext.Win.h"
#include "host/window/WindowResources.h"

namespace host {

namespace {

std::wstring Widened(std::string_view text, UINT codePage) {
    const int length = static_cast<int>(text.size());
    const int count = MultiByteToWideChar(codePage, 0, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(count), L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), length, wide.data(), count);
    return wide;
}

void RegisterOnce(const WindowParameters& parameters, WNDPROC procedure) {
    WNDCLASSEXW known{};
    known.cbSize = sizeof known;
    HINSTANCE instance = GetModuleHandleW(nullptr);
    if (GetClassInfoExW(instance, parameters.className, &known) != FALSE) {
        return;
    }
    WNDCLASSEXW windowClass{};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = parameters.classStyle;
    windowClass.lpfnWndProc = procedure;
    windowClass.hInstance = instance;
    windowClass.hIcon = LoadIconW(instance, MAKEINTRESOURCEW(ICON_PROGRAM));
    windowClass.hCursor =
        LoadCursorW(nullptr, parameters.cursor != nullptr ? parameters.cursor : IDC_ARROW);
    windowClass.lpszMenuName = parameters.menu;
    windowClass.lpszClassName = parameters.className;
    if (RegisterClassExW(&windowClass) == 0) {
        throw std::runtime_error("The window class cannot be registered.");
    }
}

}  // namespace

NativeWindow::~NativeWindow() {
    if (handle != nullptr) {
        // The derived part is gone: no message may reach it any more.
        SetWindowLongPtrW(handle, GWLP_USERDATA, 0);
        DestroyWindow(handle);
    }
}

void NativeWindow::Create(const WindowParameters& parameters) {
    RegisterOnce(parameters, Procedure);
    const RECT& place = parameters.place;
    CreateWindowExW(parameters.extendedStyle, parameters.className, parameters.title,
                    parameters.style, place.left, place.top, place.right, place.bottom,
                    parameters.parent, nullptr, GetModuleHandleW(nullptr), this);
    if (handle == nullptr) {
        throw std::runtime_error("The window cannot be made.");
    }
}

LRESULT NativeWindow::Default(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefWindowProcW(handle, message, wParam, lParam);
}

void NativeWindow::OnError(const std::string& text) {
    ShowError(handle, text);
}

LRESULT CALLBACK NativeWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        auto* created = static_cast<NativeWindow*>(creation->lpCreateParams);
        created->handle = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
    }
    auto* object = reinterpret_cast<NativeWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (object == nullptr) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    return object->Dispatch(message, wParam, lParam);
}

LRESULT NativeWindow::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    try {
        result = OnMessage(message, wParam, lParam);
    } catch (...) {
        OnError(CurrentErrorText());
    }
    if (message == WM_NCDESTROY) {
        handle = nullptr;
    }
    return result;
}

std::wstring Wide(std::string_view utf8) {
    return Widened(utf8, CP_UTF8);
}

std::wstring WideFromAnsi(std::string_view text) {
    return Widened(text, CP_ACP);
}

std::string Utf8(std::wstring_view text) {
    const int length = static_cast<int>(text.size());
    const int count =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(count), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, utf8.data(), count, nullptr, nullptr);
    return utf8;
}

int ScaledToScreen(int pixels) {
    const WindowContext screen = WindowContext::OfScreen();
    return MulDiv(pixels, GetDeviceCaps(screen.Get(), LOGPIXELSY), 96);
}

Size ClientSize(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

bool WriteToOutput(const std::string& text) {
    HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD written = 0;
    return output != nullptr && output != INVALID_HANDLE_VALUE &&
           WriteFile(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) !=
               FALSE;
}

void ShowError(HWND owner, const std::string& text) {
    MessageBoxW(owner, Wide(text).c_str(), programTitle, MB_OK | MB_ICONEXCLAMATION);
}

std::string CurrentErrorText() {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return "There is not enough memory.";
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "Something went wrong.";
    }
}

}  // namespace host
