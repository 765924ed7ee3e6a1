#include "dialogs/Bindings.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "dialogs/ColorChoice.h"
#include "framework/controls/GlobeControl.h"
#include "resources/Ids.h"

/// One row.
class Binding {
  public:
    Binding(SmallPSDialog& newDialog, const Field& newField, void* newRecord)
        : dialog(newDialog), field(newField), record(newRecord) {}
    Binding(const Binding&) = delete;
    Binding& operator=(const Binding&) = delete;
    virtual ~Binding() = default;

    // As in Bindings.
    virtual void SetUp() {}
    virtual void Show() = 0;
    virtual void Read() = 0;
    virtual bool Hit(short item) = 0;
    virtual void Scroll(short, int) {}
    virtual bool Key(short, ItemKey, int) { return false; }
    virtual bool Draw(short) { return false; }
    virtual void Describe(short, ItemDescription&) const {}

  protected:
    double Stored() const { return ReadNumber(field, record); }
    void Store(double value) { WriteNumber(field, record, value); }

    SmallPSDialog& dialog;
    const Field& field;
    void* record;
};

namespace {

/// The dial of an angle's field. All dialogs have the same one.
class AngleDial : public GlobeControl {
  public:
    void SetUp(NorvantaDialog& newDialog, short newItem, short newAngleItem) {
        constexpr short knobInset = 7;
        angleItem = newAngleItem;
        Initialize(&newDialog, newItem, bitmapDial, iconDialKnob, knobInset,
                   [](GlobeControl* globe, int, int newAngle) {
                       const auto& dial = static_cast<const AngleDial&>(*globe);
                       dial.Dialog()->SetValue(dial.angleItem, newAngle);
                   });
    }

  private:
    short angleItem = 0;
};

/// How far a key turns a dial: the arrows as on a slider, a page by an eighth of a turn.
int DegreesOf(ItemKey key, bool isShifted) {
    const int step = isShifted ? 10 : 1;
    constexpr int page = 45;
    switch (key) {
        case ItemKey::back:
            return -step;
        case ItemKey::on:
            return step;
        case ItemKey::pageBack:
            return -page;
        case ItemKey::pageOn:
            return page;
        case ItemKey::press:
            break;
    }
    return 0;
}

class NumberBinding : public Binding {
  public:
    NumberBinding(SmallPSDialog& newDialog, const Field& newField, void* newRecord,
                  const NumberItems& newItems, const NumberShown& newShown)
        : Binding(newDialog, newField, newRecord), items(newItems), shown(newShown) {
        if (items.name != nullptr) {
            dialog.SetName(items.field != 0 ? items.field : items.slider, items.name);
        }
    }

    void SetUp() override {
        const auto [lowest, highest] = std::minmax({Convert(field.low), Convert(field.high)});
        if (items.field != 0) {
            dialog.SetFormat(items.field, "%d", lowest, highest);
        }
        if (items.slider != 0) {
            dialog.SetRange(items.slider, lowest, highest);
        }
        if (items.dial != 0) {
            dial.SetUp(dialog, items.dial, items.field);
            dialog.SetRole(items.dial, ItemRole::dial, items.field);
        }
        if (items.slider != 0 && items.field != 0) {
            dialog.SetRole(items.slider, ItemRole::slider, items.field);
        }
        if (items.label != 0) {
            dialog.SetLabel(items.label, items.field != 0 ? items.field : items.slider);
        }
    }

    void Show() override {
        const double value = Convert(Stored());
        if (items.field != 0) {
            dialog.SetValue(items.field, value);
        }
        ShowInPartners(value);
    }

    void Read() override {
        const short value = dialog.GetShort(items.field != 0 ? items.field : items.slider);
        Store(static_cast<double>(value - shown.offset) / shown.factor);
    }

    bool Hit(short item) override {
        if (items.dial != 0 && item == items.dial) {
            dial.Track();
            return true;
        }
        if (items.field == 0 || item != items.field) {
            return false;
        }
        ShowInPartners(dialog.GetValue(items.field));
        return true;
    }

    void Scroll(short item, int value) override {
        if (item == items.slider && items.field != 0) {
            dialog.SetValue(items.field, value);
        }
    }

