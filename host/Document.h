// The open picture with its selection and what can be undone.
#pragma once

#include <cstddef>
#include <deque>
#include <filesystem>

#include "host/FilterHost.h"
#include "host/Picture.h"
#include "host/Selection.h"

namespace host {

/// Nothing selected stands for the whole picture. A document always has a picture.
class Document {
  public:
    explicit Document(Picture picture);
    /// Throws PictureError.
    static Document Open(const std::filesystem::path& file);

    const Picture& CurrentPicture() const { return picture; }
    const Selection& CurrentSelection() const { return selection; }

    /// Takes the part inside the picture; if there is none, nothing is selected.
    void SelectRectangle(const hostapi::VRect& bounds);
    void SelectEllipse(const hostapi::VRect& bounds, double feather);
    void SelectNothing();

    /// Runs a filter on the selection; a success can be undone. Throws as FilterHost::Run().
    RunReport Apply(FilterHost& host, EntryPoint entry, Execution execution);

    bool CanUndo() const { return !undoStack.empty(); }
    /// Goes back before the last filter; does nothing if there is nothing to undo. The selection
    /// stays.
    void Undo();

    /// True if the picture differs from the file, as far as is known.
    bool IsChanged() const { return isChanged; }
    /// Throws PictureError.
    void Save(const std::filesystem::path& file);

  private:
    Picture picture;
    Selection selection;
    std::deque<Picture> undoStack;
    bool isChanged = false;
};

}  // namespace host
