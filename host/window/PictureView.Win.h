// The part of the window that shows the picture, scrolls it, and lets the user drag a selection.
#pragma once

#include <optional>

#include "host/record/DisplayPixels.h"
#include "host/window/Document.h"
#include "host/window/NativeWindow.Win.h"
#include "host/window/SelectionDrag.h"
#include "host/window/Viewport.h"

namespace host {

/// The view's reports to its owner.
class PictureViewListener {
  public:
    /// The user has finished dragging; the view has changed nothing yet.
    virtual void OnDragged(const DraggedSelection& dragged) = 0;
    /// A click without dragging.
    virtual void OnClicked() = 0;
    /// While dragging, and with null when that ends.
    virtual void OnDragging(const DraggedSelection* dragged) = 0;
    /// The picture's pixel under the mouse; none outside the picture.
    virtual void OnPointer(std::optional<Place> pixel) = 0;
    virtual void OnZoomed(double scale) = 0;

  protected:
    ~PictureViewListener() = default;
};

class PictureView : public NativeWindow {
  public:
    /// The listener lives longer.
    explicit PictureView(PictureViewListener& listener);

    /// Throws std::runtime_error.
    void Create(HWND parent);
    /// Shows the document, which lives until the next call or the view's end; null shows none.
    void Show(const Document* shown);
    /// The shape that dragging selects; with Ctrl held down it's an ellipse anyway.
    void SetShape(SelectionShape newShape) { shape = newShape; }
    /// The picture's pixels in the rectangle have changed.
    void RedrawPart(const hostapi::VRect& part);
    /// The selection has changed, or everything.
    void Redraw();
    /// The ants stand still while the filter works.
    void SetAntsMoving(bool moving);

    /// 100 % is 0, see Viewport.
    int Zoom() const { return viewport.Zoom(); }
    /// Around the view's middle.
    void ZoomTo(int zoom);
    void ZoomToFit();

  private:
    struct Drag {
        Place startInView;
        Place start;
        Place end;
        SelectionShape shape;
        bool isMoved;
    };

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Paint();
    DisplayRows Compose(const hostapi::VRect& area) const;
    void PaintEmpty(HDC context);

    void BeginDrag(Place place, bool isEllipse);
    void MoveDrag(Place place);
    void EndDrag();
    void CancelDrag();
    DraggedSelection Dragged() const;
    void OnTimer(WPARAM timer);
    void ScrollTowardsPointer();
    void ReportPointer(Place place);
    void ReportPointerAgain();

    void OnScrollBar(int bar, int request);
    void OnWheel(WPARAM wParam, LPARAM lParam, bool isHorizontal);
    bool OnKey(WPARAM key);
    void ScrollTo(Place scroll);
    void ZoomAround(int zoom, Place anchor);
    void UpdateScrollBars();

    PictureViewListener& listener;
    const Document* document = nullptr;
    Viewport viewport;
    SelectionShape shape = SelectionShape::rectangle;
    std::optional<Drag> drag;
    int antsPhase = 0;
    int wheelRemainder = 0;
    bool isUpdatingScrollBars = false;
};

}  // namespace host
