// Lines of a recipe, run in a session of the test.
#pragma once

#include <string>

#include "recipe/language/RecipeParser.h"
#include "recipe/operations/Operations.h"
#include "recipe/tool/Session.h"

/// Runs the lines of a recipe, or more lines of one whose texture stands already.
inline void RunText(recipe::Session& session, const std::string& text) {
    std::vector<recipe::Operation> operations =
        recipe::ParseRecipe("new\n" + text, recipe::OperationTable());
    operations.erase(operations.begin());
    for (recipe::Operation& operation : operations) {
        --operation.line;
    }
    session.Run(operations);
}

/// "LINE: message" of lines that are right and fail all the same; empty if they do not.
inline std::string Failure(recipe::Session& session, const std::string& text) {
    try {
        RunText(session, text);
        return {};
    } catch (const recipe::RecipeError& error) {
        return std::to_string(error.line) + ": " + error.what();
    }
}
