// The parts of a recipe: the rows of the operation table, and the checked operations that the
// parser makes of a text by it. Nothing here touches pixels.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "hostapi/HostTypes.h"
#include "paint/records/Field.h"

namespace recipe {

class Session;
class Arguments;

/// A value after its check. A file name or a text is UTF-8.
using Value = std::variant<std::int64_t, double, hostapi::RGBColor, hostapi::Point, hostapi::Rect,
                           std::vector<hostapi::Point>, std::string>;

// The types that a key can have. Ranges include both ends.

/// An integer, decimal or 0x hexadecimal; read as std::int64_t.
struct Whole {
    std::int64_t lowest;
    std::int64_t highest;
};
/// One of the values of a field, as a number or by its word; read as std::int64_t.
struct Choice {
    std::span<const FieldWord> choices;
};
/// One of a few words; read as std::string.
struct Word {
    std::vector<std::string_view> choices;
};
/// Read as double.
struct Real {
    double lowest;
    double highest;
};
/// `red,green,blue`, 16 bits each; read as hostapi::RGBColor.
struct ColorTriple {};
/// `x,y`, 16 bits each and signed, not wrapped; read as hostapi::Point.
struct Coordinates {};
/// `left,top,right,bottom`, 16 bits each and signed; read as hostapi::Rect.
struct Rectangle {};
/// Points separated by `;`; read as std::vector<hostapi::Point>.
struct Path {
    std::size_t fewestPoints;
};
/// A file name with one of these extensions, in any case; with none given, any name. Read as
/// std::string.
struct FileName {
    std::vector<std::string_view> extensions;
};
/// Anything but the empty text; read as std::string.
struct Text {};

using KeyType = std::variant<Whole, Choice, Word, Real, ColorTriple, Coordinates, Rectangle, Path,
                             FileName, Text>;

/// The key has to be given.
struct Required {};
/// The key is optional; the operation checks whether it is given.
struct LeftOut {};
/// The effect of leaving a key out.
using WhenMissing = std::variant<Required, LeftOut, Value>;

/// Offers a default of any integer type.
constexpr WhenMissing Defaults(std::int64_t value) {
    return Value(value);
}

struct KeyDefinition {
    std::string_view name;
    KeyType type;
    WhenMissing whenMissing = Required{};
};

/// The effect of an operation on the texture.
enum class TextureUse {
    /// Makes it; the only kind that may come first in a recipe.
    begins,
    /// Changes its pixels; the undo snapshot is taken before.
    changes,
    /// Takes no snapshot.
    keeps,
};

/// One row of the operation table. The names live as long as the program.
struct OperationDefinition {
    std::string_view name;
    TextureUse textureUse;
    std::vector<KeyDefinition> keys;
    /// Throws std::exception or a fault of the core when it fails.
    std::function<void(Session& session, const Arguments& arguments)> run;
    /// Checks the combination of values that are each valid by itself, before the recipe runs.
    /// Throws ValueError with the whole message if they make no sense together. May be null.
    void (*check)(const Arguments& arguments) = nullptr;
};

/// The values of one operation by key: those given and the defaults of the others. Asking for a
/// key that the operation's row does not have, or for another type than its own, is an error of
/// the program and throws std::logic_error or std::bad_variant_access.
class Arguments {
  public:
    bool Has(std::string_view key) const { return values.contains(key); }

    template <class Type>
    const Type& Get(std::string_view key) const {
        return std::get<Type>(values.at(key));
    }
    /// A Whole or Choice as `Integer`, the type of its field, which must hold the range of the
    /// key's row.
    template <class Integer>
    Integer Number(std::string_view key) const {
        const std::int64_t number = Get<std::int64_t>(key);
        assert(std::in_range<Integer>(number));
        return static_cast<Integer>(number);
    }

    void Set(std::string_view key, Value value) { values[key] = std::move(value); }

  private:
    std::map<std::string_view, Value> values;
};

/// One checked operation of a recipe.
struct Operation {
    const OperationDefinition* definition;
    /// Counted from 1.
    int line;
    Arguments arguments;
};

/// A fault of a recipe, or one in its run, in one line of text.
class RecipeError : public std::runtime_error {
  public:
    RecipeError(int faultyLine, const std::string& message)
        : std::runtime_error(message), line(faultyLine) {}

    /// Counted from 1.
    int line;
};

}  // namespace recipe
