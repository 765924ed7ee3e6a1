// The check of a field that the user has changed: the decisions, without a window.
#pragma once

#include <cstdint>
#include <string>

#include "framework/dialog/ItemRecord.h"

/// Ids of the dialogs that tell a user what is wrong with a field.
enum FieldAlertId : short {
    // In order: between two limits, with a minimum alone, with a maximum alone.
    alertInteger = 18001,
    alertReal = 18004,
    /// The first two groups once more, from here on, offering the closest value.
    alertOffersFrom = 18007,
    alertIntegerAlone = 18013,
    alertRealAlone = 18014,
    alertTextTooLong = 18015,
};

struct NumberCheck {
    enum class Outcome {
        /// The field shows the same value.
        unchanged,
        changed,
        /// Empty: nothing to say yet.
        emptied,
        /// An alert is due.
        bad,
    };
    Outcome outcome;
    /// The status of ParseNumber.
    std::int16_t status;
    double value;
};

/// The check of a number field's text. FatalError 18019 for a field that is not numeric.
NumberCheck CheckNumberText(const char* text, const ItemRecord& record);

struct FieldAlert {
    short id;
    /// For ^0 and ^1; empty where the alert has no such marker.
    std::string texts[2];
    /// Button 1 puts the closest value in the field; not one that no field can show.
    bool offersClosest = false;
};

/// The alert for a number that is bad with `status`.
FieldAlert ChooseFieldAlert(const ItemRecord& record, std::int16_t status);

/// The limit that a number beyond it becomes.
float ClosestValue(const ItemRecord& record, std::int16_t status);

/// A text field with a width takes no longer texts.
bool IsTooLong(const ItemRecord& record, const std::string& text);
