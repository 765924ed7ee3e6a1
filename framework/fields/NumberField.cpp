#include "framework/fields/NumberField.h"

#include <algorithm>
#include <cmath>

#include "base/FatalError.h"

NumberCharacters numberCharacters;

namespace {

/// From here on, and below its negative, a limit is none.
constexpr double firstNoLimit = 5e29;
/// Tolerance beyond the limits, which are kept as 32-bit floats.
constexpr double limitTolerance = 0.0001;
/// A change that rounds to the number already shown is none.
constexpr double visiblePart = 0.95;
constexpr double tooLargeToFormat = 4294967295.0;
constexpr int greatestFormatNumber = 255;

constexpr bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Blanks and control characters. Bytes above ASCII are letters of some kind.
constexpr bool IsBlank(char c) {
    return static_cast<unsigned char>(c) <= ' ';
}

constexpr bool IsAboveBlank(char c) {
    return !IsBlank(c);
}

/// Reads the decimal digits at `text`, which moves past them. False above 255.
bool TakeNumber(const char*& text, std::uint8_t* number) {
    int value = 0;
    for (; IsDigit(*text); ++text) {
        value = value * 10 + (*text - '0');
        if (value > greatestFormatNumber) {
            return false;
        }
    }
    *number = static_cast<std::uint8_t>(value);
    return true;
}

/// The walk over a number's characters.
class NumberParser {
  public:
    explicit NumberParser(const ItemRecord& record)
        : isInteger(record.Letter() == itemInteger),
          notANumber(isInteger ? fieldNotInteger : fieldNotReal) {}

    /// 0, or what is wrong.
    std::int16_t Take(char c) {
        if (sign == 0 && IsBlank(c)) {
            return 0;
        }
        if (sign == 0 && TakeSign(c)) {
            return 0;
        }
        if (c == numberCharacters.decimal) {
            return TakeDecimalSeparator();
        }
        if (IsBlank(c)) {
            scale = ended;
            return 0;
        }
        if (!IsDigit(c)) {
            return c == numberCharacters.thousands ? std::int16_t{0} : notANumber;
        }
        return TakeDigit(c - '0');
    }

    /// Nothing but blanks so far.
    bool IsEmpty() const { return sign == 0; }
    double Value() const { return value * sign; }

  private:
    /// The scale after the number's last character, where only blanks may follow.
    static constexpr double ended = -1;

    /// Whether the character was a sign. A number begins here in any case.
    bool TakeSign(char c) {
        sign = c == numberCharacters.minus ? -1 : 1;
        return c == numberCharacters.plus || c == numberCharacters.minus;
    }

    std::int16_t TakeDecimalSeparator() {
        if (isInteger) {
            return fieldNotInteger;
        }
        if (scale < 1) {
            return fieldNotReal;
        }
        scale = 0.1;
        return 0;
    }

    std::int16_t TakeDigit(int digit) {
        if (scale <= 0) {
            return notANumber;
        }
        if (scale < 0.5) {
            value += digit * scale;
            scale /= 10;
        } else {
            value = value * 10 + digit;
        }
        return 0;
    }

    bool isInteger;
    std::int16_t notANumber;
    double sign = 0;
    /// 1 in the whole part, the next digit's weight in the fraction.
    double scale = 1;
    double value = 0;
};

std::int16_t CheckLimits(const ItemRecord& record, double value) {
    if (value < record.minimum - limitTolerance) {
        return fieldBelowMinimum;
    }
    if (value > record.maximum + limitTolerance) {
        return fieldAboveMaximum;
    }
    return 0;
}

std::string FractionDigits(double fraction, int count) {
    std::string digits;
    for (int i = 0; i < count; ++i) {
        fraction *= 10;
        const int digit = std::min(static_cast<int>(fraction), 9);
        digits += static_cast<char>('0' + digit);
        fraction -= digit;
    }
    return digits;
}

}  // namespace

NumberCharacters TakeLocaleCharacters(const NumberCharacters& current,
                                      const NumberCharacters& locale) {
    NumberCharacters result = current;
    if (IsAboveBlank(locale.decimal) && locale.decimal != locale.thousands) {
        result.decimal = locale.decimal;
        result.thousands = locale.thousands;
    }
    if (IsAboveBlank(locale.plus)) {
        result.plus = locale.plus;
    }
    if (IsAboveBlank(locale.minus)) {
        result.minus = locale.minus;
    }
    return result;
}