    bool Key(short item, ItemKey key, int modifiers) override {
        const int degrees = DegreesOf(key, (modifiers & modifierShift) != 0);
        if (items.dial == 0 || item != items.dial || degrees == 0) {
            return false;
        }
        dialog.SetValue(items.field, TurnedAngle(dialog.GetShort(items.field), degrees));
        ShowInPartners(dialog.GetValue(items.field));
        return true;
    }

    bool Draw(short item) override {
        if (items.dial == 0 || item != items.dial) {
            return false;
        }
        dial.Draw();
        return true;
    }

  private:
    double Convert(double stored) const { return stored * shown.factor + shown.offset; }

    void ShowInPartners(double value) {
        if (items.slider != 0) {
            dialog.SetValue(items.slider, value);
        }
        if (items.dial != 0) {
            dial.SetAngle(dialog.GetShort(items.field));
        }
    }

    NumberItems items;
    NumberShown shown;
    AngleDial dial;
};

class CheckBinding : public Binding {
  public:
    CheckBinding(SmallPSDialog& newDialog, const Field& newField, void* newRecord, short newItem)
        : Binding(newDialog, newField, newRecord), item(newItem) {}

    void Show() override { dialog.SetValue(item, Stored()); }
    void Read() override { Store(dialog.GetShort(item)); }

    bool Hit(short hitItem) override {
        if (hitItem != item) {
            return false;
        }
        dialog.SetValue(item, dialog.GetShort(item) != 0 ? 0 : 1);
        return true;
    }

  private:
    short item;
};

class RadioBinding : public Binding {
  public:
    RadioBinding(SmallPSDialog& newDialog, const Field& newField, void* newRecord,
                 const std::vector<RadioChoice>& newChoices, const OtherValues& newOthers)
        : Binding(newDialog, newField, newRecord), choices(newChoices), others(newOthers) {}

    /// A button without a text stands below a picture or in a place that says what it is.
    void SetUp() override {
        for (const RadioChoice& choice : choices) {
            const std::string name = SpokenWord(WordOf(choice.value));
            if (!name.empty() && dialog.GetText(choice.item).empty()) {
                dialog.SetName(choice.item, name);
            }
        }
    }

    void Show() override {
        const double value = Stored();
        const auto found = std::find_if(choices.begin(), choices.end(),
                                        [&](const auto& choice) { return choice.value == value; });
        TurnOn(found != choices.end() ? found->item : others.shownAs);
    }

    void Read() override {
        const auto found = std::find_if(choices.begin(), choices.end(), [&](const auto& choice) {
            return dialog.GetShort(choice.item) != 0;
        });
        if (found != choices.end()) {
            Store(found->value);
        } else if (others.readAs) {
            Store(*others.readAs);
        }
    }

    bool Hit(short item) override {
        const auto found = std::find_if(choices.begin(), choices.end(), [=](const auto& choice) {
            return choice.item == item || (choice.picture != 0 && choice.picture == item);
        });
        if (found == choices.end()) {
            return false;
        }
        TurnOn(found->item);
        return true;
    }

    void Describe(short item, ItemDescription& description) const override {
        for (const RadioChoice& choice : choices) {
            if (choice.picture != 0 && choice.picture == item) {
                description.role = ItemRole::radioButton;
                description.name = dialog.NameOf(choice.item) + ", picture";
                description.isChosen = dialog.GetShort(choice.item) != 0;
            }
        }
    }

  private:
    std::string_view WordOf(int value) const {
        const auto word = std::find_if(field.words.begin(), field.words.end(),
                                       [=](const FieldWord& each) { return each.value == value; });
        return word != field.words.end() ? std::string_view(word->word) : "";
    }

    void TurnOn(short item) {
        for (const RadioChoice& choice : choices) {
            dialog.SetValue(choice.item, choice.item == item ? 1 : 0);
        }
    }

    std::vector<RadioChoice> choices;
    OtherValues others;
};

class PopupBinding : public Binding {
  public:
    PopupBinding(SmallPSDialog& newDialog, const Field& newField, void* newRecord, short newItem)
        : Binding(newDialog, newField, newRecord), item(newItem) {}

    void Show() override { dialog.SetValue(item, Stored()); }
    void Read() override { Store(dialog.GetShort(item)); }
    bool Hit(short hitItem) override { return hitItem == item; }

