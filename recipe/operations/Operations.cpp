#include "recipe/operations/Operations.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

#include "host/picture/Picture.h"
#include "host/picture/Selection.h"
#include "host/record/FilterHost.h"
#include "paint/math/Random.h"
#include "recipe/formats/TextureFiles.h"
#include "recipe/language/Wording.h"
#include "recipe/operations/Colors.h"
#include "recipe/operations/FilterOperations.h"
#include "recipe/operations/PresetOperation.h"
#include "recipe/operations/RecordOperations.h"
#include "recipe/operations/ToolOperations.h"
#include "recipe/tool/Session.h"
#include "shell/transfer/Transfer.h"

namespace recipe {

namespace {

constexpr std::int64_t highest32 = std::numeric_limits<std::uint32_t>::max();

void RunNew(Session& session, const Arguments& arguments) {
    // The old texture is freed only after the new one is made: a failure changes nothing.
    session.SetTexture(
        NewTexture(arguments.Number<short>("width"), arguments.Number<short>("height")));
}

void RunOpen(Session& session, const Arguments& arguments) {
    session.SetTexture(LoadTexture(session.Places().FindInput(arguments.Get<std::string>("file"))));
}

void RunClock(Session&, const Arguments& arguments) {
    CoreHost::SetClock(arguments.Number<std::uint32_t>("seconds"));
}

void RunSeed(Session&, const Arguments& arguments) {
    SetSeed(arguments.Number<std::uint32_t>("value"));
}

void RunColors(Session& session, const Arguments& arguments) {
    if (arguments.Has("foreground")) {
        session.foreground = ColorOf(arguments, "foreground");
    }
    if (arguments.Has("background")) {
        session.background = ColorOf(arguments, "background");
    }
}

void RunUndo(Session& session, const Arguments&) {
    session.Texture().SwapUndo();
}

void RunSave(Session& session, const Arguments& arguments) {
    SaveTexture(session.Texture(), session.Places().Output(arguments.Get<std::string>("file")));
}

void RunRepeat(Session& session, const Arguments& arguments) {
    SaveRepeated(session.Texture(), arguments.Number<int>("columns"), arguments.Number<int>("rows"),
                 session.Places().Output(arguments.Get<std::string>("file")),
                 [&](double share) { session.ReportProgress(share); });
}

// The tile that the entry below transfers: a host passes no pointer of its caller's to a filter.
const PaintClass* appliedTexture = nullptr;

/// The plug-in's transfer as a filter of its own, without the editor before it.
void HOST_CALL TransferEntry(std::int16_t selector, hostapi::FilterRecord* record, void* /*data*/,
                             std::int16_t* result) {
    if (selector != hostapi::filterSelectorStart) {
        return;
    }
    const RecordInUse inUse(record);
    FilterContext context{hostapi::noErr, record};
    WriteTileToSelection(&context, TileOf(*appliedTexture));
    *result = context.result;
}

host::Selection SelectionOf(const Arguments& arguments, const host::Picture& picture) {
    return arguments.Has("selection")
               ? host::SelectRectangle(hostapi::Widened(arguments.Get<hostapi::Rect>("selection")))
               : host::SelectNothing(picture);
}

void RunApply(Session& session, const Arguments& arguments) {
    host::Picture picture =
        host::LoadPicture(session.Places().FindInput(arguments.Get<std::string>("image")));
    host::HostSettings settings;
    settings.hooks.showProgress = [&](std::int32_t done, std::int32_t total) {
        session.ReportProgress(static_cast<double>(done) / total);
    };
    host::FilterHost filterHost(settings);
    appliedTexture = &session.Texture();
    const host::RunReport report =
        filterHost.Run(TransferEntry, picture, SelectionOf(arguments, picture));
    if (!report.Succeeded()) {
        throw std::runtime_error("the transfer to " + Quoted(arguments.Get<std::string>("image")) +
                                 " ended with the result " + std::to_string(report.result));
    }
    host::SavePicture(picture, session.Places().Output(arguments.Get<std::string>("file")));
}

std::vector<OperationDefinition> BasicOperations() {
    using enum TextureUse;
    const Whole side{1, maximalTextureSide};
    const WhenMissing standardSide = Defaults(128);
    const Whole repetitions{1, 64};
    const FileName textureFile = TextureFileName();
    const FileName pngFile{{".png"}};
    const FileName anyPicture{};
    return {
        {"new", begins, {{"width", side, standardSide}, {"height", side, standardSide}}, RunNew},
        {"open", begins, {{"file", textureFile}}, RunOpen},
        {"clock", keeps, {{"seconds", Whole{0, highest32}}}, RunClock},
        {"seed", keeps, {{"value", Whole{0, highest32}}}, RunSeed},
        {"colors",
         keeps,
         {{"foreground", ColorTriple{}, LeftOut{}}, {"background", ColorTriple{}, LeftOut{}}},
         RunColors},
        {"undo", keeps, {}, RunUndo},
        {"save", keeps, {{"file", textureFile}}, RunSave},
        {"repeat",
         keeps,
         {{"columns", repetitions, Defaults(3)},
          {"rows", repetitions, Defaults(3)},
          {"file", PictureFileName()}},
         RunRepeat},
        {"apply",
         keeps,
         {{"image", anyPicture}, {"selection", Rectangle{}, LeftOut{}}, {"file", pngFile}},
         RunApply},
    };
}

}  // namespace

std::span<const OperationDefinition> OperationTable() {
    static const std::vector<OperationDefinition> table = [] {
        std::vector<OperationDefinition> rows = BasicOperations();
        std::ranges::move(RecordOperations(), std::back_inserter(rows));
        rows.push_back(PresetOperation());
        std::ranges::move(FilterOperations(), std::back_inserter(rows));
        std::ranges::move(ToolOperations(), std::back_inserter(rows));
        return rows;
    }();
    return table;
}

}  // namespace recipe
