// The editor: the program's one large window. It owns the texture, remembers the settings of every
// effect and filter, and routes every command (button, menu entry, key) to one handler.
//
// The class stands in four source files:
// - TextureDialog.cpp: construction, set-up, what the window asks, the command tables;
// - TextureDialogCommands.cpp: what the commands do: new textures, files, effects and filters,
// undo;
// - TextureDialogTools.cpp: the tools: keys, cursors, the mouse in the drawing area;
// - TextureDialogRubberBand.cpp: the tools that draw over the view while they are dragged;
// - TextureDialogView.cpp: the drawing area, the zoom, the two views.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "base/Progress.h"
#include "dialogs/ApplyDialog.h"
#include "dialogs/FileOwner.h"
#include "dialogs/filters/CombineDialog.h"
#include "editor/ColorPicker.h"
#include "editor/HelpReadout.h"
#include "editor/Operations.h"
#include "editor/ScaledCopy.h"
#include "editor/Tools.h"
#include "editor/Units.h"
#include "editor/ViewGeometry.h"
#include "files/Preferences.h"
#include "framework/dialog/SmallPSDialog.h"
#include "paint/PaintClass.h"

class Stroke;

class TextureDialog final : public SmallPSDialog, public ApplyFather, public ProgressTarget {
  public:
    /// Loads the texture. A file that cannot be loaded is reported, and the texture is blank.
    TextureDialog(const std::string& newName, ImageFile& file);
    /// A blank texture. Test HasTexture().
    TextureDialog(const std::string& newName, short width, short height);
    /// Takes over the texture; null for none.
    TextureDialog(const std::string& newName, std::unique_ptr<PaintClass> newPic);
    /// Writes the preference file. What goes wrong is reported there.
    ~TextureDialog() override;

    bool HasTexture() const { return pic != nullptr; }
    /// The texture as it stands; none is left.
    std::unique_ptr<PaintClass> TakeTexture() { return std::move(pic); }

    /// Whether the New dialog opens at the next launch.
    void SetShowNewAtLaunch(bool on) { preferences.launchFlag = on ? 1 : 0; }
    /// The unit of the readouts and the Edit dialog.
    void SetUnits(std::int32_t newUnits) { units = newUnits; }

    // The dialog's operations.

    void Setup() override;
    short ItemHit(short item) override;
    short KeyDown(int key, int modifiers) override;
    void MenuCommand(short id) override;
    void UpdateMenus() override;
    void Resize(short widthChange, short heightChange) override;
    short CursorAt(short item) override;
    /// Fills the help readout; always returns 0.
    std::uint32_t HelpAt(short item) override;
    bool UserItemKey(short item, ItemKey key, int modifiers) override;
    void UsePart(short item, int part) override;
    hostapi::Rect FocusFrame(short item) const override;
    ItemDescription Describe(short item) const override;
    bool ScrollChanged(short item, int value) override;
    void Paint(const Region& region) override;
    void DrawItem(short item) override;
    /// Pen operations and fills, shifted by the draw origin.
    void MoveTo(short x, short y) override;
    void LineTo(short x, short y) override;
    void FillRect(const hostapi::Rect& rect);

    // For the dialogs that it opens.

    NorvantaDialog* FatherDialog() override { return this; }
    void RevertToUndo() override;
    void RunOperation(short id) override;
    hostapi::Point TextureSize() const override { return {pic->grY, pic->grX}; }
    const RGBColor16& Foreground() const override { return preferences.foreground; }
    const RGBColor16& Background() const override { return preferences.background; }
    /// The bar in item 5; 0 empties it.
    void DrawProgress(short percent) override;

  private:
    struct Command;
    static const Command commands[];

    explicit TextureDialog(const std::string& newName);
    /// The end of each constructor.
    void Begin(std::unique_ptr<PaintClass> newPic);
    void AdoptTexture(std::unique_ptr<PaintClass> newPic);

    // Set-up and readouts.
    void SetReadingOrder();
    void SetUpMenu();
    void PlaceBesideView();
    void ShowReadouts();
    void UpdateRepeats();
    short HintAt(short item) const;
    void FrameAround(short item);

