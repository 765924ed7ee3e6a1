#include "tests/support/StandInWindows.h"

#include <new>

#include "paint/EffectRun.h"

namespace {

WindowScript script;
/// Tests that count allocations keep no log.
bool isLogging = false;

void Note(const char* event, const std::string& detail = {}) {
    if (isLogging) {
        script.events.push_back(event + detail);
    }
}

void DrawLines(std::unique_ptr<PaintClass>& pic) {
    RunLines(*pic, LinesParams{});
}

class StandInOpening final : public OpeningWindow {
  public:
    StandInOpening(short newWidth, short newHeight) : width(newWidth), height(newHeight) {
        script.offered = {newWidth, newHeight};
    }
    ~StandInOpening() override { Note("opening deleted"); }

    void Bracket(int end) override { Note(end == 0 ? "begin" : "end"); }
    int Run() override {
        Note("opening runs");
        return script.openingEnds;
    }
    short Contents() const override { return script.contents; }
    std::string Name() const override { return script.name; }
    void PixelSize(short* pixelWidth, short* pixelHeight) override {
        *pixelWidth = script.size ? script.size->first : width;
        *pixelHeight = script.size ? script.size->second : height;
    }
    ImageFile* ChosenFile() override { return script.file; }
    bool ShowNewNextTime() const override { return script.showNewNextTime; }
    std::int32_t Units() const override { return script.units; }

  private:
    short width;
    short height;
};

class StandInEditor final : public EditorWindow {
  public:
    explicit StandInEditor(std::unique_ptr<PaintClass> newPic) : pic(std::move(newPic)) {}
    ~StandInEditor() override { Note("editor deleted"); }

    bool HasTexture() const override { return pic != nullptr && pic->pixelMap != nullptr; }
    void SetShowNewAtLaunch(bool on) override { Note("launch flag ", on ? "on" : "off"); }
    void SetUnits(std::int32_t units) override { Note("units ", std::to_string(units)); }
    int Run() override {
        Note("editor runs");
        script.edit(pic);
        return script.editorEnds;
    }
    std::unique_ptr<PaintClass> TakeTexture() override { return std::move(pic); }
    void Adopt(std::unique_ptr<PaintClass> newPic) { pic = std::move(newPic); }

  private:
    std::unique_ptr<PaintClass> pic;
};

std::unique_ptr<StandInEditor> NewEditor(const char* source, const std::string& name) {
    Note(source, name);
    return std::unique_ptr<StandInEditor>(
        script.withoutEditor ? nullptr : new (std::nothrow) StandInEditor(nullptr));
}

std::unique_ptr<OpeningWindow> MakeOpening(short width, short height) {
    return std::unique_ptr<OpeningWindow>(
        script.withoutOpening ? nullptr : new (std::nothrow) StandInOpening(width, height));
}

std::unique_ptr<EditorWindow> OpenBlank(const std::string& name, short width, short height) {
    std::unique_ptr<StandInEditor> editor = NewEditor("blank ", name);
    if (editor != nullptr) {
        editor->Adopt(std::unique_ptr<PaintClass>(new (std::nothrow) PaintClass(width, height)));
    }
    return editor;
}

std::unique_ptr<EditorWindow> OpenFile(const std::string& name, ImageFile&) {
    constexpr short side = 16;
    Note("file");
    return OpenBlank(name, side, side);
}

std::unique_ptr<EditorWindow> OpenTexture(const std::string& name,
                                          std::unique_ptr<PaintClass>& pic) {
    std::unique_ptr<StandInEditor> editor = NewEditor("texture ", name);
    if (editor != nullptr) {
        editor->Adopt(std::move(pic));
    }
    return editor;
}

bool ReadLaunchFlag() {
    return script.launchFlag;
}

}  // namespace

WindowScript& Windows() {
    isLogging = true;
    return script;
}

StandInWindows::StandInWindows() : saved(runWindows) {
    script = {};
    script.edit = DrawLines;
    isLogging = false;
    runWindows = {ReadLaunchFlag, MakeOpening, OpenFile, OpenBlank, OpenTexture};
}

StandInWindows::~StandInWindows() {
    script = {};
    runWindows = saved;
}
