// The base of every dialog that changes the texture with a set of parameters.
//
// There is no preview image: Apply runs the operation on the live texture, and the way back is the
// undo snapshot that the editor took before the dialog opened. Effects have a popup of named
// presets besides.
#pragma once

#include <optional>

#include "dialogs/ApplyState.h"
#include "framework/dialog/SmallPSDialog.h"
#include "paint/Color.h"
#include "raster/SimpleLink.h"

class ApplyDialog;

/// The editor, as the dialogs that it opens see it.
class ApplyFather {
  public:
    /// The dialog under this one.
    virtual NorvantaDialog* FatherDialog() = 0;
    /// Takes the texture back to the undo snapshot and shows it.
    virtual void RevertToUndo() = 0;
    /// Runs the operation with this dialog resource on the texture, with the values stored for it.
    virtual void RunOperation(short id) = 0;
    /// The texture's height and width in pixels.
    virtual hostapi::Point TextureSize() const = 0;
    // The editor's two colours.
    virtual const RGBColor16& Foreground() const = 0;
    virtual const RGBColor16& Background() const = 0;

  protected:
    ~ApplyFather() = default;
};

/// The arguments that every ApplyDialog is opened with.
struct ApplyContext {
    /// Asserted not to be null.
    ApplyFather* father;
    /// Where the dialogs of the class were last; all 0 for never.
    hostapi::Rect& placement;
    /// The effect's list; null for a filter.
    SimpleLink* presets;
};

class ApplyDialog : public SmallPSDialog {
  public:
    ApplyDialog(const ApplyContext& context, short newResourceId);

    void Setup() override;
    /// Items 1 to 6, which are the same in all dialogs.
    short ItemHit(short item) override;
    /// A slider has moved: marks the values as changed.
    bool ScrollChanged(short item, int value) override;
    void Idle() override;
    // The controls show the preset that the open menu passes. The texture keeps its result until a
    // preset is chosen, and a menu left without a choice leaves all as it was.
    void PopupOpens(short item) override;
    void PopupIsClosed(short item) override;

    /// Asked after OK. Returns whether the texture does not show the present values, so that the
    /// operation is still to be run.
    bool WasApplied() const { return state.IsRunOwed(); }
    void SetApplied() { state.SetApplied(); }
    bool ApplyAgain() const { return state.IsAgain(); }

    /// Writes the values to where the editor keeps them.
    virtual void StoreValues() = 0;

  protected:
    /// A control has changed: the popup says "Last Used", and a result that the texture shows is
    /// taken back if `restore` is set.
    void MarkChanged(bool restore);

    /// Reads the controls into the dialog's own copy of the record.
    virtual void KeepValues() = 0;
    /// Shows the values of a preset's record.
    virtual void UsePreset(const void* preset) = 0;
    // Notes the values of the controls, and shows them again.
    virtual void HoldValues() = 0;
    virtual void ShowHeldValues() = 0;
    /// A new record of the present values, made for SimpleLink.
    virtual void* NewPreset() = 0;
    /// The text of the assertion that guards Delete. Never called for a dialog without presets.
    virtual const char* DeleteAssertion() const { return ""; }

    ApplyFather* Father() const { return father; }

  private:
    void UpdateApplyState();
    void UpdateDelete();
    void SelectPreset(short place);
    void FillPresets();
    void RefillPresets();
    void Apply();
    void HitPresetItem(short item);
    bool ShowPreset(short place);
    void PassPreset();
    void ChoosePreset();
    void SavePreset();
    void DeletePreset();

    ApplyFather* father;
    hostapi::Rect& placement;
    SimpleLink* presets;
    ApplyState state;
    /// The popup's place when its menu opened; nothing while the menu is closed.
    std::optional<short> placeBeforeMenu;
};
