// Numbers of the plug-in's resources and of the items in its dialogs.
//
// Dialogs, pictures, menus and strings share one numbering: the picture or the menu of a control
// bears the dialog's id plus the control's. The resource files bear the plain numbers, which are
// the items' places; tests compare the two.
#pragma once

#include <cstdint>

/// Dialogs, by the name of their class. An effect or a filter is known by the id of its dialog.
enum DialogId : std::int16_t {
    textureDialog = 16001,
    blurDialog = 16007,
    noiseDialog = 16008,
    brightContrDialog = 16009,
    addColorDialog = 16010,
    saturationDialog = 16011,
    tileDialog = 16015,
    sharpenDialog = 16018,
    presetDialog = 16023,
    cloneDialog = 16024,
    fillDialog = 16025,
    brushDialog = 16026,
    createrDialog = 16150,
    editDialog = 16200,
    mosaicDialog = 16250,
    combineDialog = 16300,
    linesDialog = 16350,
    dropsDialog = 16400,
    devidersDialog = 16450,
    wavesDialog = 16500,
    twirlsDialog = 16550,
    shapesDialog = 16600,
    skewDialog = 16650,
    jpegDialog = 17220,
};

/// Alerts of the editor and its dialogs.
enum AlertId : std::int16_t {
    alertOutOfMemory = 16100,
    alertSizesDiffer = 16101,
    alertNoStampSource = 16102,
    alertPreferencesNotWritten = 16103,
    alertPreferencesNotRead = 16104,
    alertNotLoaded = 16106,
    alertNotSaved = 16107,
    alertNameTaken = 16108,
    alertTooLarge = 16109,
    alertDeletePreset = 16110,  ///< asks; ^0 is the name
    alertHelpNotFound = 16120,  ///< ^0 is the page's path
    alertEarlierFault = 16121,
};

/// Commands of the editor's menu bar.
enum MenuCommandId : std::int16_t {
    commandAbout = 16001,
    commandNew = 17001,
    commandEdit = 17002,
    commandOpen = 17004,
    commandSave = 17005,
    commandRepeatEffect = 17101,
    commandLines = 17103,  ///< the first of seven in the order of TextureItems::lines and on
    commandSkew = 17109,
    commandCombine = 17111,
    commandTile = 17112,
    commandRepeatFilter = 17201,
    commandBlur = 17203,  ///< the first of seven in the order of TextureItems::blur and on
    commandMosaic = 17209,
    commandInvert = 17211,
    commandAddBump = 17212,
    commandFlipHorizontal = 17213,
    commandFlipVertical = 17214,
    commandStampSettings = 17301,
    commandFillSettings = 17302,
    commandBrushSettings = 17303,
    commandNewAtLaunch = 17305,
    commandZoomIn = 17401,
    commandZoomOut = 17402,
    commandActualPixels = 17403,
    commandUndo = 17501,
    commandCut = 17503,
    commandCopy = 17504,
    commandPaste = 17505,
    commandClear = 17506,
    commandHelp = 20000,
};

/// Commands on the focused field, by the accelerators of dialogs without a table of their own.
enum FieldCommandId : std::int16_t {
    commandFieldUndo = 18201,
    commandFieldCut = 18204,
    commandFieldCopy = 18205,
    commandFieldPaste = 18206,
    commandFieldClear = 18207,
    commandFieldSelectAll = 18209,
};

/// Pictures. A button with a picture has it under the bare number of its item.
enum PictureId : std::int16_t {
    bitmapDial = 16008,
    iconDialKnob = 16025,
    iconZoomIn = 16026,  ///< also what a disabled dial's knob would be; no dial is ever disabled
    iconZoomOut = 16027,
    iconEditor = 16028,
};
/// From a bitmap's id at 100 percent to those at 150 percent and, once more, at 200 percent.
constexpr int pictureStep = 10000;

/// Cursors over the drawing area.
enum CursorId : std::int16_t {
    cursorTool = 16000,  ///< plus the tool, 1 to 10
    cursorHandDrag = 16011,
    cursorStampSource = 16012,
    cursorMoveDrag = 16013,
    cursorZoomOut = 16014,
};

/// Where each family of the strings in Strings.def begins.
enum StringBase : std::int16_t {
    stringItemHelp = 16000,  ///< plus the editor's item
    stringToolHelp = 16100,  ///< plus the tool
    stringWellHelp = 16111,  ///< plus the part of the colour wells
};

/// The editor's items; what is not named here is a frame or a label.
struct TextureItems {
    enum : std::int16_t {
        apply = 1,
        cancel = 2,
        viewPalette = 3,  ///< Hand and Zoom
        helpFrame = 4,
        progress = 5,
        growBox = 6,
        zoomIn = 7,
        zoomOut = 8,
        zoomReadout = 9,
        sizeMarksSymbol = 10,
        verticalScroll = 11,
        horizontalScroll = 12,
        drawingArea = 13,
        toolPalette = 14,
        colorWells = 15,
        flipVertical = 16,
        name = 18,
        width = 20,
        height = 22,
        resolution = 24,
        size = 26,
        newTexture = 27,
        edit = 28,
        open = 29,
        save = 30,
        switchColors = 31,
        defaultColors = 32,
        repeatEffect = 33,
        repeatFilter = 34,
        lines = 35,
        shapes = 36,
        drops = 37,
        dividers = 38,
        waves = 39,
        twirls = 40,
        skew = 41,
        effectsFrame = 42,
        blur = 43,
        sharpen = 44,
        noise = 45,
        saturation = 46,
        brightContr = 47,
        addColor = 48,
        mosaic = 49,
        filtersFrame = 50,
        addBump = 51,
        invert = 52,
        flipHorizontal = 53,
        tile = 54,
        combine = 55,
        textureFrame = 56,
        paletteFrame = 57,
        sizeMarks = 60,
        helpReadout = 61,
        toolPanel = 62,  ///< invisible; as wide as what the tile preview hides
        tab = 63,
        firstHidden = toolPalette,  ///< what the tile preview hides
        lastHidden = 59,
    };
};

