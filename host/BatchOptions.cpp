#include "host/BatchOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <map>
#include <sstream>

#include "host/Geometry.h"
#include "host/Picture.h"
#include "host/Version.h"

namespace host {

namespace {

const char* const footer =
    "Exit status: 0 the filter ran, nothing was found; 2 a picture or filter that cannot be used, "
    "or "
    "a command line that makes no sense; 3 the filter answered a result other than 0; 4 the host "
    "caught the filter at a fault; 5 the filter crashed.\n"
    "OUT is written only if the result is 0.";

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
        if (read == count || !ReadNumber(part, numbers[read]))
            return std::nullopt;
    }
    const bool endsInComma = !text.empty() && text.back() == ',';
    if (read != count || endsInComma)
        return std::nullopt;
    return numbers;
}

hostapi::VRect ReadRectangle(const std::string& option, const std::string& text) {
    const auto sides = ReadList<4>(text);
    if (!sides || std::any_of(sides->begin(), sides->end(),
                              [](int side) { return side < -32768 || side > 32767; }))
        Refuse(option, text, "LEFT,TOP,RIGHT,BOTTOM in pixels");
    return {(*sides)[1], (*sides)[0], (*sides)[3], (*sides)[2]};
}

hostapi::RGBColor ReadColor(const std::string& option, const std::string& text) {
    const auto components = ReadList<3>(text);
    if (!components || std::any_of(components->begin(), components->end(),
                                   [](int value) { return value < 0 || value > 255; }))
        Refuse(option, text, "RED,GREEN,BLUE from 0 to 255");
    auto widened = [&](std::size_t i) { return static_cast<std::uint16_t>((*components)[i] << 8); };
    return {widened(0), widened(1), widened(2)};
}

void ReadFailure(const std::string& text, std::map<int, std::int16_t>& failures) {
    const std::size_t equals = text.find('=');
    int row = 0;
    std::int16_t code = 0;
    if (equals == std::string::npos || !ReadNumber(text.substr(0, equals), row) ||
        !ReadNumber(text.substr(equals + 1), code) || row < 0 || code == 0)
        Refuse("fail-advance", text, "ROW=CODE, a row from 0 and a 16-bit code other than 0");
    failures[row] = code;
}

void ReadTrait(const std::string& name, TraitSet& traits) {
    const std::optional<Trait> trait = TraitFromName(name);
    if (!trait)
        Refuse("trait", name, "one of the traits that --help lists");
    traits.Insert(*trait);
}

void ReadWithout(const std::string& name, WithheldServices& without) {
    const std::optional<Service> service = ServiceFromName(name);
    if (!service)
        Refuse("without", name, "one of the services that --help lists");
    without[*service] = true;
}

std::string TraitHelp() {
    std::string text = "Behave like some other host; may be repeated:";
    for (Trait trait : AllTraits())
        text += std::string("\n  ") + TraitName(trait) + ": " + TraitDescription(trait);
    return text;
}

std::string ServiceHelp() {
    std::string text = "Keep a service from the filter; may be repeated:";
    for (std::size_t index = 0; index < serviceCount; ++index)
        text += std::string("\n  ") + ServiceName(static_cast<Service>(index));
    return text;
}

/// The command line under construction: CLI11 fills texts, they are read into the options after it
/// found the line sound.
class Parser {
  public:
    Parser()
        : app("Runs a filter plug-in on a picture, as an image editor would.", "zandermolite-run") {
        app.footer(footer);
        app.set_version_flag("--version", "zandermolite-run " + std::string(versionText));
        AddFiles();
        AddRuns();
        AddHostBehaviour();
        AddClaims();
    }

    ParsedCommandLine Parse(const std::vector<std::string>& arguments) {
        try {
            app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        } catch (const CLI::CallForHelp&) {
            return {{}, app.help()};
        } catch (const CLI::CallForVersion& version) {
            return {{}, std::string(version.what()) + "\n"};
        } catch (const CLI::ParseError& error) {
            const std::string text = error.what();
            throw CommandLineError(text.substr(0, text.find('\n')));
        }
        ReadTexts();
        Check();
        return {options, {}};
    }

  private:
    void AddFiles() {
        app.add_option("--image", image, "The picture: PNG, JPEG or BMP");
        app.add_option("--filter", filter, "The filter's file");
        app.add_option("--name", options.filterName,
                       "The filter's name, if the file holds several (default: the first)");
        app.add_option("--out", out, "Where the result goes, as PNG (default: nowhere)");
        app.add_option(
            "--selection", selection,
            "LEFT,TOP,RIGHT,BOTTOM in pixels, right and bottom exclusive (default: all)");
        auto* maskOption = app.add_option(
            "--mask", mask,
            "A picture whose grey values select, as large as the selection or image");
        app.add_option("--ellipse", options.ellipseFeather,
                       "Select the ellipse inside the selection, its edge this many pixels soft")
            ->excludes(maskOption)
            ->check(CLI::Range(0.0, 30000.0));
        app.add_option("--list", list, "Only list the filters of this file or folder");
    }

