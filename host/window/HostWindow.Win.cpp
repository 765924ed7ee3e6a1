#include "host/window/HostWindow.Win.h"

#include <shellapi.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "base/Rectangles.h"
#include "host/plugin/FilterSearch.Win.h"
#include "host/window/FileDialogs.Win.h"
#include "host/window/FilterMenu.Win.h"
#include "host/window/HostDialogs.Win.h"
#include "host/window/HostMenu.Win.h"
#include "host/window/WindowResources.h"
#include "host/window/WindowText.h"

namespace host {

namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* className = L"ZandermoliteHost";
constexpr const char* selectHint = "Drag to select, then choose a filter.";

// At 96 dots per inch.
constexpr Size usualSize{1000, 740};
constexpr Size smallestSize{480, 320};

// In the middle of the screen, and no larger than that.
RECT UsualPlace() {
    RECT area{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    const int areaWidth = area.right - area.left;
    const int areaHeight = area.bottom - area.top;
    const int width = std::min(ScaledToScreen(usualSize.width), areaWidth);
    const int height = std::min(ScaledToScreen(usualSize.height), areaHeight);
    return {area.left + (areaWidth - width) / 2, area.top + (areaHeight - height) / 2, width,
            height};
}

fs::path DroppedFile(WPARAM wParam) {
    auto* drop = reinterpret_cast<HDROP>(wParam);
    std::wstring name(DragQueryFileW(drop, 0, nullptr, 0) + 1, L'\0');
    name.resize(DragQueryFileW(drop, 0, name.data(), static_cast<UINT>(name.size())));
    DragFinish(drop);
    return name;
}

}  // namespace

HostWindow::HostWindow(const WindowOptions& newOptions)
    : options(newOptions),
      view(*this),
      log(status, newOptions.statusFile),
      runner(newOptions.common.settings, status),
      feather(newOptions.common.ellipseFeather.value_or(0.0)) {}

void HostWindow::Open(int show) {
    WindowParameters parameters{};
    parameters.className = className;
    parameters.menu = MAKEINTRESOURCEW(MENU_WINDOW);
    parameters.title = programTitle;
    parameters.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    parameters.extendedStyle = WS_EX_ACCEPTFILES;
    parameters.place = UsualPlace();
    Create(parameters);
    ShowWindow(Handle(), show);
    UpdateWindow(Handle());
}

void HostWindow::CarryOutOptions() {
    AddFilters(FindFilters(options.common.filters));
    if (!options.common.image.empty()) {
        OpenPicture(options.common.image);
    }
    if (document) {
        SelectByOptions();
    }
}

bool HostWindow::TranslateKey(MSG& message) {
    return TranslateAcceleratorW(Handle(), accelerators, &message) != 0;
}

LRESULT HostWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            return OnCreate();
        case WM_SIZE:
            Layout();
            return 0;
        case WM_GETMINMAXINFO:
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {
                ScaledToScreen(smallestSize.width), ScaledToScreen(smallestSize.height)};
            return 0;
        case WM_SETFOCUS:
            SetFocus(view.Handle());
            return 0;
        case WM_INITMENU:
            UpdateMenu(GetMenu(Handle()),
                       {document ? &*document : nullptr, shape, catalog.Count(), LastFilterName()});
            return 0;
        case WM_COMMAND:
            // A filter's own windows may pump messages while it runs.
            if (!runner.IsRunning()) {
                OnCommand(LOWORD(wParam));
            }
            return 0;
        case WM_ENTERIDLE:
            log.NoteWaiting(wParam, reinterpret_cast<HWND>(lParam));
            return 0;
        case WM_DROPFILES:
            OnDroppedFiles(wParam);
            return 0;
        case WM_CLOSE:
            if (!runner.IsRunning() && MayLeavePicture()) {
                DestroyWindow(Handle());
            }
            return 0;
        case WM_QUERYENDSESSION:
            return !runner.IsRunning() && MayLeavePicture();
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
        default:
            return Default(message, wParam, lParam);
    }
}

void HostWindow::OnError(const std::string& text) {
    log.Note("(error) " + text);
    NativeWindow::OnError(text);
}

LRESULT HostWindow::OnCreate() {
    HINSTANCE instance = GetModuleHandleW(nullptr);
    accelerators = LoadAcceleratorsW(instance, MAKEINTRESOURCEW(ACCELERATORS_WINDOW));
    status.Create(Handle());
    view.Create(Handle());
    runner.SetWindow(Handle());
    log.Say("");
    return 0;
}

