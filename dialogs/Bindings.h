// The ties between a dialog's controls and the fields of its record, one row for each field.
//
//     bindings.Number(FieldFor(&BlurParams::amount),
//                     {.field = Items::amount, .slider = Items::slider});
//     bindings.Check(FieldFor(&BlurParams::motion), Items::motion);
//
// A row knows how its controls are set up, how they show the field and are read back, and how they
// follow each other. The dialog makes its rows once, in its constructor, and passes on what its
// window asks: SetUp and Show from Setup, Hit from ItemHit, Scroll from ScrollChanged, Draw from
// DrawItem, Read before the record is used.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "framework/dialog/SmallPSDialog.h"
#include "paint/records/Field.h"

/// The controls that show one number and follow each other; 0 for none. The number is read from the
/// field if there is one, else from the slider.
struct NumberItems {
    /// An edit field; becomes one for whole numbers.
    short field = 0;
    /// A tLinearSlider.
    short slider = 0;
    /// A user item, for an angle; needs the field.
    short dial = 0;
    /// Their text, if its mnemonic would lead elsewhere: the tab stop after it is another one.
    short label = 0;
    /// Its name for screen readers, if no text beside it is that.
    const char* name = nullptr;
};

/// The number in the controls is `stored * factor + offset`, rounded; `factor` is not 0. The limits
/// of the controls are those of the record's field, converted.
struct NumberShown {
    int factor = 1;
    int offset = 0;
};

/// A radio button, and the value of the field that it stands for.
struct RadioChoice {
    int value;
    short item;
    /// A picture that acts as the button, too; 0 for none.
    short picture = 0;
};

/// The values that no button of a group stands for.
struct OtherValues {
    /// The button that is checked for them; 0 for none.
    short shownAs = 0;
    /// The value that is read while no button is checked. Without one the record keeps its value.
    std::optional<int> readAs = std::nullopt;
};

/// Returns the items from `first` to `last`, both included.
std::vector<short> ItemRange(short first, short last);
/// Returns the choices of the buttons from item `first` to item `last`, which stand for 0, 1, 2 and
/// so on. Their pictures' items are consecutive, too; a `firstPicture` of 0 is none.
std::vector<RadioChoice> RadioRange(short first, short last, short firstPicture = 0);

class Binding;

class Bindings {
  public:
    /// `newRecord` is of the type whose table has the fields of all rows. Both outlive the rows.
    Bindings(SmallPSDialog& newDialog, void* newRecord);
    Bindings(const Bindings&) = delete;
    Bindings& operator=(const Bindings&) = delete;
    ~Bindings();

    // The rows.

    void Number(const Field& field, const NumberItems& items, const NumberShown& shown = {});
    /// A check box; 1 in the record while it is checked, else 0.
    void Check(const Field& field, short item);
    void Radios(const Field& field, const std::vector<RadioChoice>& choices,
                const OtherValues& others = {});
    /// A popup or realtime menu; the record has the position of its entry, from 1 on.
    void Popup(const Field& field, short item);
    /// A user item that shows a colour and opens the system's dialog to choose another.
    void Swatch(const Field& field, short item);
    /// `items` are disabled while the control `master` has the value `off`, else enabled.
    void Disable(const std::vector<short>& items, short master, int off);
    /// As NorvantaDialog::SetTabOrder: the order in which the items are read, where their numbers
    /// count otherwise.
    void TabOrder(const std::vector<short>& items) { tabOrder = items; }

    // The requests of the window, which must exist.

    /// Sets the controls' formats, ranges and order.
    void SetUp();
    /// Shows the record in the controls.
    void Show();
    /// Reads the controls into the record.
    void Read();
    /// Acts on a hit of a control. Returns true if it was one of a row and its value has changed;
    /// sliders report their changes by Scroll alone.
    bool Hit(short item);
    /// Passes the value of a slider on to its partner.
    void Scroll(short item, int value);
    /// Acts on a key on a user item. Returns true if it has changed the value.
    bool Key(short item, ItemKey key, int modifiers);
    /// Draws a user item. Returns false for those that no row has.
    bool Draw(short item);
    /// Adds what the rows know of the item.
    void Describe(short item, ItemDescription& description) const;

  private:
    struct Dependence {
        std::vector<short> items;
        short master;
        int off;
    };

    void EnableDependents();

    SmallPSDialog& dialog;
    void* record;
    std::vector<std::unique_ptr<Binding>> rows;
    std::vector<Dependence> dependences;
    std::vector<short> tabOrder;
};
