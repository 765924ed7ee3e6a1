#include "host/command/CommonOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <sstream>

#include "base/Rectangles.h"

namespace host {

namespace {

[[noreturn]] void Refuse(const std::string& option, const std::string& value,
                         const std::string& expected) {
    throw CommandLineError("--" + option + " " + value + ": expected " + expected);
}

template <typename Number>
bool ReadNumber(const std::string& text, Number& number) {
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    return !text.empty() && read.ec == std::errc() && read.ptr == end;
}

template <std::size_t count>
std::optional<std::array<int, count>> ReadList(const std::string& text) {
    std::array<int, count> numbers{};
    std::istringstream stream(text);
    std::string part;
    std::size_t read = 0;
    for (; std::getline(stream, part, ','); ++read) {
        if (read == count || !ReadNumber(part, numbers[read])) {
            return std::nullopt;
        }
    }
    const bool endsInComma = !text.empty() && text.back() == ',';
    if (read != count || endsInComma) {
        return std::nullopt;
    }
    return numbers;
}

hostapi::VRect ReadRectangle(const std::string& option, const std::string& text) {
    const auto sides = ReadList<4>(text);
    if (!sides || std::any_of(sides->begin(), sides->end(),
                              [](int side) { return side < -32768 || side > 32767; })) {
        Refuse(option, text, "LEFT,TOP,RIGHT,BOTTOM in pixels");
    }
    return {(*sides)[1], (*sides)[0], (*sides)[3], (*sides)[2]};
}

hostapi::RGBColor ReadColor(const std::string& option, const std::string& text) {
    const auto components = ReadList<3>(text);
    if (!components || std::any_of(components->begin(), components->end(),
                                   [](int value) { return value < 0 || value > 255; })) {
        Refuse(option, text, "RED,GREEN,BLUE from 0 to 255");
    }
    auto widened = [&](std::size_t i) { return static_cast<std::uint16_t>((*components)[i] << 8); };
    return {widened(0), widened(1), widened(2)};
}

void ReadFailure(const std::string& text, std::map<int, std::int16_t>& failures) {
    const std::size_t equals = text.find('=');
    int row = 0;
    std::int16_t code = 0;
    if (equals == std::string::npos || !ReadNumber(text.substr(0, equals), row) ||
        !ReadNumber(text.substr(equals + 1), code) || row < 0 || code == 0) {
        Refuse("fail-advance", text, "ROW=CODE, a row from 0 and a 16-bit code other than 0");
    }
    failures[row] = code;
}

void ReadTrait(const std::string& name, TraitSet& traits) {
    const std::optional<Trait> trait = TraitFromName(name);
    if (!trait) {
        Refuse("trait", name, "one of the traits that --help lists");
    }
    traits.Insert(*trait);
}

void ReadWithout(const std::string& name, WithheldServices& without) {
    const std::optional<Service> service = ServiceFromName(name);
    if (!service) {
        Refuse("without", name, "one of the services that --help lists");
    }
    without[*service] = true;
}

std::string TraitHelp() {
    std::string text = "Behave like some other host; may be repeated:";
    for (Trait trait : AllTraits()) {
        text += std::string("\n  ") + TraitName(trait) + ": " + TraitDescription(trait);
    }
    return text;
}

std::string ServiceHelp() {
    std::string text = "Keep a service from the filter; may be repeated:";
    for (std::size_t index = 0; index < serviceCount; ++index) {
        text += std::string("\n  ") + ServiceName(static_cast<Service>(index));
    }
    return text;
}

std::vector<std::filesystem::path> Paths(const std::vector<std::string>& names) {
    std::vector<std::filesystem::path> paths;
    std::transform(names.begin(), names.end(), std::back_inserter(paths), PathFromUtf8);
    return paths;
}

}  // namespace

/// Variables that CLI11 fills: texts that are read into the options later, and the numbers of the
/// settings.
struct CommonOptionReader::Texts {
    std::string image, mask, selection, claimedRect, foreground, background, layer;
    std::vector<std::string> filters, traits, without, failures;
    std::optional<double> ellipseFeather;
    HostSettings settings;