void HostWindow::OnCommand(int command) {
    switch (command) {
        case COMMAND_OPEN:
            AskAndOpen();
            break;
        case COMMAND_EXIT:
            SendMessageW(Handle(), WM_CLOSE, 0, 0);
            break;
        case COMMAND_RECTANGLE:
            SetShape(SelectionShape::rectangle);
            break;
        case COMMAND_ELLIPSE:
            SetShape(SelectionShape::ellipse);
            break;
        case COMMAND_FEATHER:
            AskFeather();
            break;
        case COMMAND_ADD_FOLDER:
            AskAndAddFolder();
            break;
        case COMMAND_ABOUT:
            ShowAbout(Handle());
            break;
        default:
            if (const auto filter = FilterOfAboutCommand(command)) {
                ShowAboutFilter(catalog.At(*filter));
            } else if (document) {
                OnPictureCommand(command);
            }
    }
}

void HostWindow::OnPictureCommand(int command) {
    switch (command) {
        case COMMAND_SAVE_AS:
            AskAndSave();
            break;
        case COMMAND_UNDO:
            Step(document->Undo(), "Undone");
            break;
        case COMMAND_REDO:
            Step(document->Redo(), "Redone");
            break;
        case COMMAND_SELECT_ALL:
            SelectAll();
            break;
        case COMMAND_DESELECT:
            Deselect();
            break;
        case COMMAND_BOUNDS:
            AskBounds();
            break;
        case COMMAND_ZOOM_IN:
            view.ZoomTo(view.Zoom() + 1);
            break;
        case COMMAND_ZOOM_OUT:
            view.ZoomTo(view.Zoom() - 1);
            break;
        case COMMAND_ACTUAL_SIZE:
            view.ZoomTo(0);
            break;
        case COMMAND_FIT:
            view.ZoomToFit();
            break;
        case COMMAND_LAST_FILTER:
            if (lastFilter) {
                RunFilter(*lastFilter, Execution::repeat);
            }
            break;
        default:
            if (const auto filter = FilterOfCommand(command)) {
                RunFilter(*filter, Execution::interactive);
            }
    }
}

void HostWindow::OnDroppedFiles(WPARAM wParam) {
    const fs::path file = DroppedFile(wParam);
    if (!runner.IsRunning() && IsWindowEnabled(Handle()) && MayLeavePicture()) {
        OpenPicture(file);
    }
}

