// An ApplyDialog over one kind of parameter record. A dialog derived from it says what its controls
// are set up with, and how they show and read the record.
#pragma once

#include <cstring>
#include <new>

#include "dialogs/ApplyDialog.h"

template <typename Params>
class ParamsDialog : public ApplyDialog {
  public:
    /// `newStored` is where the editor keeps the values; it outlives the dialog.
    ParamsDialog(const ApplyContext& context, short newResourceId, Params& newStored)
        : ApplyDialog(context, newResourceId), stored(newStored), values(newStored) {}

    void Setup() override {
        ApplyDialog::Setup();
        SetUpControls();
        ShowValues(values);
    }

    void SetValues(const Params& params) {
        values = params;
        if (IsOpen()) {
            ShowValues(values);
        }
    }
    /// From the controls while the window is open, else the values that it was closed with.
    void GetValues(Params* params) {
        KeepValues();
        *params = values;
    }

    void StoreValues() override { GetValues(&stored); }

  protected:
    /// Ranges and formats.
    virtual void SetUpControls() = 0;
    virtual void ShowValues(const Params& params) = 0;
    /// `params` comes with the values that the dialog had.
    virtual void ReadValues(Params* params) = 0;

    void KeepValues() override {
        if (IsOpen()) {
            ReadValues(&values);
        }
    }
    void UsePreset(const void* preset) override {
        Params params;
        std::memcpy(&params, preset, sizeof(Params));
        SetValues(params);
    }
    void* NewPreset() override {
        Params params;
        GetValues(&params);
        void* const preset = ::operator new(sizeof(Params));
        std::memcpy(preset, &params, sizeof(Params));
        return preset;
    }

  private:
    Params& stored;
    Params values;
};