/// The Edit dialog, and New, which is it with the contents to begin with.
struct SizeItems {
    enum : std::int16_t {
        ok = 1,
        cancel = 2,
        name = 4,
        width = 6,
        resolution = 8,
        height = 10,
        size = 12,
        units = 13,
        open = 15,
        blank = 16,
        selection = 17,
        lastTexture = 18,
        showNextTime = 20,
    };
};

/// Items that the seven effects' dialogs share; the filters' have the first three.
struct ApplyItems {
    enum : std::int16_t { ok = 1, cancel = 2, apply = 3, presets = 4, save = 5, remove = 6 };
};

struct LinesItems {
    enum : std::int16_t {
        color = 9,
        ink = 10,
        globe = 11,
        precision = 12,
        precisionLabel = 14,
        wax = 15,
        random = 17,
        averageColor = 18,
        angleLabel = 20,
        angle = 21,
    };
};

struct ShapesItems {
    enum : std::int16_t {
        kind = 8,
        color = 10,
        bevel = 11,
        bevelLabel = 14,
        contrast = 15,
        contrastLabel = 18,
        transparency = 19,
        transparencyLabel = 22,
        material = 23,
        materialLabel = 26,
        widthSlider = 27,
        widthPicture = 28,
        heightSlider = 29,
        width = 30,
        height = 32,
        heightPicture = 34,
        sizeDisplacement = 35,
        sizeDisplacementLabel = 37,
        verticalDisplacement = 38,
        verticalDisplacementLabel = 40,
        horizontalDisplacement = 41,
        horizontalDisplacementLabel = 44,
        halfShift = 45,
        columns = 46,
        rows = 47,
        blendedPicture = 48,
        stackedPicture = 49,
        stacked = 50,
        blended = 51,
        angleLabel = 57,
        globe = 58,
        angle = 60,
        columnsPicture = 62,
        rowsPicture = 63,
    };
};

struct DropsItems {
    enum : std::int16_t {
        count = 9,
        size = 12,
        variation = 15,
        emphasizeLight = 18,
        reflection = 20,
        coveredBlur = 24,
        coveredTone = 27,
    };
};

struct DividersItems {
    enum : std::int16_t {
        lines = 9,
        direction = 12,
        transparent = 15,
        pickedColors = 16,
        randomColors = 17,
        lineWidth = 20,
        lineWidthSlider = 21,
        widthVariation = 23,
        widthVariationSlider = 24,
        minimalGap = 26,
        minimalGapSlider = 27,
        antiAliased = 29,
    };
};

struct WavesItems {
    enum : std::int16_t {
        horizontalForm = 8,
        horizontalCountLabel = 10,
        horizontalHeightSlider = 11,
        horizontalHeight = 13,
        horizontalCountSlider = 14,
        horizontalCount = 15,
        verticalCountLabel = 16,
        verticalForm = 17,
        verticalHeightSlider = 18,
        verticalHeight = 20,
        verticalCountSlider = 21,
        verticalCount = 22,
    };
};

struct TwirlsItems {
    enum : std::int16_t {
        quantity = 9,
        quantitySlider = 10,
        size = 13,
        sizeSlider = 14,
        intensity = 17,
        intensitySlider = 18,
    };
};

struct SkewItems {
    enum : std::int16_t { firstPicture = 8, lastPicture = 11, firstRadio = 12, lastRadio = 15 };
};

struct BlurItems {
    enum : std::int16_t {
        amount = 5,
        slider = 6,
        motion = 7,
        firstDirection = 8,
        lastDirection = 15
    };
};

struct SharpenItems {
    enum : std::int16_t { passes = 5, slider = 6 };
};

struct NoiseItems {
    enum : std::int16_t {
        slider = 5,
        amount = 6,
        reallyColorful = 8,
        blackAndWhite = 9,
        colored = 10
    };
};

struct SaturationItems {
    enum : std::int16_t { saturation = 5, slider = 6 };
};

struct BrightContrItems {
    enum : std::int16_t { brightness = 5, brightnessSlider = 6, contrast = 8, contrastSlider = 9 };
};

struct AddColorItems {
    enum : std::int16_t { opacity = 5, slider = 6, color = 9 };
};

struct MosaicItems {
    enum : std::int16_t { horizontal = 6, vertical = 7 };
};

struct CombineItems {
    enum : std::int16_t {
        mode = 4,
        amountLabel = 5,
        choose = 6,
        slider = 7,
        amount = 8,
        fileName = 10
    };
};

struct TileItems {
    enum : std::int16_t { apply = 3, horizontal = 6, vertical = 8 };
};

struct BrushItems {
    enum : std::int16_t { size = 4, slider = 5 };
};

struct CloneItems {
    enum : std::int16_t { size = 4, slider = 5, horizontalOffset = 7, verticalOffset = 9 };
};

struct FillItems {
    enum : std::int16_t { tolerance = 4, slider = 5, antiAlias = 6 };
};

struct PresetItems {
    enum : std::int16_t { name = 4 };
};

struct JPEGItems {
    enum : std::int16_t { standard = 3, quality = 5, slider = 7 };
};
