// The plug-in's windows.
#include "shell/RunWindows.h"
#include "base/TryMake.h"

#include <windows.h>

#include "editor/CreaterDialog.h"
#include "editor/TextureDialog.h"
#include "files/Preferences.h"

namespace {

class OpeningDialog final : public OpeningWindow {
  public:
    OpeningDialog(short width, short height) : dialog(dialogPlaces[placedCreater], width, height) {}

    void Bracket(int end) override { dialog.Reserved(end); }
    int Run() override { return dialog.Run(); }
    short Contents() const override { return dialog.Contents(); }
    std::string Name() const override { return dialog.TextureName(); }
    void PixelSize(short* width, short* height) override { dialog.PixelSize(width, height); }
    ImageFile* ChosenFile() override { return dialog.ChosenFile(); }
    bool ShowNewNextTime() const override { return dialog.ShowNewNextTime(); }
    std::int32_t Units() const override { return dialog.Units(); }

  private:
    CreaterDialog dialog;
};

class EditorDialog final : public EditorWindow {
  public:
    /// The arguments of a TextureDialog.
    template <typename... Arguments>
    explicit EditorDialog(Arguments&&... arguments)
        : dialog(std::forward<Arguments>(arguments)...) {}

    bool HasTexture() const override { return dialog.HasTexture(); }
    void SetShowNewAtLaunch(bool on) override { dialog.SetShowNewAtLaunch(on); }
    void SetUnits(std::int32_t units) override { dialog.SetUnits(units); }
    int Run() override { return dialog.Run(); }
    std::unique_ptr<PaintClass> TakeTexture() override { return dialog.TakeTexture(); }

  private:
    TextureDialog dialog;
};

std::unique_ptr<OpeningWindow> MakeOpening(short width, short height) {
    return TryMake<OpeningDialog>(width, height);
}

std::unique_ptr<EditorWindow> OpenFile(const std::string& name, ImageFile& file) {
    return TryMake<EditorDialog>(name, file);
}

std::unique_ptr<EditorWindow> OpenBlank(const std::string& name, short width, short height) {
    return TryMake<EditorDialog>(name, width, height);
}

std::unique_ptr<EditorWindow> OpenTexture(const std::string& name,
                                          std::unique_ptr<PaintClass>& pic) {
    return TryMake<EditorDialog>(name, std::move(pic));
}

}  // namespace

RunWindows runWindows = {ReadLaunchFlag, MakeOpening, OpenFile, OpenBlank, OpenTexture};
