// The program's window: a picture with a selection, and the filters to run on it.
#pragma once

#include <windows.h>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "host/plugin/FilterCatalog.h"
#include "host/window/Document.h"
#include "host/window/FilterRunner.Win.h"
#include "host/window/NativeWindow.Win.h"
#include "host/window/PictureView.Win.h"
#include "host/window/StatusBar.Win.h"
#include "host/window/StatusLog.Win.h"
#include "host/window/WindowOptions.h"

namespace host {

class HostWindow : public NativeWindow, private PictureViewListener {
  public:
    /// Throws CommandLineError if the status file can't be written.
    explicit HostWindow(const WindowOptions& options);

    /// Makes the window and shows it as `show` says, one of the values of ShowWindow(). Throws
    /// std::runtime_error.
    void Open(int show);
    /// Finds the filters and opens the picture that the options name. Reports what cannot be opened
    /// to the user; the window stays open.
    void CarryOutOptions();
    /// Whether the message was a command's key; then the command has been carried out.
    bool TranslateKey(MSG& message);

  private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnError(const std::string& text) override;
    LRESULT OnCreate();
    void OnCommand(int command);
    void OnPictureCommand(int command);
    void OnDroppedFiles(WPARAM wParam);
    void Layout();

    void OnDragged(const DraggedSelection& dragged) override;
    void OnClicked() override;
    void OnDragging(const DraggedSelection* dragged) override;
    void OnPointer(std::optional<Place> pixel) override;
    void OnZoomed(double scale) override;

    void AddFilters(const FilterList& list);
    void AskAndAddFolder();
    void RunFilter(std::size_t position, Execution execution);
    void ShowAboutFilter(const ListedFilter& filter);
    void ShowReport(const RunReport& report, const std::string& name, bool changed);

    void AskAndOpen();
    void OpenPicture(const std::filesystem::path& file);
    void SelectByOptions();
    /// False if the user cancels.
    bool AskAndSave();
    /// Asks what becomes of unsaved changes. False if the user would rather keep the picture open.
    bool MayLeavePicture();
    void Step(std::optional<hostapi::VRect> changed, const std::string& message);

    void Select(const DraggedSelection& wanted);
    void SelectAll();
    void Deselect();
    void AskBounds();
    void AskFeather();
    void SetShape(SelectionShape newShape);

    std::optional<std::string> LastFilterName() const;
    void UpdateTitle();
    void UpdateSelection();

    WindowOptions options;
    std::optional<Document> document;
    PictureView view;
    StatusBar status;
    StatusLog log;
    HACCEL accelerators = nullptr;

    FilterCatalog catalog;
    FilterRunner runner;
    /// The filter that was run last with success, by its position in the catalog.
    std::optional<std::size_t> lastFilter;

    SelectionShape shape = SelectionShape::rectangle;
    double feather;
    /// The drag or the numbers that the selection was made from in this window.
    std::optional<DraggedSelection> selected;
};

}  // namespace host