void HostWindow::Layout() {
    const Size size = ClientSize(Handle());
    const int barHeight = status.Layout();
    SetWindowPos(view.Handle(), nullptr, 0, 0, size.width, std::max(size.height - barHeight, 0),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void HostWindow::OnDragged(const DraggedSelection& dragged) {
    Select(dragged);
}

void HostWindow::OnClicked() {
    Deselect();
}

void HostWindow::OnDragging(const DraggedSelection* dragged) {
    if (dragged != nullptr) {
        status.SetText(StatusBar::selectionInfo, BoundsText(dragged->bounds));
    } else {
        UpdateSelection();
    }
}

void HostWindow::OnPointer(std::optional<Place> pixel) {
    status.SetText(StatusBar::pointer, pixel ? PlaceText(*pixel) : "");
}

void HostWindow::OnZoomed(double scale) {
    status.SetText(StatusBar::zoom, document ? ZoomText(scale) : "");
}

void HostWindow::AddFilters(const FilterList& list) {
    for (const ListedFilter& filter : list.filters) {
        catalog.Add(filter);
    }
    FillFilterMenus(GetMenu(Handle()), catalog);
    if (list.problems.empty()) {
        return;
    }
    std::string text;
    for (const std::string& problem : list.problems) {
        text += (text.empty() ? "" : "\n") + problem;
    }
    OnError(text);
}

void HostWindow::AskAndAddFolder() {
    const auto folder = AskForFolder(Handle(), L"Choose a folder with filters (*.8bf).");
    if (!folder) {
        return;
    }
    const std::size_t before = catalog.Count();
    AddFilters(ListFolder(*folder));
    const std::size_t added = catalog.Count() - before;
    log.Say(added == 1 ? "1 filter added" : std::to_string(added) + " filters added");
}

void HostWindow::RunFilter(std::size_t position, Execution execution) {
    const ListedFilter filter = catalog.At(position);
    const std::string name = ShortName(filter.description);
    log.Say(name + " is running. Escape stops it.");
    view.SetAntsMoving(false);
    try {
        Picture picture = document->Image();
        const RunReport report = runner.Run(filter, picture, document->Selected(), execution);
        std::optional<hostapi::VRect> changed;
        if (report.Succeeded()) {
            lastFilter = position;
            changed = document->Replace(std::move(picture), name);
        }
        view.SetAntsMoving(true);
        if (changed) {
            view.RedrawPart(*changed);
        }
        UpdateTitle();
        ShowReport(report, name, changed.has_value());
    } catch (...) {
        view.SetAntsMoving(true);
        log.Say(name + " could not run");
        throw;
    }
}

void HostWindow::ShowAboutFilter(const ListedFilter& filter) {
    const RunReport report = runner.ShowAbout(filter);
    if (!report.faults.empty() || report.result != 0) {
        ShowReport(report, ShortName(filter.description), false);
    }
}

void HostWindow::ShowReport(const RunReport& report, const std::string& name, bool changed) {
    log.Say(OutcomeText(report, name, changed));
    if (!report.faults.empty()) {
        ShowFaults(Handle(), name, report.faults);
    }
}

void HostWindow::AskAndOpen() {
    if (!MayLeavePicture()) {
        return;
    }
    if (const auto file = AskForPicture(Handle(), document ? document->File() : fs::path())) {
        OpenPicture(*file);
    }
}

void HostWindow::OpenPicture(const fs::path& file) {
    const HCURSOR previous = SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    try {
        Picture picture = LoadPicture(file);
        view.Show(nullptr);
        document.emplace(std::move(picture), file);
    } catch (...) {
        SetCursor(previous);
        OnError(CurrentErrorText());
        return;
    }
    SetCursor(previous);
    selected.reset();
    view.Show(&*document);
    status.SetText(StatusBar::pictureInfo, PictureText(document->Image()));
    UpdateTitle();
    UpdateSelection();
    log.Say(selectHint);
}

void HostWindow::SelectByOptions() {
    try {
        document->Select(SelectionFrom(options.common, document->Image()));
    } catch (...) {
        OnError(CurrentErrorText());
        return;
    }
    if (options.common.ellipseFeather) {
        selected = DraggedSelection{document->Selected().bounds, SelectionShape::ellipse};
    }
    UpdateSelection();
}

bool HostWindow::AskAndSave() {
    const auto file = AskWhereToSave(Handle(), document->File());
    if (!file) {
        return false;
    }
    document->SaveAs(*file);
    UpdateTitle();
    log.Say("Saved as " + document->Name());
    return true;
}

bool HostWindow::MayLeavePicture() {
    if (!document || !document->IsModified()) {
        return true;
    }
    const std::wstring question = L"Save the changes to " + Wide(document->Name()) + L"?";
    switch (
        MessageBoxW(Handle(), question.c_str(), programTitle, MB_YESNOCANCEL | MB_ICONQUESTION)) {
        case IDYES:
            return AskAndSave();
        case IDNO:
            return true;
        default:
            return false;
    }
}

void HostWindow::Step(std::optional<hostapi::VRect> changed, const std::string& message) {
    if (!changed) {
        return;
    }
    view.RedrawPart(*changed);
    UpdateTitle();
    log.Say(message);
}

void HostWindow::Select(const DraggedSelection& wanted) {
    document->Select(FinishDrag(wanted, feather));
    selected = wanted;
    UpdateSelection();
}

void HostWindow::SelectAll() {
    document->SelectAll();
    selected.reset();
    UpdateSelection();
}

void HostWindow::Deselect() {
    document->Deselect();
    selected.reset();
    UpdateSelection();
}

void HostWindow::AskBounds() {
    const Picture& picture = document->Image();
    if (const auto bounds =
            AskForBounds(Handle(), document->Selected().bounds, {picture.width, picture.height})) {
        Select({*bounds, shape});
    }
}

void HostWindow::AskFeather() {
    const auto wanted = AskForFeather(Handle(), feather);
    if (!wanted) {
        return;
    }
    feather = *wanted;
    if (document && selected && selected->shape == SelectionShape::ellipse) {
        Select(*selected);
    }
}

void HostWindow::SetShape(SelectionShape newShape) {
    shape = newShape;
    view.SetShape(shape);
    log.Say(shape == SelectionShape::ellipse ? "Drag to select an ellipse."
                                             : "Drag to select a rectangle.");
}

std::optional<std::string> HostWindow::LastFilterName() const {
    return lastFilter ? std::optional(ShortName(catalog.At(*lastFilter).description))
                      : std::nullopt;
}

void HostWindow::UpdateTitle() {
    std::wstring title = programTitle;
    if (document) {
        title = (document->IsModified() ? L"*" : L"") + Wide(document->Name()) + L" - " + title;
    }
    SetWindowTextW(Handle(), title.c_str());
}

void HostWindow::UpdateSelection() {
    status.SetText(StatusBar::selectionInfo, document ? SelectionText(document->Selected()) : "");
    view.Redraw();
}

}  // namespace host
