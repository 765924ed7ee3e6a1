// Which text the editor's help readout shows as the pointer moves from item to item.
#pragma once

/// Over an item with parts of its own (palette cells, colour wells) the part's string takes the
/// place of the item's. A text is asked for only when the item or the part has changed.
class HelpReadout {
  public:
    static constexpr short noHint = 0;

    /// The string to show now, or 0 to leave the readout as it is. `item` is 0 outside all items,
    /// whose string does not exist and so empties the readout; `hint` is the string of the part
    /// under the pointer, or noHint.
    short Follow(short item, short hint);

  private:
    short lastItem = 0;
    short lastHint = noHint;
};
