#include "recipe/operations/EffectOperations.h"

#include <cstdint>

#include "paint/EffectRun.h"
#include "recipe/operations/Colors.h"
#include "recipe/operations/MemoryCheck.h"
#include "recipe/tool/Session.h"

namespace recipe {

namespace {

const LinesParams standardLines;
const ShapesParams standardShapes;
const DropsParams standardDrops;
const DividersParams standardDividers;
const WavesParams standardWaves;
const TwirlsParams standardTwirls;
const SkewParams standardSkew;

void RunLinesEffect(Session& session, const Arguments& arguments) {
    LinesParams params;
    params.precision = arguments.Number<std::int16_t>("precision");
    params.appearance = arguments.Number<std::uint16_t>("appearance");
    params.colorMode = arguments.Number<std::uint16_t>("colorMode");
    params.angle = arguments.Number<std::int16_t>("angle");
    params.color = ColorOf(arguments, "color");
    RunEffect(session, params);
}

void RunShapesEffect(Session& session, const Arguments& arguments) {
    ShapesParams params;
    params.kind = arguments.Number<std::int32_t>("kind");
    params.bevel = arguments.Number<std::int16_t>("bevel");
    params.material = arguments.Number<std::int16_t>("material");
    params.transparency = arguments.Number<std::int16_t>("transparency");
    params.contrast = arguments.Number<std::int16_t>("contrast");
    params.angle = arguments.Number<std::int16_t>("angle");
    params.sizeX = arguments.Get<double>("sizeX");
    params.sizeY = arguments.Get<double>("sizeY");
    params.repeatX = arguments.Number<std::int16_t>("repeatX");
    params.repeatY = arguments.Number<std::int16_t>("repeatY");
    params.shiftX = arguments.Number<std::int16_t>("shiftX");
    params.shiftY = arguments.Number<std::int16_t>("shiftY");
    params.shiftSize = arguments.Number<std::int16_t>("shiftSize");
    params.stacking = arguments.Number<std::int16_t>("stacking");
    params.halfShift = arguments.Number<std::uint8_t>("halfShift");
    params.color = ColorOf(arguments, "color");
    RunEffect(session, params);
}

void RunDropsEffect(Session& session, const Arguments& arguments) {
    DropsParams params;
    params.count = arguments.Number<std::int16_t>("count");
    params.size = arguments.Number<std::int16_t>("size");
    params.variation = arguments.Number<std::int16_t>("variation");
    params.reflection = arguments.Number<std::int16_t>("reflection");
    params.emphasizeLight = arguments.Number<std::uint8_t>("emphasizeLight");
    params.coveredBlur = arguments.Number<std::int16_t>("coveredBlur");
    params.coveredTone = arguments.Number<std::int16_t>("coveredTone");
    RunEffect(session, params);
}

void RunDividersEffect(Session& session, const Arguments& arguments) {
    DividersParams params;
    params.lines = arguments.Number<std::int16_t>("lines");
    params.direction = arguments.Number<std::int16_t>("direction");
    params.randomColors = arguments.Number<std::uint8_t>("randomColors");
    params.antiAliased = arguments.Number<std::uint8_t>("antiAliased");
    params.transparent = arguments.Number<std::uint8_t>("transparent");
    params.lineWidth = arguments.Number<std::int16_t>("lineWidth");
    params.widthVariation = arguments.Number<std::int16_t>("widthVariation");
    params.minimalGap = arguments.Number<std::int16_t>("minimalGap");
    RunEffect(session, params);
}

void RunWavesEffect(Session& session, const Arguments& arguments) {
    WavesParams params;
    params.formX = arguments.Number<std::int16_t>("formX");
    params.heightX = arguments.Number<std::int16_t>("heightX");
    params.countX = arguments.Number<std::int16_t>("countX");
    params.formY = arguments.Number<std::int16_t>("formY");
    params.heightY = arguments.Number<std::int16_t>("heightY");
    params.countY = arguments.Number<std::int16_t>("countY");
    params.interpolate = arguments.Number<std::int16_t>("interpolate");
    RunEffect(session, params);
}

void RunTwirlsEffect(Session& session, const Arguments& arguments) {
    TwirlsParams params;
    params.quantity = arguments.Number<std::int16_t>("quantity");
    params.size = arguments.Number<std::int16_t>("size");
    params.intensity = arguments.Number<std::int16_t>("intensity");
    RunEffect(session, params);
}

void RunSkewEffect(Session& session, const Arguments& arguments) {
    SkewParams params;
    params.direction = arguments.Number<std::int32_t>("direction");
    CheckMemory(RunSkew(session.Texture(), params, arguments.Number<int>("nearest") != 0));
}

}  // namespace

void RunEffect(Session& session, const LinesParams& params) {
    CheckMemory(RunLines(session.Texture(), params));
}

void RunEffect(Session& session, const ShapesParams& params) {
    CheckMemory(RunShapes(session.Texture(), params));
}

void RunEffect(Session& session, const DropsParams& params) {
    CheckMemory(RunDrops(session.Texture(), params));
}

void RunEffect(Session& session, const DividersParams& params) {
    DividersParams colored = params;
    colored.foreground = session.foreground;
    colored.background = session.background;
    RunDividers(session.Texture(), colored);
}

void RunEffect(Session& session, const WavesParams& params) {
    CheckMemory(RunWaves(session.Texture(), params));
}

void RunEffect(Session& session, const TwirlsParams& params) {
    CheckMemory(RunTwirls(session.Texture(), params));
}

void RunEffect(Session& session, const SkewParams& params) {
    CheckMemory(RunSkew(session.Texture(), params));
}

std::vector<OperationDefinition> EffectOperations() {
    using enum TextureUse;
    const Whole percent{0, 100};
    const Whole fromOne{1, 100};
    const Whole upTo20{1, 20};
    const Whole repetitions{1, 32};
    const Whole degrees{-180, 180};
    const Whole yesOrNo{0, 1};
    const OneOf waveform{{waveNone, waveSine, waveSawtooth, waveSquare, waveRandom}};
    return {
        {"lines",
         changes,
         {{"precision", percent, Defaults(standardLines.precision)},
          {"appearance", Whole{linesWax, linesInk}, Defaults(standardLines.appearance)},
          {"colorMode", Whole{linesRandom, linesAverage}, Defaults(standardLines.colorMode)},
          {"angle", degrees, Defaults(standardLines.angle)},
          {"color", ColorTriple{}, ColorValue(standardLines.color)}},
         RunLinesEffect},
        {"shapes",
         changes,
         {{"kind", Whole{shapeSquare, shapeRing}, Defaults(standardShapes.kind)},
          {"bevel", percent, Defaults(standardShapes.bevel)},
          {"material", percent, Defaults(standardShapes.material)},
          {"transparency", percent, Defaults(standardShapes.transparency)},
          {"contrast", percent, Defaults(standardShapes.contrast)},
          {"angle", degrees, Defaults(standardShapes.angle)},
          {"sizeX", Real{0.0, 1.0}, Value(standardShapes.sizeX)},
          {"sizeY", Real{0.0, 1.0}, Value(standardShapes.sizeY)},
          {"repeatX", repetitions, Defaults(standardShapes.repeatX)},
          {"repeatY", repetitions, Defaults(standardShapes.repeatY)},
          {"shiftX", percent, Defaults(standardShapes.shiftX)},
          {"shiftY", percent, Defaults(standardShapes.shiftY)},
          {"shiftSize", percent, Defaults(standardShapes.shiftSize)},
          {"stacking", OneOf{{0, 1, shapesStacked}}, Defaults(standardShapes.stacking)},
          {"halfShift", yesOrNo, Defaults(standardShapes.halfShift)},
          {"color", ColorTriple{}, ColorValue(standardShapes.color)}},
         RunShapesEffect},
        {"drops",
         changes,
         {{"count", percent, Defaults(standardDrops.count)},
          {"size", percent, Defaults(standardDrops.size)},
          {"variation", percent, Defaults(standardDrops.variation)},
          {"reflection", percent, Defaults(standardDrops.reflection)},
          {"emphasizeLight", yesOrNo, Defaults(standardDrops.emphasizeLight)},
          {"coveredBlur", Whole{coveredBlurNone, coveredBlurMost},
           Defaults(standardDrops.coveredBlur)},
          {"coveredTone", Whole{coveredLighter, coveredDarker},
           Defaults(standardDrops.coveredTone)}},
         RunDropsEffect},
        {"dividers",
         changes,
         {{"lines", fromOne, Defaults(standardDividers.lines)},
          {"direction", percent, Defaults(standardDividers.direction)},
          {"randomColors", yesOrNo, Defaults(standardDividers.randomColors)},
          {"antiAliased", yesOrNo, Defaults(standardDividers.antiAliased)},
          {"transparent", yesOrNo, Defaults(standardDividers.transparent)},
          {"lineWidth", upTo20, Defaults(standardDividers.lineWidth)},
          {"widthVariation", percent, Defaults(standardDividers.widthVariation)},
          {"minimalGap", upTo20, Defaults(standardDividers.minimalGap)}},
         RunDividersEffect},
        {"waves",
         changes,
         {{"formX", waveform, Defaults(standardWaves.formX)},
          {"heightX", fromOne, Defaults(standardWaves.heightX)},
          {"countX", upTo20, Defaults(standardWaves.countX)},
          {"formY", waveform, Defaults(standardWaves.formY)},
          {"heightY", fromOne, Defaults(standardWaves.heightY)},
          {"countY", upTo20, Defaults(standardWaves.countY)},
          {"interpolate", yesOrNo, Defaults(standardWaves.interpolate)}},
         RunWavesEffect},
        {"twirls",
         changes,
         {{"quantity", fromOne, Defaults(standardTwirls.quantity)},
          {"size", fromOne, Defaults(standardTwirls.size)},
          {"intensity", fromOne, Defaults(standardTwirls.intensity)}},
         RunTwirlsEffect},
        {"skew",
         changes,
         {{"direction", Whole{0, 3}, Defaults(standardSkew.direction)},
          {"nearest", yesOrNo, Defaults(0)}},
         RunSkewEffect},
    };
}

}  // namespace recipe