    // Commands.
    void NewTexture();
    void EditTexture();
    void RunTile();
    /// A texture made of the present one takes its place; null is a lack of memory.
    void ReplaceBy(std::unique_ptr<PaintClass> made);
    void ReplaceTexture(std::unique_ptr<PaintClass> newPic);
    void OpenTexture();
    void SaveTextureFile();
    void FlipTexture(short mode);
    void FlipVertically();
    void FlipHorizontally();
    void AddBump();
    void InvertTexture();
    void ClearTexture();
    void RepeatLastEffect();
    void RepeatLastFilter();
    void ToggleSizeMarks();
    void ToggleNewAtLaunch();
    void ShowAboutBox();

    // Effects and filters.
    void OpenOperation(const Operation& operation);
    bool RunSubDialog();
    void OpenCombine();
    void RunCombine();
    void ShowResult();
    void Remember(const Operation& operation);
    void RepeatOperation(short id);
    void RepeatEffect(short effect);
    void RepeatFilter(short filter);

    // Undo.
    void TakeUndoSnapshot();
    void ShowUndoEntry(bool isRedo);
    void ToggleUndo();

    // Tools.
    void ChooseTool();
    void ChooseViewTool();
    void ShowTool();
    void OpenToolSettings();
    void OpenBrushSettings();
    void OpenStampSettings();
    void OpenFillSettings();
    void SetDefaultColors();
    void SwapColors();
    void ClickWells();
    void ClickDrawingArea();
    void RunTool(hostapi::Point press);
    void TrackStroke(Stroke& stroke);
    void TrackBrush();
    void TrackEraser();
    void TrackPencil();
    void TrackMove();
    void PaintGradient(hostapi::Point press);
    void TrackGradient(short* dx, short* dy);
    void UseStamp();
    /// False where there is no source to copy from.
    bool TrackStamp();
    void TakeStampSource(hostapi::Point source);
    void AimStamp(hostapi::Point brush);
    void ShowStampCross(hostapi::Point brush);
    void DrawStampCross();
    void TrackEyedropper();
    void TrackHand();
    void ClickZoom();
    void ViewToTexture(short* x, short* y) const;
    hostapi::Point TexturePoint(hostapi::Point inWindow) const;

    // The view.
    /// The part of the drawing area that shows the texture.
    hostapi::Rect View() const;
    ViewGeometry Geometry() const;
    void ZoomIn();
    void ZoomOut();
    void ActualPixels();
    void ZoomChanged();
    void UpdateScrollBars();
    void UpdateScrollPositions();
    void DrawPicture(const ViewGeometry& geometry, const TilePlace& place, bool force);
    void RedrawAll();
    void RedrawContents();
    void RedrawTouched(const hostapi::VRect& touched);
    void DrawFrame(const hostapi::Rect& rect);
    void DrawView(const ViewGeometry& geometry);
    void DrawSizeMarks(const ViewGeometry& geometry);
    void DrawZoomReadout();
    void SwitchView();
    void MoveForView(bool preview);
    void InvalidateDrawing();

    /// A constructor has come to its end.
    bool isMade = false;
    /// Null only without memory at construction.
    std::unique_ptr<PaintClass> pic;
    Preferences preferences;
    /// Made when the window exists.
    std::unique_ptr<ColorPicker> colorPicker;
    /// The part of the wells that keys act on.
    WellPart focusedWell = wellForeground;
    /// Has the texture's name.
    FileOwner files;
    /// The file that Combine opens with; without a name as long as none was chosen.
    ImageFile combineFile;
    std::int32_t units = unitCentimetre;
    /// The child dialog now open.
    std::unique_ptr<ApplyDialog> subDialog;
    short tool = toolMove;
    double zoom = 1.0;
    ViewMode viewMode = viewDrawing;
    /// Dots an inch.
    short resolution;
    /// The format of Open and Save: 0 JPEG; with 1 they do nothing.
    std::int32_t fileFormat = 0;
    /// The next Undo is a Redo.
    bool undoIsRedo = false;
    /// Added to all coordinates while the drawing area is painted.
    short drawOriginV = 0;
    short drawOriginH = 0;
    /// Resource ids of the last effect and the last filter applied; 0 for none.
    short lastEffect = 0;
    short lastFilter = 0;
    /// Where the filled part of the progress bar ends that is on the screen.
    std::optional<short> shownProgress;
    HelpReadout help;
    ScaledCopy scaledCopy;
    /// The copy of what a stroke has touched since it was last shown.
    ScaledCopy touchedCopy;
};