    void AddPictureOptions(CLI::App& app);
    void AddBehaviour(CLI::App& app);
    void AddStarving(CLI::App& app);
    void ReadSettings(HostSettings& result) const;
};

void CommonOptionReader::Texts::AddPictureOptions(CLI::App& app) {
    app.add_option("--image", image, "The picture: PNG, JPEG or BMP")->type_name("FILE");
    app.add_option("--filter", filters, "A filter's file")
        ->type_name("FILE")
        ->allow_extra_args(false);
    app.add_option("--selection", selection,
                   "LEFT,TOP,RIGHT,BOTTOM in pixels, right and bottom exclusive (default: all)")
        ->type_name("RECT");
    auto* maskOption =
        app.add_option("--mask", mask,
                       "A picture whose grey values select, as large as the selection or the image")
            ->type_name("FILE");
    app.add_option("--ellipse", ellipseFeather,
                   "Select the ellipse inside the selection, its edge this many pixels soft")
        ->type_name("FEATHER")
        ->excludes(maskOption)
        ->check(CLI::Range(0.0, 30000.0));
    app.add_option("--layer", layer, "flat, floating, transparent or protected")
        ->type_name("KIND")
        ->check(CLI::IsMember({"flat", "floating", "transparent", "protected"}));
    app.add_option("--foreground", foreground, "RED,GREEN,BLUE from 0 to 255")->type_name("COLOR");
    app.add_option("--background", background, "RED,GREEN,BLUE from 0 to 255")->type_name("COLOR");
}

void CommonOptionReader::Texts::AddBehaviour(CLI::App& app) {
    app.add_option("--trait", traits, TraitHelp())->type_name("NAME")->allow_extra_args(false);
    app.add_option("--claim-rect", claimedRect,
                   "LEFT,TOP,RIGHT,BOTTOM for filterRect, sensible or not")
        ->type_name("RECT");
    app.add_option("--claim-planes", settings.claimedPlanes,
                   "A number for planes, sensible or not");
    app.add_option("--continue-limit", settings.continueLimit,
                   "Calls of the continue selector before the host gives up")
        ->check(CLI::PositiveNumber);
}

void CommonOptionReader::Texts::AddStarving(CLI::App& app) {
    app.add_option("--without", without, ServiceHelp())->type_name("NAME")->allow_extra_args(false);
    app.add_option("--memory", settings.memoryBudget,
                   "Bytes that the buffer and handle suites have to give")
        ->check(CLI::NonNegativeNumber);
    app.add_option("--abort-after", settings.abortAfterRow,
                   "abortProc answers true once this many rows were delivered")
        ->type_name("ROW")
        ->check(CLI::NonNegativeNumber);
    app.add_option("--fail-advance", failures,
                   "advanceState answers CODE for this row of the selection; may be repeated")
        ->type_name("ROW=CODE")
        ->allow_extra_args(false);
    app.add_option("--fail-allocation", settings.failAllocation,
                   "Fail this allocation of the suites, 1 the first")
        ->check(CLI::PositiveNumber);
}

void CommonOptionReader::Texts::ReadSettings(HostSettings& result) const {
    result = settings;
    if (!claimedRect.empty()) {
        result.claimedFilterRect = Narrowed(ReadRectangle("claim-rect", claimedRect));
    }
    if (!foreground.empty()) {
        result.foreground = ReadColor("foreground", foreground);
    }
    if (!background.empty()) {
        result.background = ReadColor("background", background);
    }
    for (const std::string& name : traits) {
        ReadTrait(name, result.traits);
    }
    for (const std::string& name : without) {
        ReadWithout(name, result.without);
    }
    for (const std::string& failure : failures) {
        ReadFailure(failure, result.failAdvance);
    }
    const std::map<std::string, LayerKind> layers = {
        {"", LayerKind::automatic},
        {"flat", LayerKind::flat},
        {"floating", LayerKind::floating},
        {"transparent", LayerKind::editableTransparency},
        {"protected", LayerKind::protectedTransparency}};
    result.layer = layers.at(layer);
}

CommonOptionReader::CommonOptionReader(CLI::App& app) : texts(std::make_unique<Texts>()) {
    texts->AddPictureOptions(app);
    texts->AddBehaviour(app);
    texts->AddStarving(app);
}

CommonOptionReader::~CommonOptionReader() = default;

CommonOptions CommonOptionReader::Read() const {
    CommonOptions options;
    options.image = PathFromUtf8(texts->image);
    options.filters = Paths(texts->filters);
    options.mask = PathFromUtf8(texts->mask);
    options.ellipseFeather = texts->ellipseFeather;
    if (!texts->selection.empty()) {
        options.selection = ReadRectangle("selection", texts->selection);
        if (IsEmpty(*options.selection)) {
            Refuse("selection", texts->selection, "a rectangle that isn't empty");
        }
    }
    texts->ReadSettings(options.settings);
    return options;
}

std::string ParseCommandLine(CLI::App& app, const std::vector<std::string>& arguments) {
    // Paths may begin with a slash on Windows, too.
    app.allow_windows_style_options(false);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
        return app.help();
    } catch (const CLI::CallForVersion& version) {
        return std::string(version.what()) + "\n";
    } catch (const CLI::ParseError& error) {
        const std::string text = error.what();
        throw CommandLineError(text.substr(0, text.find('\n')));
    }
    return {};
}

Selection SelectionFrom(const CommonOptions& options, const Picture& picture) {
    const hostapi::VRect bounds = options.selection.value_or(picture.Bounds());
    if (!options.mask.empty()) {
        return SelectByMask(bounds, LoadPicture(options.mask), picture);
    }
    if (options.ellipseFeather) {
        return SelectEllipse(bounds, *options.ellipseFeather);
    }
    return options.selection ? SelectRectangle(bounds) : SelectNothing(picture);
}

}  // namespace host
