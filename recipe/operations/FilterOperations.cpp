#include "recipe/operations/FilterOperations.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

#include "paint/EffectRun.h"
#include "recipe/formats/TextureFiles.h"
#include "recipe/language/Wording.h"
#include "recipe/operations/MemoryCheck.h"
#include "recipe/operations/RecordOperations.h"
#include "recipe/tool/Session.h"

namespace recipe {

namespace {

void RunInvert(Session& session, const Arguments&) {
    session.Texture().Invert();
}

void RunAddBump(Session& session, const Arguments&) {
    CheckMemory(session.Texture().AddBump());
}

void RunClear(Session& session, const Arguments&) {
    session.Texture().FillWhite();
}

std::string SizeOf(const PaintClass& texture) {
    return std::to_string(texture.grX) + " by " + std::to_string(texture.grY);
}

void RunCombineWithFile(Session& session, const Arguments& arguments) {
    const auto& file = arguments.Get<std::string>("file");
    const std::unique_ptr<PaintClass> other = LoadTexture(session.Places().FindInput(file));
    if (!RunCombine(session.Texture(), *other, arguments.Number<std::int16_t>("amount"),
                    arguments.Number<std::int32_t>("mode"))) {
        throw std::runtime_error("only textures of the same size can be combined, and " +
                                 Quoted(file) + " is " + SizeOf(*other) + " pixels, not " +
                                 SizeOf(session.Texture()));
    }
}

/// Replaces the session's texture; throws std::bad_alloc if `texture` is null.
void Replace(Session& session, std::unique_ptr<PaintClass> texture) {
    CheckMemory(texture != nullptr);
    session.SetTexture(std::move(texture));
}

void RunTileCommand(Session& session, const Arguments& arguments) {
    Replace(session, RunTile(session.Texture(), arguments.Number<short>("horizontal"),
                             arguments.Number<short>("vertical")));
}

void RunResizeCommand(Session& session, const Arguments& arguments) {
    const PaintClass& texture = session.Texture();
    const short width = arguments.Has("width") ? arguments.Number<short>("width") : texture.grX;
    const short height = arguments.Has("height") ? arguments.Number<short>("height") : texture.grY;
    // The same size leaves the texture with its undo store, as in the editor.
    if (width != texture.grX || height != texture.grY) {
        Replace(session, RunResize(texture, width, height));
    }
}

void RunMoveTool(Session& session, const Arguments& arguments) {
    CheckMemory(
        RunMove(session.Texture(), arguments.Number<int>("dx"), arguments.Number<int>("dy")));
}

}  // namespace

std::vector<OperationDefinition> FilterOperations() {
    using enum TextureUse;
    const Whole side{1, maximalTextureSide};
    const Whole distance{std::numeric_limits<short>::min(), std::numeric_limits<short>::max()};
    return {
        {"invert", changes, {}, RunInvert},
        {"addBump", changes, {}, RunAddBump},
        {"clear", changes, {}, RunClear},
        {"combine",
         changes,
         {{"file", TextureFileName()},
          KeyFor(&CombineParams::mode),
          KeyFor(&CombineParams::amount)},
         RunCombineWithFile},
        // These two take the snapshot of the new texture: undo does not restore the old one.
        {"tile",
         keeps,
         {KeyFor(&TileParams::horizontal), KeyFor(&TileParams::vertical)},
         RunTileCommand},
        {"resize",
         keeps,
         {{"width", side, LeftOut{}}, {"height", side, LeftOut{}}},
         RunResizeCommand},
        {"move",
         changes,
         {{"dx", distance, Defaults(0)}, {"dy", distance, Defaults(0)}},
         RunMoveTool},
    };
}

}  // namespace recipe
