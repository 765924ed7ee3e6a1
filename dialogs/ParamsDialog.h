// An ApplyDialog over one kind of parameter record. A dialog derived from it binds its controls to
// the record's fields in its constructor, and overrides what is special in it.
#pragma once

#include <cstring>
#include <new>

#include "dialogs/ApplyDialog.h"
#include "dialogs/Bindings.h"

template <typename Params>
class ParamsDialog : public ApplyDialog {
  public:
    /// `newStored` is where the editor keeps the values; it outlives the dialog.
    ParamsDialog(const ApplyContext& context, short newResourceId, Params& newStored)
        : ApplyDialog(context, newResourceId), stored(newStored), values(newStored) {}

    void Setup() override {
        ApplyDialog::Setup();
        bindings.SetUp();
        bindings.Show();
    }

    short ItemHit(short item) override {
        if (!bindings.Hit(item)) {
            return ApplyDialog::ItemHit(item);
        }
        MarkChanged(true);
        return 0;
    }

    bool ScrollChanged(short item, int value) override {
        bindings.Scroll(item, value);
        return ApplyDialog::ScrollChanged(item, value);
    }

    void DrawItem(short item) override {
        if (!bindings.Draw(item)) {
            ApplyDialog::DrawItem(item);
        }
    }

    bool UserItemKey(short item, ItemKey key, int modifiers) override {
        if (!bindings.Key(item, key, modifiers)) {
            return ApplyDialog::UserItemKey(item, key, modifiers);
        }
        MarkChanged(true);
        return true;
    }

    ItemDescription Describe(short item) const override {
        ItemDescription description = ApplyDialog::Describe(item);
        bindings.Describe(item, description);
        return description;
    }

    void SetValues(const Params& params) {
        values = params;
        if (IsOpen()) {
            bindings.Show();
        }
    }
    /// From the controls while the window is open, else the values that it was closed with.
    void GetValues(Params* params) {
        KeepValues();
        *params = values;
    }

    void StoreValues() override { GetValues(&stored); }

  protected:
    /// Reads the controls. A dialog whose record has more than its controls show overrides it.
    void KeepValues() override {
        if (IsOpen()) {
            bindings.Read();
        }
    }
    void UsePreset(const void* preset) override {
        Params params;
        std::memcpy(&params, preset, sizeof(Params));
        SetValues(params);
    }
    void HoldValues() override { GetValues(&held); }
    void ShowHeldValues() override { SetValues(held); }
    void* NewPreset() override {
        Params params;
        GetValues(&params);
        void* const preset = ::operator new(sizeof(Params));
        std::memcpy(preset, &params, sizeof(Params));
        return preset;
    }

  private:
    Params& stored;

  protected:
    /// The dialog's own record, to which the rows of `bindings` belong.
    Params values;

  private:
    Params held{};

  protected:
    Bindings bindings{*this, &values};
};