    void AddRuns() {
        app.add_option("--times", options.times,
                       "How often the filter runs, each time on the result")
            ->check(CLI::Range(1, 100000));
        app.add_flag("--repeat", options.repeat,
                     "The runs after the first, or the only one, are without the filter's dialog");
        auto* about = app.add_flag("--about", options.about, "Only show the filter's About box");
        app.add_option("--selector", options.selector, "Only call this selector")->excludes(about);
        app.add_flag("--json", options.json, "Print one JSON object in place of the lines");
    }

    void AddHostBehaviour() {
        app.add_option("--trait", traits, TraitHelp())->type_name("NAME");
        app.add_option("--without", without, ServiceHelp())->type_name("NAME");
        app.add_option("--memory", options.settings.memoryBudget,
                       "Bytes that the buffer and handle suites have to give")
            ->check(CLI::NonNegativeNumber);
        app.add_option("--abort-after", options.settings.abortAfterRow,
                       "abortProc answers true once this many rows were delivered")
            ->check(CLI::NonNegativeNumber);
        app.add_option("--fail-advance", failures,
                       "ROW=CODE: advanceState answers CODE for this row of the selection; may be "
                       "repeated")
            ->type_name("ROW=CODE");
        app.add_option("--fail-allocation", options.settings.failAllocation,
                       "Fail this allocation of the suites, 1 the first")
            ->check(CLI::PositiveNumber);
        app.add_option("--layer", layer, "flat, floating, transparent or protected")
            ->check(CLI::IsMember({"flat", "floating", "transparent", "protected"}));
        app.add_option("--foreground", foreground, "RED,GREEN,BLUE from 0 to 255");
        app.add_option("--background", background, "RED,GREEN,BLUE from 0 to 255");
    }

    void AddClaims() {
        app.add_option("--claim-rect", claimedRect,
                       "LEFT,TOP,RIGHT,BOTTOM for filterRect, sensible or not");
        app.add_option("--claim-planes", options.settings.claimedPlanes,
                       "A number for planes, sensible or not");
        app.add_option("--continue-limit", options.settings.continueLimit,
                       "Calls of the continue selector before the host gives up")
            ->check(CLI::PositiveNumber);
    }

    void ReadTexts() {
        options.list = PathFromUtf8(list);
        options.image = PathFromUtf8(image);
        options.filter = PathFromUtf8(filter);
        options.out = PathFromUtf8(out);
        options.mask = PathFromUtf8(mask);
        HostSettings& settings = options.settings;
        if (!selection.empty())
            options.selection = ReadRectangle("selection", selection);
        if (!claimedRect.empty())
            settings.claimedFilterRect = Narrowed(ReadRectangle("claim-rect", claimedRect));
        if (!foreground.empty())
            settings.foreground = ReadColor("foreground", foreground);
        if (!background.empty())
            settings.background = ReadColor("background", background);
        for (const std::string& name : traits)
            ReadTrait(name, settings.traits);
        for (const std::string& name : without)
            ReadWithout(name, settings.without);
        for (const std::string& failure : failures)
            ReadFailure(failure, settings.failAdvance);
        const std::map<std::string, LayerKind> layers = {
            {"", LayerKind::Automatic},
            {"flat", LayerKind::Flat},
            {"floating", LayerKind::Floating},
            {"transparent", LayerKind::EditableTransparency},
            {"protected", LayerKind::ProtectedTransparency}};
        settings.layer = layers.at(layer);
    }

    void Check() const {
        if (!options.list.empty())
            return;
        if (options.filter.empty())
            throw CommandLineError("--filter is missing");
        if (options.image.empty() && !options.about && !options.selector)
            throw CommandLineError("--image is missing");
        if (options.selection && IsEmpty(*options.selection))
            Refuse("selection", selection, "a rectangle that isn't empty");
    }

    CLI::App app;
    BatchOptions options;
    std::string list, image, filter, out, mask, selection, claimedRect, foreground, background;
    std::string layer;
    std::vector<std::string> traits, without, failures;
};

}  // namespace

ParsedCommandLine ParseBatchOptions(const std::vector<std::string>& arguments) {
    return Parser().Parse(arguments);
}

}  // namespace host
