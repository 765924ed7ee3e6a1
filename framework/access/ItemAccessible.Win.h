// The object that tells a screen reader of one item.
#pragma once

#include "framework/access/AccessLibraries.Win.h"
#include "framework/access/ItemDescription.h"
#include "framework/dialog/NorvantaDialog.h"

// The system's interfaces have no virtual destructor: objects end in Release alone.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// Lives as long as somebody holds it, the dialog or not. Parts of the item are its children,
/// counted from 1. All in the dialogs' thread; calls of others, and those after Disconnect, end
/// with an error.
class ItemAccessible final : public IAccessible {
  public:
    /// With one holder.
    ItemAccessible(NorvantaDialog& newDialog, short newItem, HWND newControl,
                   const AccessLibraries& newLibraries);
    ItemAccessible(const ItemAccessible&) = delete;
    ItemAccessible& operator=(const ItemAccessible&) = delete;

    bool IsOf(const NorvantaDialog& other) const { return dialog == &other; }
    /// The dialog is not asked any more.
    void Disconnect();
    /// The newest of those that somebody holds; null for none.
    static ItemAccessible* Newest() { return newest; }
    ItemAccessible* Next() const { return next; }

    // IUnknown

    STDMETHODIMP QueryInterface(REFIID id, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    // IDispatch: the methods are not found by their names.

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                        UINT*) override {
        return E_NOTIMPL;
    }

    // IAccessible

    STDMETHODIMP get_accParent(IDispatch** parent) override;
    STDMETHODIMP get_accChildCount(LONG* count) override;
    STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override;
    STDMETHODIMP get_accName(VARIANT child, BSTR* name) override;
    STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override;
    STDMETHODIMP get_accDescription(VARIANT child, BSTR* description) override;
    STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override;
    STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override;
    STDMETHODIMP get_accHelp(VARIANT child, BSTR* help) override;
    STDMETHODIMP get_accHelpTopic(BSTR*, VARIANT, LONG*) override { return DISP_E_MEMBERNOTFOUND; }
    STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override;
    STDMETHODIMP get_accFocus(VARIANT* child) override;
    STDMETHODIMP get_accSelection(VARIANT* children) override;
    STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override;
    STDMETHODIMP accSelect(LONG flags, VARIANT child) override;
    STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                             VARIANT child) override;
    STDMETHODIMP accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
    STDMETHODIMP accHitTest(LONG left, LONG top, VARIANT* child) override;
    STDMETHODIMP accDoDefaultAction(VARIANT child) override;
    STDMETHODIMP put_accName(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }
    STDMETHODIMP put_accValue(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }

  private:
    ~ItemAccessible();

    /// Describes the item, finds the child in it and has `work` return the result. 0 is the item
    /// itself.
    template <typename Work>
    HRESULT WithChild(const VARIANT& child, Work work) const;
    HRESULT GiveText(const std::string& text, BSTR* given) const;
    LONG StateOf(const ItemDescription& description, LONG child) const;
    RECT PlaceOf(const ItemDescription& description, LONG child) const;

    static inline ItemAccessible* newest = nullptr;

    LONG holders = 1;
    ItemAccessible* previous = nullptr;
    ItemAccessible* next = nullptr;
    NorvantaDialog* dialog;
    short item;
    HWND control;
    const AccessLibraries& libraries;
    DWORD thread;
};

#pragma GCC diagnostic pop
