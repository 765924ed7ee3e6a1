#include "framework/access/ItemDescription.h"

#include <algorithm>
#include <iterator>

#include "resources/Ids.h"

namespace {

struct ItemName {
    short dialog;
    short item;
    const char* name;
};

/// The names of controls that show what they are by a picture, by their place or by the words at
/// their ends. Controls with a text, and those after one, are named by that.
constexpr ItemName itemNames[] = {
    {textureDialog, TextureItems::viewPalette, "View tools"},
    {textureDialog, TextureItems::toolPalette, "Drawing tools"},
    {textureDialog, TextureItems::colorWells, "Colors"},
    {textureDialog, TextureItems::paletteFrame, "Frame of the drawing tools"},
    {editDialog, SizeItems::units, "Unit"},
    {createrDialog, SizeItems::units, "Unit"},
    {linesDialog, LinesItems::color, "Average color"},
    {shapesDialog, ShapesItems::width, "Width"},
    {shapesDialog, ShapesItems::height, "Height"},
    {shapesDialog, ShapesItems::columns, "Columns"},
    {shapesDialog, ShapesItems::rows, "Rows"},
    {shapesDialog, ShapesItems::widthPicture, "Width"},
    {shapesDialog, ShapesItems::heightPicture, "Height"},
    {shapesDialog, ShapesItems::columnsPicture, "Columns"},
    {shapesDialog, ShapesItems::rowsPicture, "Rows"},
    {shapesDialog, ShapesItems::angle, "Angle"},
    {shapesDialog, ShapesItems::blended, "Blend overlapping shapes"},
    {shapesDialog, ShapesItems::stacked, "Stack overlapping shapes"},
    {dropsDialog, DropsItems::count, "Number, few to many"},
    {dropsDialog, DropsItems::size, "Size, small to big"},
    {dropsDialog, DropsItems::variation, "Variation, same to different"},
    {dropsDialog, DropsItems::reflection, "Reflection, dim to glossy"},
    {dropsDialog, DropsItems::coveredBlur, "Covered area, normal to blurred"},
    {dropsDialog, DropsItems::coveredTone, "Covered area, lighter to darker"},
    {devidersDialog, DividersItems::lines, "Number, few to many"},
    {devidersDialog, DividersItems::direction, "Direction, horizontal to vertical"},
    {noiseDialog, NoiseItems::amount, "Noise"},
    {combineDialog, CombineItems::mode, "Mode"},
    {combineDialog, CombineItems::slider, "Amount"},
    {combineDialog, CombineItems::amount, "Amount"},
    {jpegDialog, JPEGItems::slider, "Quality"},
};

/// Where the ampersand of the mnemonic stands; a doubled one is a character.
std::size_t MnemonicPlace(const std::string& text) {
    std::size_t at = text.find('&');
    while (at != std::string::npos && at + 1 < text.size() && text[at + 1] == '&') {
        at = text.find('&', at + 2);
    }
    return at;
}

}  // namespace

std::string SpokenText(const std::string& text) {
    std::string spoken;
    for (std::size_t i = 0; i < text.size() && text[i] != '\t'; ++i) {
        if (text[i] == '&' && i + 1 < text.size()) {
            ++i;
        }
        spoken += text[i];
    }
    while (!spoken.empty() && (spoken.back() == ':' || spoken.back() == ' ')) {
        spoken.pop_back();
    }
    return spoken;
}

char MnemonicIn(const std::string& text) {
    const std::size_t at = MnemonicPlace(text);
    return at != std::string::npos && at + 1 < text.size() ? text[at + 1] : '\0';
}

bool IsLabel(const std::string& text) {
    return text.size() > 1 && text.back() == ':';
}

std::string SpokenWord(std::string_view word) {
    std::string spoken;
    for (const char character : word) {
        const bool isCapital = character >= 'A' && character <= 'Z';
        const bool isSmall = character >= 'a' && character <= 'z';
        constexpr int toOther = 'a' - 'A';
        if (spoken.empty()) {
            spoken += static_cast<char>(isSmall ? character - toOther : character);
        } else {
            spoken += isCapital ? " " : "";
            spoken += static_cast<char>(isCapital ? character + toOther : character);
        }
    }
    return spoken;
}

std::string FirstSentence(const std::string& text) {
    return text.substr(0, text.find('.'));
}

std::string ColorText(Color24 color) {
    return "red " + std::to_string(color & 0xFF) + ", green " + std::to_string(color >> 8 & 0xFF) +
           ", blue " + std::to_string(color >> 16 & 0xFF);
}

std::string NameInTable(short dialog, short item) {
    const auto found =
        std::find_if(std::begin(itemNames), std::end(itemNames),
                     [=](const ItemName& row) { return row.dialog == dialog && row.item == item; });
    return found != std::end(itemNames) ? found->name : "";
}
