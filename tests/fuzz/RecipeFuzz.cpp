// Checks any bytes as a recipe, against the real operations; for libFuzzer.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "recipe/language/RecipeParser.h"
#include "recipe/operations/Operations.h"
#include "tests/fuzz/Require.h"

namespace {

const recipe::Replacements replacements = {
    {"size", "64"}, {"name", "a b.png"}, {"empty", ""}, {"again", "${size}"}};

void CheckOperations(const std::vector<recipe::Operation>& operations, int lines) {
    int before = 0;
    for (const recipe::Operation& operation : operations) {
        Require(operation.line > before && operation.line <= lines);
        before = operation.line;
        for (const recipe::KeyDefinition& key : operation.definition->keys) {
            Require(operation.arguments.Has(key.name) ||
                    std::holds_alternative<recipe::LeftOut>(key.whenMissing));
        }
    }
    Require(operations.empty() ||
            operations.front().definition->textureUse == recipe::TextureUse::begins);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto lines = static_cast<int>(1 + std::ranges::count(text, '\n'));
    try {
        CheckOperations(recipe::ParseRecipe(text, recipe::OperationTable(), replacements), lines);
    } catch (const recipe::RecipeError& error) {
        Require(error.line >= 1 && error.line <= lines);
        Require(!std::string_view(error.what()).empty());
    }
    return 0;
}
