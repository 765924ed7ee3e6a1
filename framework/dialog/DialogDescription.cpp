// The names, roles and values of a dialog's items, as a screen reader is told of them.
#include "framework/dialog/NorvantaDialog.h"

void NorvantaDialog::SetRole(short item, ItemRole role, short named) {
    roles.push_back({item, role, named});
}

ItemRole NorvantaDialog::RoleOf(short item) const {
    for (const Role& set : roles) {
        if (set.item == item) {
            return set.role;
        }
    }
    return ControlRole(Record(item));
}

/// The item of which this one bears the name; itself for most.
short NorvantaDialog::NamedAs(short item) const {
    for (const Role& set : roles) {
        if (set.item == item && set.named != 0) {
            return set.named;
        }
    }
    return item;
}

/// The text that names the item; 0 for none.
short NorvantaDialog::LabelOf(short item) const {
    for (const Label& set : labels) {
        if (set.item == item) {
            return set.text;
        }
    }
    const std::uint8_t itemKind = Record(item).kind;
    if ((itemKind == itemButton || itemKind == itemCustom) && !SpokenText(GetText(item)).empty()) {
        return item;
    }
    const short before = static_cast<short>(item - 1);
    return IsItem(before) && Record(before).kind == itemText && IsLabel(GetText(before)) ? before
                                                                                         : short{0};
}

std::string NorvantaDialog::OwnNameOf(short item) const {
    const short named = NamedAs(item);
    for (const Name& set : names) {
        if (set.item == named) {
            return set.name;
        }
    }
    const short label = LabelOf(named);
    return label != 0 ? SpokenText(GetText(label)) : "";
}

/// Two boxes may have a field of the same name each.
bool NorvantaDialog::IsNameShared(short item) const {
    const std::string name = OwnNameOf(item);
    const ItemRole role = RoleOf(item);
    for (short other = 1; other <= itemCount; ++other) {
        if (other != item && RoleOf(other) == role && OwnNameOf(other) == name) {
            return true;
        }
    }
    return false;
}

std::string NorvantaDialog::NameOf(short item) const {
    const std::string name = OwnNameOf(item);
    const short group = !name.empty() && IsNameShared(item) ? GroupOf(item) : short{0};
    return group != 0 ? SpokenText(GetText(group)) + ", " + name : name;
}

char NorvantaDialog::KeyOf(short item) const {
    const short label = LabelOf(item);
    return label != 0 ? MnemonicIn(GetText(label)) : '\0';
}

std::string NorvantaDialog::ValueTextOf(short item, ItemRole role) const {
    switch (role) {
        case ItemRole::field:
            return GetText(item);
        case ItemRole::slider:
        case ItemRole::scrollBar:
            return std::to_string(GetShort(item));
        case ItemRole::dial:
            return GetText(NamedAs(item)) + " degrees";
        case ItemRole::popup:
            return PopupText(item, GetShort(item));
        default:
            return "";
    }
}

ItemDescription NorvantaDialog::Describe(short item) const {
    ItemDescription description;
    description.role = RoleOf(item);
    if (description.role != ItemRole::system) {
        description.name = NameOf(item);
        description.value = ValueTextOf(item, description.role);
        description.isChosen =
            (description.role == ItemRole::radioButton || description.role == ItemRole::checkBox) &&
            GetShort(item) != 0;
    }
    return description;
}
