#include "tests/gui/ControlTables.Win.h"

#include <cmath>

#include "base/FatalError.h"

namespace {

constexpr NumberRow numbers[] = {
    {linesDialog, "precision", 0, LinesItems::precision},
    {linesDialog, "angle", LinesItems::angle, 0, LinesItems::globe},
    {shapesDialog, "bevel", 0, ShapesItems::bevel},
    {shapesDialog, "contrast", 0, ShapesItems::contrast},
    {shapesDialog, "transparency", 0, ShapesItems::transparency},
    {shapesDialog, "material", 0, ShapesItems::material},
    {shapesDialog, "sizeX", ShapesItems::width, ShapesItems::widthSlider, 0, 100},
    {shapesDialog, "sizeY", ShapesItems::height, ShapesItems::heightSlider, 0, 100},
    {shapesDialog, "shiftSize", 0, ShapesItems::sizeDisplacement},
    {shapesDialog, "shiftY", 0, ShapesItems::verticalDisplacement},
    {shapesDialog, "shiftX", 0, ShapesItems::horizontalDisplacement},
    {shapesDialog, "repeatX", ShapesItems::columns, 0},
    {shapesDialog, "repeatY", ShapesItems::rows, 0},
    {shapesDialog, "angle", ShapesItems::angle, 0, ShapesItems::globe},
    {dropsDialog, "count", 0, DropsItems::count},
    {dropsDialog, "size", 0, DropsItems::size},
    {dropsDialog, "variation", 0, DropsItems::variation},
    {dropsDialog, "reflection", 0, DropsItems::reflection},
    {dropsDialog, "coveredBlur", 0, DropsItems::coveredBlur, 0, 1, -23},
    {dropsDialog, "coveredTone", 0, DropsItems::coveredTone, 0, 1, -27},
    {devidersDialog, "lines", 0, DividersItems::lines},
    {devidersDialog, "direction", 0, DividersItems::direction},
    {devidersDialog, "lineWidth", DividersItems::lineWidth, DividersItems::lineWidthSlider},
    {devidersDialog, "widthVariation", DividersItems::widthVariation,
     DividersItems::widthVariationSlider},
    {devidersDialog, "minimalGap", DividersItems::minimalGap, DividersItems::minimalGapSlider},
    {wavesDialog, "heightX", WavesItems::horizontalHeight, WavesItems::horizontalHeightSlider},
    {wavesDialog, "countX", WavesItems::horizontalCount, WavesItems::horizontalCountSlider},
    {wavesDialog, "heightY", WavesItems::verticalHeight, WavesItems::verticalHeightSlider},
    {wavesDialog, "countY", WavesItems::verticalCount, WavesItems::verticalCountSlider},
    {twirlsDialog, "quantity", TwirlsItems::quantity, TwirlsItems::quantitySlider},
    {twirlsDialog, "size", TwirlsItems::size, TwirlsItems::sizeSlider},
    {twirlsDialog, "intensity", TwirlsItems::intensity, TwirlsItems::intensitySlider},
    {blurDialog, "amount", BlurItems::amount, BlurItems::slider},
    {sharpenDialog, "passes", SharpenItems::passes, SharpenItems::slider},
    {noiseDialog, "amount", NoiseItems::amount, NoiseItems::slider},
    {saturationDialog, "saturation", SaturationItems::saturation, SaturationItems::slider, 0, 1,
     -50},
    {brightContrDialog, "brightness", BrightContrItems::brightness,
     BrightContrItems::brightnessSlider, 0, 1, -50},
    {brightContrDialog, "contrast", BrightContrItems::contrast, BrightContrItems::contrastSlider, 0,
     1, -50},
    {addColorDialog, "opacity", AddColorItems::opacity, AddColorItems::slider},
};

constexpr BoxRow boxes[] = {
    {shapesDialog, "halfShift", ShapesItems::halfShift},
    {dropsDialog, "emphasizeLight", DropsItems::emphasizeLight},
    {devidersDialog, "transparent", DividersItems::transparent},
    {devidersDialog, "antiAliased", DividersItems::antiAliased},
    {blurDialog, "motion", BlurItems::motion},
};

constexpr RadioRow radios[] = {
    {linesDialog, "appearance", linesWax, LinesItems::wax},
    {linesDialog, "appearance", linesInk, LinesItems::ink},
    {linesDialog, "colorMode", linesRandom, LinesItems::random},
    {linesDialog, "colorMode", linesAverage, LinesItems::averageColor},
    {shapesDialog, "stacking", 1, ShapesItems::stacked, ShapesItems::stackedPicture},
    {shapesDialog, "stacking", 0, ShapesItems::blended, ShapesItems::blendedPicture},
    {devidersDialog, "randomColors", 1, DividersItems::randomColors},
    {devidersDialog, "randomColors", 0, DividersItems::pickedColors},
    {skewDialog, "direction", 0, 12, 8},
    {skewDialog, "direction", 1, 13, 9},
    {skewDialog, "direction", 2, 14, 10},
    {skewDialog, "direction", 3, 15, 11},
    {blurDialog, "direction", 0, 8},
    {blurDialog, "direction", 1, 9},
    {blurDialog, "direction", 2, 10},
    {blurDialog, "direction", 3, 11},
    {blurDialog, "direction", 4, 12},
    {blurDialog, "direction", 5, 13},
    {blurDialog, "direction", 6, 14},
    {blurDialog, "direction", 7, 15},
    // The modes do not count as the items do.
    {noiseDialog, "mode", 0, NoiseItems::blackAndWhite},
    {noiseDialog, "mode", 1, NoiseItems::colored},
    {noiseDialog, "mode", 2, NoiseItems::reallyColorful},
};

constexpr PopupRow popups[] = {
    {shapesDialog, "kind", ShapesItems::kind},
    {wavesDialog, "formX", WavesItems::horizontalForm},
    {wavesDialog, "formY", WavesItems::verticalForm},
    {mosaicDialog, "horizontal", MosaicItems::horizontal},
    {mosaicDialog, "vertical", MosaicItems::vertical},
};

constexpr SwatchRow swatches[] = {
    {linesDialog, "color", LinesItems::color, true},
    {shapesDialog, "color", ShapesItems::color, true},
    {addColorDialog, "color", AddColorItems::color, false},
};

constexpr PictureRow pictures[] = {
    {shapesDialog, "sizeX", 28},
    {shapesDialog, "sizeY", 34},
    {shapesDialog, "repeatX", 62},
    {shapesDialog, "repeatY", 63},
};

constexpr LabelRow labels[] = {
    {linesDialog, 14, LinesItems::precision},
    {shapesDialog, 14, ShapesItems::bevel},
    {shapesDialog, 18, ShapesItems::contrast},
    {shapesDialog, 22, ShapesItems::transparency},
    {shapesDialog, 26, ShapesItems::material},
    {shapesDialog, 37, ShapesItems::sizeDisplacement},
    {shapesDialog, 40, ShapesItems::verticalDisplacement},
    {shapesDialog, 44, ShapesItems::horizontalDisplacement},
    {wavesDialog, 10, WavesItems::horizontalCount},
    {wavesDialog, 16, WavesItems::verticalCount},
};

}  // namespace

const std::span<const NumberRow> numberRows = numbers;
const std::span<const BoxRow> boxRows = boxes;
const std::span<const RadioRow> radioRows = radios;
const std::span<const PopupRow> popupRows = popups;
const std::span<const SwatchRow> swatchRows = swatches;
const std::span<const PictureRow> pictureRows = pictures;
const std::span<const LabelRow> labelRows = labels;

const Field& FieldNamed(const CatalogRow& row, std::string_view name) {
    for (const Field& field : row.fields) {
        if (name == field.name) {
            return field;
        }
    }
    FailAssertion("ControlTables / a field that the record does not have");
}

Limits ShownLimits(const NumberRow& number, const Field& field) {
    const auto shown = [&](double stored) {
        return static_cast<int>(std::lround(stored * number.factor + number.offset));
    };
    return {shown(field.low), shown(field.high)};
}