  private:
    short item;
};

/// The record itself has the colour that the swatch shows.
class SwatchBinding : public Binding {
  public:
    SwatchBinding(SmallPSDialog& newDialog, const Field& newField, void* newRecord, short newItem)
        : Binding(newDialog, newField, newRecord), item(newItem) {}

    void SetUp() override { dialog.SetRole(item, ItemRole::swatch); }
    void Show() override { dialog.InvalidateItem(item); }
    void Read() override {}

    void Describe(short described, ItemDescription& description) const override {
        if (described == item) {
            description.value = ColorText(ShownColor(ReadColor(field, record)));
        }
    }

    bool Hit(short hitItem) override {
        if (hitItem != item) {
            return false;
        }
        RGBColor16 color = ReadColor(field, record);
        ChooseColorFor(dialog, &color);
        WriteColor(field, record, color);
        dialog.InvalidateItem(item);
        return true;
    }

    bool Draw(short drawnItem) override {
        if (drawnItem != item) {
            return false;
        }
        dialog.DrawColorBox(dialog.GetBounds(item), ShownColor(ReadColor(field, record)));
        return true;
    }

  private:
    short item;
};

}  // namespace

std::vector<short> ItemRange(short first, short last) {
    std::vector<short> items(static_cast<std::size_t>(last - first + 1));
    std::iota(items.begin(), items.end(), first);
    return items;
}

std::vector<RadioChoice> RadioRange(short first, short last, short firstPicture) {
    std::vector<RadioChoice> choices;
    for (const short item : ItemRange(first, last)) {
        const short value = static_cast<short>(item - first);
        const int picture = firstPicture != 0 ? firstPicture + value : 0;
        choices.push_back({value, item, static_cast<short>(picture)});
    }
    return choices;
}

Bindings::Bindings(SmallPSDialog& newDialog, void* newRecord)
    : dialog(newDialog), record(newRecord) {}

Bindings::~Bindings() = default;

// --- The rows ---

void Bindings::Number(const Field& field, const NumberItems& items, const NumberShown& shown) {
    rows.push_back(std::make_unique<NumberBinding>(dialog, field, record, items, shown));
}

void Bindings::Check(const Field& field, short item) {
    rows.push_back(std::make_unique<CheckBinding>(dialog, field, record, item));
}

void Bindings::Radios(const Field& field, const std::vector<RadioChoice>& choices,
                      const OtherValues& others) {
    rows.push_back(std::make_unique<RadioBinding>(dialog, field, record, choices, others));
}

void Bindings::Popup(const Field& field, short item) {
    rows.push_back(std::make_unique<PopupBinding>(dialog, field, record, item));
}

void Bindings::Swatch(const Field& field, short item) {
    rows.push_back(std::make_unique<SwatchBinding>(dialog, field, record, item));
}

void Bindings::Disable(const std::vector<short>& items, short master, int off) {
    dependences.push_back({items, master, off});
}

// --- What the window asks ---

void Bindings::SetUp() {
    for (const auto& row : rows) {
        row->SetUp();
    }
    dialog.SetTabOrder(tabOrder);
}

void Bindings::Show() {
    for (const auto& row : rows) {
        row->Show();
    }
    EnableDependents();
}

void Bindings::Read() {
    for (const auto& row : rows) {
        row->Read();
    }
}

bool Bindings::Hit(short item) {
    for (const auto& row : rows) {
        if (row->Hit(item)) {
            EnableDependents();
            return true;
        }
    }
    return false;
}

void Bindings::Scroll(short item, int value) {
    for (const auto& row : rows) {
        row->Scroll(item, value);
    }
}

void Bindings::Describe(short item, ItemDescription& description) const {
    for (const auto& row : rows) {
        row->Describe(item, description);
    }
}

bool Bindings::Key(short item, ItemKey key, int modifiers) {
    return std::any_of(rows.begin(), rows.end(),
                       [=](const auto& row) { return row->Key(item, key, modifiers); });
}

bool Bindings::Draw(short item) {
    return std::any_of(rows.begin(), rows.end(),
                       [item](const auto& row) { return row->Draw(item); });
}

void Bindings::EnableDependents() {
    for (const Dependence& dependence : dependences) {
        const bool on = dialog.GetShort(dependence.master) != dependence.off;
        for (const short item : dependence.items) {
            dialog.Enable(item, on);
        }
    }
}
