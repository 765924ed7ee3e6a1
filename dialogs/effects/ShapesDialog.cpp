#include "dialogs/effects/ShapesDialog.h"

#include "resources/Ids.h"

using Items = ShapesItems;

ShapesDialog::ShapesDialog(const ApplyContext& context, ShapesParams& newStored)
    : ParamsDialog(context, shapesDialog, newStored) {
    bindings.Popup(FieldFor(&ShapesParams::kind), Items::kind);
    bindings.Swatch(FieldFor(&ShapesParams::color), Items::color);
    constexpr NumberShown inPercent{.factor = 100};
    bindings.Number(FieldFor(&ShapesParams::sizeX),
                    {.field = Items::width, .slider = Items::widthSlider, .name = "Width"},
                    inPercent);
    bindings.Number(FieldFor(&ShapesParams::sizeY),
                    {.field = Items::height, .slider = Items::heightSlider, .name = "Height"},
                    inPercent);
    bindings.Number(FieldFor(&ShapesParams::bevel),
                    {.slider = Items::bevel, .label = Items::bevelLabel});
    bindings.Number(FieldFor(&ShapesParams::contrast),
                    {.slider = Items::contrast, .label = Items::contrastLabel});
    bindings.Number(FieldFor(&ShapesParams::transparency),
                    {.slider = Items::transparency, .label = Items::transparencyLabel});
    bindings.Number(FieldFor(&ShapesParams::material),
                    {.slider = Items::material, .label = Items::materialLabel});
    bindings.Number(FieldFor(&ShapesParams::shiftSize),
                    {.slider = Items::sizeDisplacement, .label = Items::sizeDisplacementLabel});
    bindings.Number(FieldFor(&ShapesParams::shiftY), {.slider = Items::verticalDisplacement,
                                                      .label = Items::verticalDisplacementLabel});
    bindings.Number(FieldFor(&ShapesParams::shiftX), {.slider = Items::horizontalDisplacement,
                                                      .label = Items::horizontalDisplacementLabel});
    bindings.Number(FieldFor(&ShapesParams::repeatX), {.field = Items::columns, .name = "Columns"});
    bindings.Number(FieldFor(&ShapesParams::repeatY), {.field = Items::rows, .name = "Rows"});
    bindings.Check(FieldFor(&ShapesParams::halfShift), Items::halfShift);
    // The generator stacks for a value that this dialog never gives, so both choices blend. That is
    // intended.
    bindings.Radios(
        FieldFor(&ShapesParams::stacking),
        {{1, Items::stacked, Items::stackedPicture}, {0, Items::blended, Items::blendedPicture}},
        {.shownAs = Items::stacked});
    SetName(Items::stacked, "Stack overlapping shapes");
    SetName(Items::blended, "Blend overlapping shapes");
    SetName(Items::widthPicture, "Width");
    SetName(Items::heightPicture, "Height");
    SetName(Items::columnsPicture, "Columns");
    SetName(Items::rowsPicture, "Rows");
    bindings.Number(FieldFor(&ShapesParams::angle),
                    {.field = Items::angle, .dial = Items::globe, .name = "Angle"});
    bindings.TabOrder(
        {ApplyItems::apply,
         // The left column of boxes,
         Items::kind, Items::color, Items::widthSlider, Items::width, Items::heightSlider,
         Items::height, Items::bevel, Items::contrast, Items::transparency, Items::material,
         Items::columns, Items::rows, Items::halfShift,
         // then the right one.
         Items::sizeDisplacement, Items::verticalDisplacement, Items::horizontalDisplacement,
         Items::blended, Items::stacked, Items::globe, Items::angleLabel, Items::angle});
}
