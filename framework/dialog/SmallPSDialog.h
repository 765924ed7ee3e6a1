// The base of the dialogs that know the host.
#pragma once

#include "framework/dialog/NorvantaDialog.h"
#include "hostapi/FilterRecord.h"

class SmallPSDialog : public NorvantaDialog {
  public:
    /// Asserts that there is a host: filterRecord is not null.
    explicit SmallPSDialog(short newResourceId, NorvantaDialog* newOwner = nullptr);

    /// The last place of the virtual table that both bases share; does nothing.
    virtual void Reserved(int value);

    // Pen operations in the window's port.
    virtual void MoveTo(short x, short y);
    /// With both ends; the pen stays at the end.
    virtual void LineTo(short x, short y);

    /// A frame filled with the colour, shaded along its inside.
    void DrawColorBox(const hostapi::Rect& rect, Color24 color);

    using NorvantaDialog::SetPlacement;
    /// Moves the client area's top left corner there and keeps the size.
    void SetPlacement(short top, short left);

    /// The host's record, as it was at construction.
    hostapi::FilterRecord* Record() const { return record; }

  private:
    hostapi::FilterRecord* record;
    hostapi::Point pen{};
};
