#include "shell/Zandermolite.h"

#include <algorithm>
#include <new>

#include "base/FatalError.h"
#include "base/HostServices.h"
#include "hostapi/Results.h"
#include "resources/Ids.h"
#include "shell/RunWindows.h"
#include "shell/transfer/LastTexture.h"
#include "shell/transfer/Transfer.h"

namespace {

/// 1 to maximalTextureSide.
short TextureSide(int selectionSide) {
    return static_cast<short>(std::clamp(selectionSide, 1, maximalTextureSide));
}

/// Tells the opening window where its use begins and ends.
class Bracketed {
  public:
    explicit Bracketed(OpeningWindow& newWindow) : window(newWindow) { window.Bracket(0); }
    Bracketed(const Bracketed&) = delete;
    Bracketed& operator=(const Bracketed&) = delete;
    ~Bracketed() { window.Bracket(1); }

  private:
    OpeningWindow& window;
};

/// The editor on what the opening window chose; null without memory. `pic` stays the caller's as
/// long as no editor has taken it.
std::unique_ptr<EditorWindow> OpenEditor(FilterContext* context, OpeningWindow& opening,
                                         std::unique_ptr<PaintClass>& pic) {
    const std::string name = opening.Name();
    if (ImageFile* file = opening.ChosenFile(); file != nullptr) {
        return runWindows.openFile(name, *file);
    }
    switch (opening.Contents()) {
        case SizeItems::selection:
            pic = ReadSelection(context);
            return runWindows.openTexture(name, pic);
        case SizeItems::lastTexture:
            pic = LoadLastTexture();
            return pic ? runWindows.openTexture(name, pic) : nullptr;
        default: {
            short width;
            short height;
            opening.PixelSize(&width, &height);
            return runWindows.openBlank(name, std::max(width, short{1}),
                                        std::max(height, short{1}));
        }
    }
}

/// The editor's whole life, its end included: that writes the preference file.
int RunEditor(std::unique_ptr<EditorWindow> editor, OpeningWindow& opening,
              std::unique_ptr<PaintClass>& picOut) {
    editor->SetShowNewAtLaunch(opening.ShowNewNextTime());
    editor->SetUnits(opening.Units());
    const int ended = editor->Run();
    picOut = editor->TakeTexture();
    return ended;
}

/// OK and Cancel are the user's. Whatever else ended a window is a fault, and so is one that was
/// raised meanwhile, whose id may look like either.
void ThrowFault(int ended) {
    if (errorCell != 0) {
        throw errorCell;
    }
    if (ended != runApplied && ended != runCancelled) {
        throw static_cast<std::int16_t>(ended);
    }
}

/// Whether the user left the opening window, if it was shown at all, by Cancel.
bool IsCancelled(OpeningWindow& opening) {
    if (!runWindows.readLaunchFlag()) {
        return false;
    }
    const int ended = opening.Run();
    ThrowFault(ended);
    return ended == runCancelled;
}

std::int16_t RunWindowsInTurn(FilterContext* context, std::unique_ptr<PaintClass>& picOut) {
    const hostapi::Rect selection = context->record->filterRect;
    const std::unique_ptr<OpeningWindow> opening =
        runWindows.makeOpening(TextureSide(selection.right - selection.left),
                               TextureSide(selection.bottom - selection.top));
    if (opening == nullptr) {
        return hostapi::memFullErr;
    }
    const Bracketed bracket(*opening);
    if (IsCancelled(*opening)) {
        return hostapi::userCanceledErr;
    }
    std::unique_ptr<EditorWindow> editor = OpenEditor(context, *opening, picOut);
    if (editor == nullptr || !editor->HasTexture()) {
        return hostapi::memFullErr;
    }
    const int ended = RunEditor(std::move(editor), *opening, picOut);
    ThrowFault(ended);
    return ended == runCancelled ? hostapi::userCanceledErr : hostapi::noErr;
}

}  // namespace

void NoteHostWindow(const hostapi::FilterRecord& record) {
    hostWindow = record.platformData != nullptr ? record.platformData->window : nullptr;
}

std::int16_t RunTexture(FilterContext* context, std::unique_ptr<PaintClass>& picOut) {
    picOut.reset();
    NoteHostWindow(*context->record);
    try {
        return RunWindowsInTurn(context, picOut);
    } catch (const std::bad_alloc&) {
        // The windows themselves: inside them the user is told.
        if (errorCell != 0) {
            throw errorCell;
        }
        return hostapi::memFullErr;
    }
}
