#include "tests/e2e/InputDesktop.Win.h"

#include <stdexcept>
#include <utility>

namespace {

INPUT KeyInput(const KeyEvent& event) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = event.key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(event.key, 0));
    input.ki.dwFlags = event.isPressed ? 0 : KEYEVENTF_KEYUP;
    return input;
}

void Send(std::vector<INPUT> inputs) {
    const UINT count = static_cast<UINT>(inputs.size());
    if (SendInput(count, inputs.data(), sizeof(INPUT)) != count)
        throw std::runtime_error("SendInput failed");
}

void SendMouse(DWORD flags, LONG x = 0, LONG y = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = x;
    input.mi.dy = y;
    input.mi.dwFlags = flags;
    Send({input});
}

// The system counts absolute positions in 65536ths of the screen.
LONG Absolute(LONG pixel, int screenLength) {
    return (pixel * 65536 + screenLength - 1) / screenLength;
}

std::wstring MakeDesktop() {
    const std::wstring name = L"test" + std::to_wstring(GetCurrentProcessId());
    HDESK desktop = CreateDesktopW(name.c_str(), nullptr, nullptr, 0, GENERIC_ALL, nullptr);
    if (desktop == nullptr || SetThreadDesktop(desktop) == FALSE)
        throw std::runtime_error("the test's desktop cannot be made");
    return name;
}

}  // namespace

const std::wstring& EnterOwnDesktop() {
    static const std::wstring name = MakeDesktop();
    return name;
}

void SendKey(const KeyEvent& event) {
    Send({KeyInput(event)});
}

void SendChords(const std::vector<std::vector<WORD>>& chords) {
    std::vector<INPUT> inputs;
    for (const auto& keys : chords) {
        for (WORD key : keys)
            inputs.push_back(KeyInput({key, true}));
        for (auto key = keys.rbegin(); key != keys.rend(); ++key)
            inputs.push_back(KeyInput({*key, false}));
    }
    Send(std::move(inputs));
}

void MoveMouse(POINT place) {
    SendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE,
              Absolute(place.x, GetSystemMetrics(SM_CXSCREEN)),
              Absolute(place.y, GetSystemMetrics(SM_CYSCREEN)));
}

void PressMouse() {
    SendMouse(MOUSEEVENTF_LEFTDOWN);
}

void ReleaseMouse() {
    SendMouse(MOUSEEVENTF_LEFTUP);
}

void TurnWheel(int notches) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.mouseData = static_cast<DWORD>(-notches * WHEEL_DELTA);
    input.mi.dwFlags = MOUSEEVENTF_WHEEL;
    Send({input});
}
