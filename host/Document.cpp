#include "host/Document.h"

#include <utility>

#include "host/Geometry.h"

namespace host {

namespace {

// Each level is a whole picture; a photograph of 20 megapixels takes 60 MB.
constexpr std::size_t undoLevels = 8;

}  // namespace

Document::Document(Picture picture_)
    : picture(std::move(picture_)), selection(host::SelectNothing(picture)) {}

Document Document::Open(const std::filesystem::path& file) {
    return Document(LoadPicture(file));
}

void Document::SelectRectangle(const hostapi::VRect& bounds) {
    const hostapi::VRect inside = Intersect(bounds, picture.Bounds());
    selection = IsEmpty(inside) ? host::SelectNothing(picture) : host::SelectRectangle(inside);
}

void Document::SelectEllipse(const hostapi::VRect& bounds, double feather) {
    const hostapi::VRect inside = Intersect(bounds, picture.Bounds());
    selection =
        IsEmpty(inside) ? host::SelectNothing(picture) : host::SelectEllipse(inside, feather);
}

void Document::SelectNothing() {
    selection = host::SelectNothing(picture);
}

RunReport Document::Apply(FilterHost& host, EntryPoint entry, Execution execution) {
    Picture changed = picture;
    RunReport report = host.Run(entry, changed, selection, execution);
    if (!report.Succeeded())
        return report;
    undoStack.push_back(std::exchange(picture, std::move(changed)));
    if (undoStack.size() > undoLevels)
        undoStack.pop_front();
    isChanged = true;
    return report;
}

void Document::Undo() {
    if (undoStack.empty())
        return;
    picture = std::move(undoStack.back());
    undoStack.pop_back();
    isChanged = true;
}

void Document::Save(const std::filesystem::path& file) {
    SavePicture(picture, file);
    isChanged = false;
}

}  // namespace host
