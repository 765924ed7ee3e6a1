#include "recipe/language/ValueParser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <system_error>

#include "recipe/language/Wording.h"

namespace recipe {

namespace {

template <class... Handlers>
struct Overloaded : Handlers... {
    using Handlers::operator()...;
};
template <class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

[[noreturn]] void Reject(const std::string& whatItMustBe, std::string_view text) {
    throw ValueError("must be " + whatItMustBe + ", not " + Quoted(text));
}

/// Saturates at the limits of 64 bits, so that the range check reports what is wrong with a number
/// of any length.
std::optional<std::int64_t> ReadInteger(std::string_view text) {
    const bool negative = text.starts_with('-');
    text.remove_prefix(negative ? 1 : 0);
    const bool hexadecimal = text.starts_with("0x") || text.starts_with("0X");
    text.remove_prefix(hexadecimal ? 2 : 0);
    std::uint64_t magnitude = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, status] = std::from_chars(text.data(), end, magnitude, hexadecimal ? 16 : 10);
    if (status == std::errc::invalid_argument || stop != end) {
        return std::nullopt;
    }
    constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
    if (status == std::errc::result_out_of_range || magnitude > most) {
        magnitude = most;
    }
    const auto number = static_cast<std::int64_t>(magnitude);
    return negative ? -number : number;
}

/// Excludes "inf" and "nan", which from_chars accepts and a recipe does not.
bool LooksLikeDecimal(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789.eE+-") == std::string_view::npos;
}

/// Empty also for a number beyond a double's range: no key's range reaches so far.
std::optional<double> ReadReal(std::string_view text) {
    if (!LooksLikeDecimal(text)) {
        const std::optional<std::int64_t> integer = ReadInteger(text);
        return integer ? std::optional(static_cast<double>(*integer)) : std::nullopt;
    }
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, status] = std::from_chars(text.data(), end, number);
    return status == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

/// Reads as many integers of the type as the array holds, separated by commas.
template <class Integer, std::size_t count>
std::optional<std::array<Integer, count>> ReadTuple(std::string_view text) {
    std::array<Integer, count> tuple{};
    for (std::size_t i = 0; i < count; ++i) {
        const bool last = i + 1 == count;
        const std::size_t length = last ? text.size() : text.find(',');
        if (length == std::string_view::npos) {
            return std::nullopt;
        }
        const std::optional<std::int64_t> number = ReadInteger(text.substr(0, length));
        if (!number || !std::in_range<Integer>(*number)) {
            return std::nullopt;
        }
        tuple[i] = static_cast<Integer>(*number);
        text.remove_prefix(last ? length : length + 1);
    }
    return tuple;
}

std::optional<hostapi::Point> ReadPoint(std::string_view text) {
    const auto tuple = ReadTuple<std::int16_t, 2>(text);
    return tuple ? std::optional(hostapi::Point{.v = (*tuple)[1], .h = (*tuple)[0]}) : std::nullopt;
}

std::string Decimal(double number) {
    std::array<char, 32> digits;
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return std::string(digits.data(), result.ptr);
}

Value ParseWhole(const Whole& type, std::string_view text) {
    const std::optional<std::int64_t> number = ReadInteger(text);
    if (!number) {
        Reject("a whole number", text);
    }
    if (*number < type.lowest || *number > type.highest) {
        Reject(std::to_string(type.lowest) + " to " + std::to_string(type.highest), text);
    }
    return *number;
}

/// "23 (none)", or the number alone.
std::string NumberAndWord(const FieldWord& choice) {
    const std::string number = std::to_string(choice.value);
    return *choice.word == 0 ? number : number + " (" + choice.word + ")";
}

Value ParseChoice(const Choice& type, std::string_view text) {
    const std::optional<std::int64_t> number = ReadInteger(text);
    std::vector<std::string> choices;
    for (const FieldWord& choice : type.choices) {
        if (number ? *number == choice.value : !text.empty() && text == choice.word) {
            return std::int64_t{choice.value};
        }
        choices.push_back(NumberAndWord(choice));
    }
    Reject(ListOf(choices), text);
}

Value ParseWord(const Word& type, std::string_view text) {
    if (std::ranges::find(type.choices, text) == type.choices.end()) {
        Reject(ListOf({type.choices.begin(), type.choices.end()}), text);
    }
    return std::string(text);
}

Value ParseReal(const Real& type, std::string_view text) {
    const std::optional<double> number = ReadReal(text);
    if (!number) {
        Reject("a number", text);
    }
    if (!(*number >= type.lowest && *number <= type.highest)) {
        Reject(Decimal(type.lowest) + " to " + Decimal(type.highest), text);
    }
    return *number;
}

Value ParseColor(std::string_view text) {
    const auto tuple = ReadTuple<std::uint16_t, 3>(text);
    if (!tuple) {
        Reject("a colour, red,green,blue with 0 to 65535 each", text);
    }
    return hostapi::RGBColor{.red = (*tuple)[0], .green = (*tuple)[1], .blue = (*tuple)[2]};
}

Value ParsePoint(std::string_view text) {
    const std::optional<hostapi::Point> point = ReadPoint(text);
    if (!point) {
        Reject("a point, x,y with -32768 to 32767 each", text);
    }
    return *point;
}

Value ParseRectangle(std::string_view text) {
    const auto tuple = ReadTuple<std::int16_t, 4>(text);
    if (!tuple) {
        Reject("a rectangle, left,top,right,bottom with -32768 to 32767 each", text);
    }
    const auto [left, top, right, bottom] = *tuple;
    return hostapi::Rect{.top = top, .left = left, .bottom = bottom, .right = right};
}

Value ParsePath(const Path& type, std::string_view text) {
    std::vector<hostapi::Point> points;
    for (std::string_view rest = text;;) {
        const std::size_t length = std::min(rest.find(';'), rest.size());
        const std::optional<hostapi::Point> point = ReadPoint(rest.substr(0, length));
        if (!point) {
            Reject("points x,y separated by ;", text);
        }
        points.push_back(*point);
        if (length == rest.size()) {
            break;
        }
        rest.remove_prefix(length + 1);
    }
    if (points.size() < type.fewestPoints) {
        Reject(std::to_string(type.fewestPoints) + " points or more", text);
    }
    return points;
}

Value ParseFileName(const FileName& type, std::string_view text) {
    if (text.empty()) {
        throw ValueError("must not be empty");
    }
    const auto& extensions = type.extensions;
    if (!extensions.empty() &&
        std::ranges::find(extensions, LowerCaseExtension(text)) == extensions.end()) {
        Reject("a " + ListOf({extensions.begin(), extensions.end()}) + " file", text);
    }
    return std::string(text);
}

Value ParseText(std::string_view text) {
    if (text.empty()) {
        throw ValueError("must not be empty");
    }
    return std::string(text);
}

}  // namespace

Value ParseValue(const KeyType& type, std::string_view text) {
    return std::visit(Overloaded{[&](const Whole& t) { return ParseWhole(t, text); },
                                 [&](const Choice& t) { return ParseChoice(t, text); },
                                 [&](const Word& t) { return ParseWord(t, text); },
                                 [&](const Real& t) { return ParseReal(t, text); },
                                 [&](const ColorTriple&) { return ParseColor(text); },
                                 [&](const Coordinates&) { return ParsePoint(text); },
                                 [&](const Rectangle&) { return ParseRectangle(text); },
                                 [&](const Path& t) { return ParsePath(t, text); },
                                 [&](const FileName& t) { return ParseFileName(t, text); },
                                 [&](const Text&) { return ParseText(text); }},
                      type);
}

std::string LowerCaseExtension(std::string_view fileName) {
    const std::size_t name = fileName.find_last_of("/\\") + 1;  // npos + 1 is 0
    const std::size_t dot = fileName.rfind('.');
    // A name such as ".png" has no extension.
    if (dot == std::string_view::npos || dot <= name) {
        return {};
    }
    std::string extension(fileName.substr(dot));
    std::ranges::transform(extension, extension.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return extension;
}

}  // namespace recipe
