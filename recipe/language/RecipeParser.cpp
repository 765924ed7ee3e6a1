#include "recipe/language/RecipeParser.h"

#include <algorithm>

#include "recipe/language/Utf8.h"
#include "recipe/language/ValueParser.h"
#include "recipe/language/Wording.h"

namespace recipe {

namespace {

/// A fault of a line. The caller adds its number.
class LineError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsNameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool IsControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && c != '\t') || byte == 0x7F;
}

struct Pair {
    std::string key;
    std::string value;
};

struct Line {
    /// Empty on a line without an operation.
    std::string operation;
    std::vector<Pair> pairs;
};

/// Splits one line into the operation and its keys with their values.
class LineScanner {
  public:
    explicit LineScanner(std::string_view line) : rest(line) {}

    Line Scan() {
        Line line;
        SkipBlanks();
        if (AtEnd()) {
            return line;
        }
        line.operation = TakeUntil([](char c) { return IsBlank(c) || c == '#'; });
        for (SkipBlanks(); !AtEnd(); SkipBlanks()) {
            line.pairs.push_back(ScanPair());
        }
        return line;
    }

  private:
    /// Whether only a comment is left, or nothing.
    bool AtEnd() const { return rest.empty() || rest.front() == '#'; }

    void SkipBlanks() {
        TakeUntil([](char c) { return !IsBlank(c); });
    }

    template <class Predicate>
    std::string TakeUntil(Predicate endsHere) {
        const auto end = std::ranges::find_if(rest, endsHere);
        std::string taken(rest.begin(), end);
        rest.remove_prefix(taken.size());
        return taken;
    }

    Pair ScanPair() {
        Pair pair;
        pair.key = TakeUntil([](char c) { return c == '=' || IsBlank(c) || c == '#'; });
        if (!rest.starts_with('=')) {
            throw LineError(Quoted(pair.key) + " is not of the form key=value");
        }
        if (pair.key.empty()) {
            throw LineError("no key stands before '='");
        }
        rest.remove_prefix(1);
        pair.value = rest.starts_with('"') ? ScanQuoted(pair.key) : ScanPlain(pair.key);
        return pair;
    }

    std::string ScanPlain(const std::string& key) {
        std::string value = TakeUntil([](char c) { return IsBlank(c) || c == '#'; });
        if (value.empty()) {
            throw LineError(Quoted(key) + " has no value");
        }
        if (value.find('"') != std::string::npos) {
            throw LineError("the value of " + Quoted(key) +
                            " has a quote inside: put all of it in quotes, and \\ before that one");
        }
        return value;
    }

    std::string ScanQuoted(const std::string& key) {
        std::string value;
        rest.remove_prefix(1);
        for (;;) {
            value += TakeUntil([](char c) { return c == '"' || c == '\\'; });
            if (rest.empty()) {
                throw LineError("the value of " + Quoted(key) + " has no closing quote");
            }
            const bool closing = rest.front() == '"';
            rest.remove_prefix(1);
            if (closing) {
                break;
            }
            value += ScanEscaped();
        }
        if (!AtEnd() && !IsBlank(rest.front())) {
            throw LineError("a blank is missing behind the value of " + Quoted(key));
        }
        return value;
    }

    char ScanEscaped() {
        if (!rest.starts_with('"') && !rest.starts_with('\\')) {
            throw LineError("inside quotes \\ may stand before \" and \\ only: write \\\\ for \\");
        }
        const char escaped = rest.front();
        rest.remove_prefix(1);
        return escaped;
    }

    std::string_view rest;
};

std::string Replace(std::string_view text, const Replacements& replacements) {
    std::string result;
    for (;;) {
        const std::size_t start = text.find("${");
        result += text.substr(0, start);
        if (start == std::string_view::npos) {
            return result;
        }
        text.remove_prefix(start);
        const std::size_t end = text.find('}');
        const std::string_view name =
            end == std::string_view::npos ? std::string_view() : text.substr(2, end - 2);
        if (!IsReplacementName(name)) {
            throw LineError(Quoted(text) + " does not begin with a name in ${ and }");
        }
        const auto replacement = replacements.find(name);
        if (replacement == replacements.end()) {
            throw LineError("nothing is set for " + Quoted(text.substr(0, end + 1)));
        }
        result += replacement->second;
        text.remove_prefix(end + 1);
    }
}

