#include "recipe/operations/ToolOperations.h"

#include <new>
#include <vector>

#include "paint/Stroke.h"
#include "recipe/language/ValueParser.h"
#include "recipe/operations/RecordOperations.h"
#include "recipe/tool/Session.h"

namespace recipe {

namespace {

using hostapi::Point;

/// Makes one stroke along the operation's path. A path of one point is a press without a movement:
/// the segment from the point to itself.
template <class ToolStroke>
void PaintPath(Session& session, const Arguments& arguments) {
    ToolStroke stroke(session.Texture());
    if (!stroke.HasBegun()) {
        throw std::bad_alloc();
    }
    const auto& path = arguments.Get<std::vector<Point>>("path");
    if (path.size() == 1) {
        stroke.Paint(path[0], path[0]);
    }
    for (std::size_t i = 1; i < path.size(); ++i) {
        stroke.Paint(path[i - 1], path[i]);
        session.ReportProgress(static_cast<double>(i) / static_cast<double>(path.size()));
    }
}

void RunBrush(Session& session, const Arguments& arguments) {
    session.Texture().brushSize = arguments.Number<short>("size");
    PaintPath<BrushStroke>(session, arguments);
}

void RunStamp(Session& session, const Arguments& arguments) {
    PaintClass& texture = session.Texture();
    const auto& offset = arguments.Get<Point>("offset");
    texture.stampSize = arguments.Number<short>("size");
    texture.stampOffsetH = offset.h;
    texture.stampOffsetV = offset.v;
    PaintPath<StampStroke>(session, arguments);
}

void CheckStamp(const Arguments& arguments) {
    const auto& offset = arguments.Get<Point>("offset");
    if (offset.h == 0 && offset.v == 0) {
        throw ValueError("'offset' must not be 0,0, which means that there is no source");
    }
}

void RunFill(Session& session, const Arguments& arguments) {
    PaintClass& texture = session.Texture();
    texture.fillTolerance = arguments.Number<short>("tolerance");
    texture.fillAntiAlias = arguments.Number<short>("antiAlias");
    if (!texture.FloodFill(arguments.Get<Point>("at"))) {
        throw std::bad_alloc();
    }
}

void RunGradient(Session& session, const Arguments& arguments) {
    session.Texture().Gradient(arguments.Get<Point>("from"), arguments.Get<Point>("to"));
}

void CheckGradient(const Arguments& arguments) {
    const auto& from = arguments.Get<Point>("from");
    const auto& to = arguments.Get<Point>("to");
    if (from.h != to.h && from.v != to.v) {
        throw ValueError("'from' and 'to' must lie in one row or in one column");
    }
}

}  // namespace

std::vector<OperationDefinition> ToolOperations() {
    using enum TextureUse;
    const Path anyPath{1};
    const Path draggedPath{2};
    return {
        {"brush", changes, {KeyFor(&BrushSettings::size), {"path", anyPath}}, RunBrush},
        {"eraser", changes, {{"path", anyPath}}, PaintPath<EraserStroke>},
        {"pencil", changes, {{"path", anyPath}}, PaintPath<PencilStroke>},
        {"stamp",
         changes,
         {KeyFor(&StampSettings::size), {"offset", Coordinates{}}, {"path", draggedPath}},
         RunStamp,
         CheckStamp},
        {"fill",
         changes,
         {KeyFor(&FillSettings::tolerance),
          KeyFor(&FillSettings::antiAlias),
          {"at", Coordinates{}}},
         RunFill},
        {"gradient",
         changes,
         {{"from", Coordinates{}}, {"to", Coordinates{}}},
         RunGradient,
         CheckGradient},
    };
}

}  // namespace recipe
