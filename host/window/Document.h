// An open picture with its selection and its steps to undo.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/picture/Picture.h"
#include "host/picture/Selection.h"

namespace host {

/// Changes come as whole pictures, one a step; kept are only the pixels that a step replaced. The
/// selection is not part of the steps.
class Document {
  public:
    /// `file` is where the picture was read from; empty for one that has no file. `undoBytes` is
    /// what the pixels of the steps may take before the oldest are forgotten; the newest one always
    /// stays.
    explicit Document(Picture picture, std::filesystem::path file = {},
                      std::size_t undoBytes = std::size_t{256} << 20);

    const Picture& Image() const { return image; }
    const std::filesystem::path& File() const { return file; }
    /// The file's name without its folder, in UTF-8; "Untitled" without a file.
    std::string Name() const;

    const Selection& Selected() const { return selection; }
    /// Throws SelectionError if the selection isn't inside the picture, or its mask hasn't the size
    /// of its bounds.
    void Select(Selection newSelection);
    void SelectAll();
    void Deselect();

    /// Makes `changed` the picture, as one step named `name`, and returns the changed part;
    /// nothing, and no step, if not a pixel differs. The size, the planes and the resolution are
    /// the picture's own: PictureError if not.
    std::optional<hostapi::VRect> Replace(Picture changed, std::string name);

    bool CanUndo() const { return position > 0; }
    bool CanRedo() const { return position < steps.size(); }
    /// The name of the step that Undo() or Redo() would take; empty if there is none.
    std::string UndoName() const { return CanUndo() ? steps[position - 1].name : std::string(); }
    std::string RedoName() const { return CanRedo() ? steps[position].name : std::string(); }
    /// Return the changed part; nothing if there is no step.
    std::optional<hostapi::VRect> Undo();
    std::optional<hostapi::VRect> Redo();

    /// True if the picture is not the one last read or saved. Undoing back to that one counts as
    /// unmodified.
    bool IsModified() const { return savedPosition != position; }
    /// Writes the picture and takes the path for its own. Throws PictureError; then nothing
    /// changes.
    void SaveAs(const std::filesystem::path& target);

  private:
    // The pixels that the step exchanges with those of the picture: the old ones while it is done,
    // the new ones while it is undone.
    struct Step {
        std::string name;
        hostapi::VRect bounds;
        std::vector<std::uint8_t> pixels;
    };

    void Exchange(Step& step);
    void ForgetUndoneSteps();
    void ForgetOldSteps();

    Picture image;
    std::filesystem::path file;
    Selection selection;
    std::deque<Step> steps;
    // Steps before it are done, those from it on undone.
    std::size_t position = 0;
    // The position whose picture is in the file; none if no step leads there any more.
    std::optional<std::size_t> savedPosition = 0;
    std::size_t undoBytes;
};

/// The smallest rectangle around all pixels that differ; empty if there are none. Both pictures
/// have the same size and planes.
hostapi::VRect ChangedBounds(const Picture& before, const Picture& after);

}  // namespace host