void ReplaceAll(Line& line, const Replacements& replacements) {
    line.operation = Replace(line.operation, replacements);
    for (Pair& pair : line.pairs) {
        pair.key = Replace(pair.key, replacements);
        pair.value = Replace(pair.value, replacements);
    }
}

const OperationDefinition& FindDefinition(std::span<const OperationDefinition> table,
                                          const std::string& name) {
    const auto row = std::ranges::find(table, name, &OperationDefinition::name);
    if (row == table.end()) {
        throw LineError("unknown operation " + Quoted(name));
    }
    return *row;
}

std::string BeginningOperations(std::span<const OperationDefinition> table) {
    std::vector<std::string> names;
    for (const OperationDefinition& definition : table) {
        if (definition.textureUse == TextureUse::begins) {
            names.push_back(Quoted(definition.name));
        }
    }
    return ListOf(names);
}

void SetGivenValue(const OperationDefinition& definition, const Pair& pair, Arguments& arguments) {
    const auto key = std::ranges::find(definition.keys, pair.key, &KeyDefinition::name);
    if (key == definition.keys.end()) {
        throw LineError(Quoted(definition.name) + " has no key " + Quoted(pair.key));
    }
    if (arguments.Has(key->name)) {
        throw LineError(Quoted(pair.key) + " is given twice");
    }
    try {
        arguments.Set(key->name, ParseValue(key->type, pair.value));
    } catch (const ValueError& error) {
        throw LineError(Quoted(pair.key) + " " + error.what());
    }
}

void SetMissingValue(const OperationDefinition& definition, const KeyDefinition& key,
                     Arguments& arguments) {
    if (std::holds_alternative<Required>(key.whenMissing)) {
        throw LineError(Quoted(definition.name) + " needs the key " + Quoted(key.name));
    }
    if (const Value* value = std::get_if<Value>(&key.whenMissing)) {
        arguments.Set(key.name, *value);
    }
}

Arguments CheckArguments(const OperationDefinition& definition, const Line& line) {
    Arguments arguments;
    for (const Pair& pair : line.pairs) {
        SetGivenValue(definition, pair, arguments);
    }
    for (const KeyDefinition& key : definition.keys) {
        if (!arguments.Has(key.name)) {
            SetMissingValue(definition, key, arguments);
        }
    }
    if (definition.check != nullptr) {
        try {
            definition.check(arguments);
        } catch (const ValueError& error) {
            throw LineError(error.what());
        }
    }
    return arguments;
}

void CheckCharacters(std::string_view line) {
    if (std::ranges::any_of(line, IsControl)) {
        throw LineError("a control character");
    }
    if (!IsUtf8(line)) {
        throw LineError("the text is not UTF-8");
    }
}

/// Reads the operations of a recipe in order.
class Parser {
  public:
    Parser(std::span<const OperationDefinition> operationTable, const Replacements& replacementMap)
        : table(operationTable), replacements(replacementMap) {}

    void AddLine(std::string_view text, int number) {
        CheckCharacters(text);
        Line line = LineScanner(text).Scan();
        if (line.operation.empty()) {
            return;
        }
        ReplaceAll(line, replacements);
        const OperationDefinition& definition = FindDefinition(table, line.operation);
        if (operations.empty() && definition.textureUse != TextureUse::begins) {
            throw LineError(Quoted(definition.name) + " stands before the first " +
                            BeginningOperations(table));
        }
        operations.push_back({&definition, number, CheckArguments(definition, line)});
    }

    std::vector<Operation> operations;

  private:
    std::span<const OperationDefinition> table;
    const Replacements& replacements;
};

/// Removes the first line from `text` and returns it without its line end.
std::string_view TakeLine(std::string_view& text) {
    const std::size_t length = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

}  // namespace

bool IsReplacementName(std::string_view name) {
    return !name.empty() && IsNameStart(name.front()) &&
           std::ranges::all_of(name, [](char c) { return IsNameStart(c) || IsDigit(c); });
}

std::vector<Operation> ParseRecipe(std::string_view text,
                                   std::span<const OperationDefinition> table,
                                   const Replacements& replacements) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    Parser parser(table, replacements);
    for (int number = 1; !text.empty(); ++number) {
        try {
            parser.AddLine(TakeLine(text), number);
        } catch (const LineError& error) {
            throw RecipeError(number, error.what());
        }
    }
    return std::move(parser.operations);
}

}  // namespace recipe