std::int16_t ParseFormat(const char* text, FieldFormat* format) {
    *format = {};
    if (*text++ != '%') {
        return fieldBadFormat;
    }
    if (*text == '+') {
        format->hasPlus = true;
        ++text;
    }
    if (!TakeNumber(text, &format->width)) {
        return fieldBadFormat;
    }
    const bool hasDecimals = *text == '.';
    if (hasDecimals && (!IsDigit(*++text) || !TakeNumber(text, &format->decimals))) {
        return fieldBadFormat;
    }
    const char letter = *text;
    const bool isKnown =
        letter == itemReal || ((letter == itemInteger || letter == itemText) && !hasDecimals);
    if (!isKnown || text[1] != '\0') {
        return fieldBadFormat;
    }
    format->letter = static_cast<std::uint8_t>(letter);
    return 0;
}

bool IsUnlimited(double limit) {
    return limit <= -firstNoLimit || limit >= firstNoLimit;
}

void StoreLimits(ItemRecord& record, double minimum, double maximum) {
    maximum = std::max(minimum, maximum);
    if (minimum > -firstNoLimit) {
        record.minimum = static_cast<float>(minimum);
    }
    if (maximum < firstNoLimit) {
        record.maximum = static_cast<float>(maximum);
    }
}

double SmallestStep(const ItemRecord& record) {
    double step = 1;
    for (int i = 0; i < record.decimals; ++i) {
        step *= 0.1;
    }
    return step;
}

bool IsVisibleChange(const ItemRecord& record, double value) {
    return std::fabs(value - static_cast<double>(record.value)) >=
           visiblePart * SmallestStep(record);
}

bool IsShownAnew(const ItemRecord& record, double value) {
    return std::fabs(value - static_cast<double>(record.value)) >
           visiblePart * SmallestStep(record);
}

std::int16_t ParseNumber(const char* text, const ItemRecord& record, double* value) {
    if (*text == '\0') {
        return fieldEmpty;
    }
    if (!record.IsNumeric()) {
        FatalError(fieldNotNumeric, "NumberField", __LINE__);
    }
    NumberParser parser(record);
    for (; *text != '\0'; ++text) {
        if (const std::int16_t status = parser.Take(*text); status != 0) {
            return status;
        }
    }
    if (parser.IsEmpty()) {
        return fieldEmpty;
    }
    *value = parser.Value();
    return CheckLimits(record, *value);
}

std::int16_t FormatNumber(double value, const ItemRecord* record, std::string* text) {
    constexpr ItemRecord integer;
    const ItemRecord& format = record != nullptr ? *record : integer;
    const bool isNegative = value < 0;
    const double rounded = std::fabs(value) + 0.5 * SmallestStep(format);
    if (!(rounded < tooLargeToFormat)) {
        return fieldTooLarge;
    }
    const auto whole = static_cast<std::uint32_t>(rounded);
    text->clear();
    // By the number itself, so what rounds to 0 from below shows a minus sign.
    if (isNegative) {
        *text += numberCharacters.minus;
    } else if ((format.flags & itemHasPlus) != 0) {
        *text += numberCharacters.plus;
    }
    *text += std::to_string(whole);
    if (format.Letter() == itemReal) {
        *text += numberCharacters.decimal;
        *text += FractionDigits(rounded - whole, format.decimals);
    }
    if (text->size() < format.width) {
        text->insert(0, format.width - text->size(), ' ');
    }
    return 0;
}

double StepValue(const ItemRecord& record, bool isUp, bool isLarge) {
    const double step = SmallestStep(record) * (isLarge ? 10 : 1);
    const double stepped = record.value + (isUp ? step : -step);
    return std::min(std::max(stepped, static_cast<double>(record.minimum)),
                    static_cast<double>(record.maximum));
}

bool IsRefusedCharacter(const ItemRecord& record, int character) {
    constexpr int firstVisible = 33;
    constexpr int lastVisible = 126;
    if (!record.IsNumeric() || character < firstVisible || character > lastVisible) {
        return false;
    }
    const char c = static_cast<char>(character);
    const bool isOfNumber = IsDigit(c) || c == numberCharacters.plus ||
                            c == numberCharacters.minus || c == numberCharacters.thousands;
    return !isOfNumber && !(c == numberCharacters.decimal && record.Letter() == itemReal);
}
