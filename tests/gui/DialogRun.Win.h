// Runs of the plug-in for tests of the dialogs over the editor.
#pragma once

#include "files/ImageFile.h"
#include "files/Preferences.h"
#include "resources/Ids.h"
#include "tests/gui/DialogWork.Win.h"
#include "tests/gui/PluginRun.Win.h"
#include "tests/support/Pictures.h"

/// Over the editor: the dialog, and what to do in it. It must be closed at the end.
using EditorUser = std::function<void(const GuiDriver& gui, const DrivenDialog& editor)>;

class DialogRunTest : public PluginRunTest {
  protected:
    /// A run of the editor with the stored preferences, on a texture of the selection's size, blank
    /// or of the selection's noise. Apply is pressed at the end.
    host::RunReport RunBlank(const EditorUser& user);
    host::RunReport RunOnSelection(const EditorUser& user);

    /// A blank texture, and that of the selection.
    static std::unique_ptr<PaintClass> Blank();
    std::unique_ptr<PaintClass> Noise() const;

    /// Opens a dialog with a button of the editor and moves it away from the texture's middle.
    static DrivenDialog OpenDialog(const GuiDriver& gui, const DrivenDialog& editor, int item,
                                   int dialogId);
    /// Waits until the drawing area shows the texture, as far as its middle goes.
    void ExpectShown(const DrivenDialog& editor, const PaintClass& texture) const;
    void ExpectApplied(const PaintClass& expected) const;

    /// Takes a place of the drawing area as the source of the Rubber Stamp, which is chosen.
    static void TakeStampSource(const GuiDriver& gui, const DrivenDialog& editor, ItemPlace place);
    /// Releases Alt after another key: alone, it would open the menu.
    static void ReleaseAlt(const GuiDriver& gui);
    /// Drags the Rubber Stamp from place to place. It waits for a movement without a look at the
    /// button, so the mouse moves once more after the release. `beforeLast` runs before the last
    /// place is reached.
    static void DragStamp(const GuiDriver& gui, const DrivenDialog& editor,
                          const std::vector<ItemPlace>& places,
                          const std::function<void()>& beforeLast = {});

    /// The cursor while a source is taken.
    static constexpr int cursorStampSource = 16012;

    /// The contents of the settings file when a run begins.
    Preferences stored;

  private:
    std::vector<Pixel> ShownMiddle(const DrivenDialog& editor) const;
    host::RunReport RunWith(bool fromSelection, const EditorUser& user);
};

/// Writes a texture's colours to the file, which has a name. The quality is the callback's, or the
/// user's without one. A file with a `resolution` says how many dots an inch it has.
/// @return the status
std::int16_t WriteTexture(ImageFile& file, const PaintClass& texture, std::uint16_t resolution = 0);

/// Adds a preset to a list.
template <typename Params>
void AddPreset(SimpleLink& list, const Params& params, const char* name) {
    void* const record = ::operator new(sizeof(Params));
    std::memcpy(record, &params, sizeof(Params));
    list.Append(record, name);
}
