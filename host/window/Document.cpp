#include "host/window/Document.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "base/Rectangles.h"

namespace host {

namespace {

std::size_t RowBytes(const hostapi::VRect& bounds, int planes) {
    return static_cast<std::size_t>(Width(bounds)) * static_cast<std::size_t>(planes);
}

std::vector<std::uint8_t> CopyPart(const Picture& picture, const hostapi::VRect& bounds) {
    const std::size_t rowBytes = RowBytes(bounds, picture.planes);
    std::vector<std::uint8_t> pixels;
    pixels.reserve(rowBytes * static_cast<std::size_t>(Height(bounds)));
    for (int y = bounds.top; y < bounds.bottom; ++y) {
        const std::uint8_t* row = picture.Pixel(bounds.left, y);
        pixels.insert(pixels.end(), row, row + rowBytes);
    }
    return pixels;
}

bool IsInside(const Selection& selection, const Picture& picture) {
    return !IsEmpty(selection.bounds) && Contains(picture.Bounds(), selection.bounds);
}

bool HasWholeMask(const Selection& selection) {
    const std::size_t area = static_cast<std::size_t>(Width(selection.bounds)) *
                             static_cast<std::size_t>(Height(selection.bounds));
    return !selection.HasMask() || selection.mask.size() == area;
}

}  // namespace

hostapi::VRect ChangedBounds(const Picture& before, const Picture& after) {
    hostapi::VRect changed{before.height, before.width, 0, 0};
    const std::size_t rowBytes = before.RowBytes();
    for (int y = 0; y < before.height; ++y) {
        const std::uint8_t* const a = before.Row(y);
        const std::uint8_t* const b = after.Row(y);
        if (std::memcmp(a, b, rowBytes) == 0) {
            continue;
        }
        const auto first = std::mismatch(a, a + rowBytes, b).first - a;
        const auto last =
            std::mismatch(std::make_reverse_iterator(a + rowBytes), std::make_reverse_iterator(a),
                          std::make_reverse_iterator(b + rowBytes))
                .first.base() -
            a - 1;
        changed.top = std::min(changed.top, y);
        changed.bottom = y + 1;
        changed.left = std::min(changed.left, static_cast<int>(first) / before.planes);
        changed.right = std::max(changed.right, static_cast<int>(last) / before.planes + 1);
    }
    return IsEmpty(changed) ? hostapi::VRect{0, 0, 0, 0} : changed;
}

Document::Document(Picture picture, std::filesystem::path newFile, std::size_t newUndoBytes)
    : image(std::move(picture)),
      file(std::move(newFile)),
      selection(SelectNothing(image)),
      undoBytes(newUndoBytes) {}

std::string Document::Name() const {
    return file.empty() ? "Untitled" : Utf8Name(file.filename());
}

void Document::Select(Selection newSelection) {
    if (!IsInside(newSelection, image)) {
        throw SelectionError("The selection isn't inside the picture.");
    }
    if (!HasWholeMask(newSelection)) {
        throw SelectionError("The selection's mask hasn't the size of the selection.");
    }
    selection = std::move(newSelection);
}

void Document::SelectAll() {
    selection = SelectRectangle(image.Bounds());
}

void Document::Deselect() {
    selection = SelectNothing(image);
}

std::optional<hostapi::VRect> Document::Replace(Picture changed, std::string name) {
    if (changed.width != image.width || changed.height != image.height ||
        changed.planes != image.planes || changed.pixels.size() != image.pixels.size()) {
        throw PictureError(Name() + ": a step cannot change the size of the picture");
    }
    const hostapi::VRect bounds = ChangedBounds(image, changed);
    if (IsEmpty(bounds)) {
        return std::nullopt;
    }
    Step step{std::move(name), bounds, CopyPart(image, bounds)};
    ForgetUndoneSteps();
    steps.push_back(std::move(step));
    ++position;
    image.pixels.swap(changed.pixels);
    ForgetOldSteps();
    return bounds;
}

std::optional<hostapi::VRect> Document::Undo() {
    if (!CanUndo()) {
        return std::nullopt;
    }
    --position;
    Exchange(steps[position]);
    return steps[position].bounds;
}

std::optional<hostapi::VRect> Document::Redo() {
    if (!CanRedo()) {
        return std::nullopt;
    }
    Exchange(steps[position]);
    ++position;
    return steps[position - 1].bounds;
}

void Document::SaveAs(const std::filesystem::path& target) {
    SavePicture(image, target);
    file = target;
    savedPosition = position;
}

void Document::Exchange(Step& step) {
    const auto rowBytes = static_cast<std::ptrdiff_t>(RowBytes(step.bounds, image.planes));
    auto kept = step.pixels.begin();
    for (int y = step.bounds.top; y < step.bounds.bottom; ++y) {
        std::swap_ranges(kept, kept + rowBytes, image.Pixel(step.bounds.left, y));
        kept += rowBytes;
    }
}

void Document::ForgetUndoneSteps() {
    if (savedPosition && *savedPosition > position) {
        savedPosition.reset();
    }
    steps.resize(position);
}

void Document::ForgetOldSteps() {
    std::size_t bytes = 0;
    for (const Step& step : steps) {
        bytes += step.pixels.size();
    }
    while (bytes > undoBytes && steps.size() > 1) {
        bytes -= steps.front().pixels.size();
        steps.pop_front();
        --position;
        if (savedPosition) {
            savedPosition = *savedPosition > 0 ? std::optional(*savedPosition - 1) : std::nullopt;
        }
    }
}

}  // namespace host
