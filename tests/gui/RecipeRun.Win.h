// A recipe beside what a user does in the windows, from the same texture.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "paint/Catalog.h"
#include "tests/gui/PluginRun.Win.h"
#include "tests/recipe/SessionRun.h"
#include "tests/support/Pictures.h"

/// Runs lines of a recipe, with the clock of the tests. One at a time, and none while the plug-in
/// runs: both work in the core's one host.
class RecipeRun {
  public:
    /// The generator's state at the beginning.
    static constexpr std::uint32_t seed = 7;

    /// `makeTexture` makes the texture to start with, in the recipe's memory. Relative names of
    /// files are looked for in `folder`.
    explicit RecipeRun(const std::function<std::unique_ptr<PaintClass>()>& makeTexture,
                       const std::filesystem::path& folder = {})
        : session(recipe::FilePlaces(folder, folder)) {
        session.SetTexture(makeTexture());
        Run("clock seconds=" + std::to_string(testClock));
        Run("seed value=" + std::to_string(seed));
    }

    void Run(const std::string& lines) { RunText(session, lines); }
    const PaintClass& Texture() { return session.Texture(); }
    std::vector<Pixel> Colors() { return ColorsOf(session.Texture()); }

  private:
    recipe::Session session;
};

/// A point or a colour as the value of a key.
inline std::string RecipeValue(hostapi::Point point) {
    return std::to_string(point.h) + "," + std::to_string(point.v);
}
inline std::string RecipeValue(const RGBColor16& color) {
    return std::to_string(color.red) + "," + std::to_string(color.green) + "," +
           std::to_string(color.blue);
}

/// The line that runs an operation of the catalogue with a record of its type.
inline std::string RecipeLine(const CatalogRow& row, const void* record) {
    std::string line = row.name;
    for (const Field& field : row.fields) {
        line += std::string(" ") + field.name + "=";
        if (field.type == FieldType::color) {
            line += RecipeValue(ReadColor(field, record));
        } else if (field.type == FieldType::real) {
            // Exact as it is: the numbers of the dialogs are percents.
            char text[32];
            std::snprintf(text, sizeof text, "%.17g", ReadNumber(field, record));
            line += text;
        } else {
            line += std::to_string(static_cast<int>(ReadNumber(field, record)));
        }
    }
    return line;
}
