// Numbers in edit fields: formats, limits, and the way from text to number and back.
#pragma once

#include <cstdint>
#include <string>

#include "framework/dialog/ItemRecord.h"

/// Results of a check of a field's text or format, beside 0.
enum FieldStatus : std::int16_t {
    fieldNotInteger = 18013,
    fieldNotReal = 18014,
    fieldBadFormat = 18018,
    fieldNotNumeric = 18019,
    fieldAboveMaximum = 18020,
    fieldBelowMinimum = 18021,
    fieldTooLarge = 18022,
    fieldEmpty = 18023,
};

/// Characters that numbers are written with.
struct NumberCharacters {
    char decimal = '.';
    char thousands = ',';
    char plus = '+';
    char minus = '-';
};

/// Those of the process; a dialog that opens brings them up to date.
extern NumberCharacters numberCharacters;

/// `current` with what is usable of a locale's. The separators are taken together, and only if the
/// decimal one is above blank and differs from the other; a sign is taken if it is above blank.
NumberCharacters TakeLocaleCharacters(const NumberCharacters& current,
                                      const NumberCharacters& locale);

/// The parts of a format: the letter, the numbers and the "+".
struct FieldFormat {
    std::uint8_t letter = itemText;
    std::uint8_t width = 0;
    std::uint8_t decimals = 0;
    bool hasPlus = false;
};

/// 0 or fieldBadFormat. "%", an optional "+", an optional width, an optional "." with decimals (for
/// f alone), and d, f or s. Numbers up to 255.
std::int16_t ParseFormat(const char* text, FieldFormat* format);

/// Whether the value stands for no limit.
bool IsUnlimited(double limit);

/// Stores the limits. A minimum above the maximum raises the maximum; -5E29 or lower as minimum and
/// 5E29 or higher as maximum leave the stored one.
void StoreLimits(ItemRecord& record, double minimum, double maximum);

/// 1 in the last decimal that the field shows.
double SmallestStep(const ItemRecord& record);

/// Whether a number that was typed is another than the stored one.
bool IsVisibleChange(const ItemRecord& record, double value);
/// Whether a number that the program sets is written into the field. A difference equal to the
/// threshold counts as a change when typed, not when set by the program.
bool IsShownAnew(const ItemRecord& record, double value);

/// 0 with the number in `*value`, or one of fieldNotInteger, fieldNotReal, fieldAboveMaximum,
/// fieldBelowMinimum, fieldEmpty. A record that is not numeric is FatalError 18019. A sign alone is
/// 0. The limits are kept with a tolerance of 0.0001.
std::int16_t ParseNumber(const char* text, const ItemRecord& record, double* value);

/// 0 with the text, or fieldTooLarge (from 4294967295 on, and for what is not a number). Without a
/// record: an integer.
std::int16_t FormatNumber(double value, const ItemRecord* record, std::string* text);

/// The stored value, one step up or down, within the limits. `isLarge`: ten steps.
double StepValue(const ItemRecord& record, bool isUp, bool isLarge);

/// Whether a numeric field refuses the character: from 33 to 126 what no number of its kind has.
bool IsRefusedCharacter(const ItemRecord& record, int character);
