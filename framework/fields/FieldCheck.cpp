#include "framework/fields/FieldCheck.h"

#include "framework/fields/NumberField.h"

namespace {

/// Empty for a limit that is none, or that no field can show.
std::string LimitText(const ItemRecord& record, float limit) {
    std::string text;
    if (IsUnlimited(limit) || FormatNumber(limit, &record, &text) != 0) {
        return {};
    }
    return text;
}

/// The column of the alerts' table: both limits, a minimum alone, a maximum alone.
short LimitColumn(bool hasMinimum, bool hasMaximum) {
    if (hasMinimum && hasMaximum) {
        return 0;
    }
    return hasMinimum ? 1 : 2;
}

}  // namespace

NumberCheck CheckNumberText(const char* text, const ItemRecord& record) {
    using Outcome = NumberCheck::Outcome;
    NumberCheck check{Outcome::bad, 0, 0};
    check.status = ParseNumber(text, record, &check.value);
    if (check.status == fieldEmpty) {
        check.outcome = Outcome::emptied;
    } else if (check.status == 0) {
        check.outcome =
            IsVisibleChange(record, check.value) ? Outcome::changed : Outcome::unchanged;
    }
    return check;
}

FieldAlert ChooseFieldAlert(const ItemRecord& record, std::int16_t status) {
    const bool isInteger = record.Letter() == itemInteger;
    const std::string minimum = LimitText(record, record.minimum);
    const std::string maximum = LimitText(record, record.maximum);
    if (minimum.empty() && maximum.empty()) {
        return {isInteger ? alertIntegerAlone : alertRealAlone, {}};
    }
    const bool offersClosest = status == fieldAboveMaximum || status == fieldBelowMinimum;
    const short column = LimitColumn(!minimum.empty(), !maximum.empty());
    const short offset = offersClosest ? alertOffersFrom - alertInteger : 0;
    const short first = isInteger ? alertInteger : alertReal;
    const std::string& closest = status == fieldAboveMaximum ? maximum : minimum;
    FieldAlert alert{
        static_cast<short>(first + column + offset), {}, offersClosest && !closest.empty()};
    alert.texts[0] = minimum.empty() ? maximum : minimum;
    if (column == 0) {
        alert.texts[1] = maximum;
    }
    return alert;
}

float ClosestValue(const ItemRecord& record, std::int16_t status) {
    return status == fieldAboveMaximum ? record.maximum : record.minimum;
}

bool IsTooLong(const ItemRecord& record, const std::string& text) {
    return record.width != 0 && text.size() > record.width;
}
