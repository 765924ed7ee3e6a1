// The parts of the system that readers are served with; they need not be there.
#pragma once

#include <windows.h>

#include <oleacc.h>

class AccessLibraries {
  public:
    AccessLibraries();
    AccessLibraries(const AccessLibraries&) = delete;
    AccessLibraries& operator=(const AccessLibraries&) = delete;
    ~AccessLibraries();

    /// All of them are there, and this thread takes calls one after the other, by its messages.
    bool AreUsable() const { return isApartment; }

    LRESULT(WINAPI* resultOf)(REFIID, WPARAM, LPUNKNOWN) = nullptr;
    HRESULT(WINAPI* objectOf)(HWND, DWORD, REFIID, void**) = nullptr;
    HRESULT(WINAPI* disconnect)(LPUNKNOWN, DWORD) = nullptr;
    BSTR(WINAPI* makeText)(const OLECHAR*, UINT) = nullptr;

  private:
    HMODULE access;
    HMODULE objects;
    HMODULE automation;
    HRESULT(WINAPI* initialize)(void*, DWORD) = nullptr;
    void(WINAPI* uninitialize)() = nullptr;
    bool isApartment = false;
};
