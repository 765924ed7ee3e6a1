#include "recipe/operations/FilterOperations.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

#include "paint/EffectRun.h"
#include "paint/records/FilterParams.h"
#include "recipe/formats/TextureFiles.h"
#include "recipe/language/Wording.h"
#include "recipe/operations/Colors.h"
#include "recipe/operations/MemoryCheck.h"
#include "recipe/tool/Session.h"

namespace recipe {

namespace {

void RunBlurFilter(Session& session, const Arguments& arguments) {
    BlurParams params;
    params.amount = arguments.Number<std::int16_t>("amount");
    params.motion = arguments.Number<std::uint8_t>("motion");
    params.direction = arguments.Number<std::int16_t>("direction");
    CheckMemory(RunBlur(session.Texture(), params));
}

void RunSharpenFilter(Session& session, const Arguments& arguments) {
    CheckMemory(
        RunSharpen(session.Texture(), {.passes = arguments.Number<std::int16_t>("passes")}));
}

void RunNoiseFilter(Session& session, const Arguments& arguments) {
    NoiseParams params;
    params.amount = arguments.Number<std::int16_t>("amount");
    params.mode = arguments.Number<std::int32_t>("mode");
    RunNoise(session.Texture(), params);
}

void RunSaturationFilter(Session& session, const Arguments& arguments) {
    RunSaturation(TextureWithRoom(session),
                  {.saturation = arguments.Number<std::int16_t>("saturation")});
}

void RunBrightnessContrastFilter(Session& session, const Arguments& arguments) {
    RunBrightnessContrast(TextureWithRoom(session),
                          {.brightness = arguments.Number<std::int16_t>("brightness"),
                           .contrast = arguments.Number<std::int16_t>("contrast")});
}

void RunAddColorFilter(Session& session, const Arguments& arguments) {
    RunAddColor(TextureWithRoom(session), {.opacity = arguments.Number<std::int16_t>("opacity"),
                                           .color = ColorOf(arguments, "color")});
}

void RunMosaicFilter(Session& session, const Arguments& arguments) {
    RunMosaic(session.Texture(), {.horizontal = arguments.Number<std::int16_t>("horizontal"),
                                  .vertical = arguments.Number<std::int16_t>("vertical")});
}

void RunInvert(Session& session, const Arguments&) {
    session.Texture().Invert();
}

void RunAddBump(Session& session, const Arguments&) {
    CheckMemory(session.Texture().AddBump());
}

void RunFlip(Session& session, const Arguments& arguments) {
    session.Texture().Flip(arguments.Number<short>("mode"));
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

/// Puts a texture in the place of the present one, or throws if there was no memory for it.
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

const BlurParams standardBlur;
const NoiseParams standardNoise;
const BrightContrParams standardContrast;
const AddColorParams standardColor;
const MosaicParams standardMosaic;

}  // namespace

std::vector<OperationDefinition> FilterOperations() {
    using enum TextureUse;
    const Whole percent{0, 100};
    const Whole percentAboveZero{1, 100};
    const Whole copies{1, 12};
    const Whole side{1, maximalTextureSide};
    const Whole distance{std::numeric_limits<short>::min(), std::numeric_limits<short>::max()};
    const OneOf blockSides{{1, 3, 4, 5, 6, 7, 8, 9}};
    return {
        {"blur",
         changes,
         {{"amount", percentAboveZero, Defaults(standardBlur.amount)},
          {"motion", Whole{0, 1}, Defaults(standardBlur.motion)},
          {"direction", Whole{0, 7}, Defaults(standardBlur.direction)}},
         RunBlurFilter},
        {"sharpen",
         changes,
         {{"passes", Whole{1, 5}, Defaults(SharpenParams{}.passes)}},
         RunSharpenFilter},
        {"noise",
         changes,
         {{"amount", percentAboveZero, Defaults(standardNoise.amount)},
          {"mode", Whole{noiseGrey, noiseColorful}, Defaults(standardNoise.mode)}},
         RunNoiseFilter},
        {"saturation",
         changes,
         {{"saturation", percent, Defaults(SaturationParams{}.saturation)}},
         RunSaturationFilter},
        {"brightnessContrast",
         changes,
         {{"brightness", percent, Defaults(standardContrast.brightness)},
          {"contrast", percent, Defaults(standardContrast.contrast)}},
         RunBrightnessContrastFilter},
        {"addColor",
         changes,
         {{"opacity", percentAboveZero, Defaults(standardColor.opacity)},
          {"color", ColorTriple{}, ColorValue(standardColor.color)}},
         RunAddColorFilter},
        {"mosaic",
         changes,
         {{"horizontal", blockSides, Defaults(standardMosaic.horizontal)},
          {"vertical", blockSides, Defaults(standardMosaic.vertical)}},
         RunMosaicFilter},
        {"invert", changes, {}, RunInvert},
        {"addBump", changes, {}, RunAddBump},
        {"flip", changes, {{"mode", Whole{0, 2}, Defaults(0)}}, RunFlip},
        {"clear", changes, {}, RunClear},
        {"combine",
         changes,
         {{"file", TextureFileName()},
          {"mode", Whole{1, 3}, Defaults(1)},
          {"amount", percent, Defaults(50)}},
         RunCombineWithFile},
        // Of these two the new texture takes the snapshot: undo does not lead back to the old one.
        {"tile",
         keeps,
         {{"horizontal", copies, Defaults(2)}, {"vertical", copies, Defaults(2)}},
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
