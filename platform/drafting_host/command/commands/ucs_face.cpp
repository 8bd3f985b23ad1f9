// UCS Face: the user coordinate system is laid onto a flat face of a solid.
#include "drafting_host/document/geometry/modeller_handle.h"

#include <algorithm>
#include <optional>

#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/commands/face_edits.h"
#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/command/session/picking.h"
#include "drafting_host/document/geometry/boundary_curves.h"
#include "drafting_host/document/geometry/curve_edges.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/solids/operations.h"

namespace brenvik::host_commands {

using namespace vectors;

namespace {

double DistanceFrom(const Point3& point, const LineData& line) {
    const Point3 along = line.end - line.start;
    const double share = std::clamp(Dot(point - line.start, along) / Dot(along, along), 0.0, 1.0);
    return Distance(point, line.start + along * share);
}

/// Z out of the material, X along the face's straight edge nearest to the pick, and the pick on the side of
/// the positive Y. A face without a straight edge has its origin where it was picked.
UcsFrame FrameOn(const TopoDS_Face& face, const Point3& picked) {
    const gp_Dir out = solids::NormalOf(face);
    const Point3 z = Squared({out.X(), out.Y(), out.Z()});
    std::optional<LineData> nearest;
    for (const HostGeometry& curve : BoundaryCurves(face)) {
        const auto* line = std::get_if<LineData>(&curve);
        if (line == nullptr || Distance(line->start, line->end) <= PointTolerance) continue;
        if (!nearest || DistanceFrom(picked, *line) < DistanceFrom(picked, *nearest)) nearest = *line;
    }
    if (!nearest) {
        const Axes axes = ObjectAxes(z);
        return {picked, axes.x, axes.y};
    }
    const bool onTheLeft = Dot(Cross(z, nearest->end - nearest->start), picked - nearest->start) >= 0;
    const Point3 origin = onTheLeft ? nearest->start : nearest->end;
    const Point3 x = Squared(Unit((onTheLeft ? nearest->end : nearest->start) - origin));
    return {origin, x, Squared(Unit(Cross(z, x)))};
}

/// "Select face of solid object:". Only a point picks a face; the corners of a window are taken, with an
/// answer that they pick none, so that they aren't read as anything else. Empty ends without a face.
class SolidFaceQuestion final : public Question {
  public:
    using Question::Question;

    std::string Prompt() const override {
        return mCorners == 2   ? "First corner:"
               : mCorners == 1 ? "Opposite corner:"
                               : "Select face of solid object:";
    }
    bool Take(const std::string& answer) override;
    PointedAt ByPointing() const override { return PointedAt::Point; }
    std::optional<UcsFrame> await_resume() const { return mFrame; }

  private:
    bool TakeAt(const Point3& point);

    int mCorners = 0;  ///< Of a window, still to come.
    std::optional<UcsFrame> mFrame;
};

bool SolidFaceQuestion::Take(const std::string& answer) {
    if (answer.empty()) return true;
    if (mCorners == 0 && !MatchKeyword("Window Crossing BOX", answer).empty()) {
        mCorners = 2;
        return false;
    }
    const std::optional<Point3> point = Session().PointFrom(answer);
    if (!point) {
        Session().Refuse("\"" + answer + "\" picks no face: a point on a face is expected.");
        return false;
    }
    Session().SetLastPoint(*point);
    if (mCorners == 0) return TakeAt(*point);
    if (--mCorners == 0) Session().Refuse("A window picks no face: a point on a face is expected.");
    return false;
}

bool SolidFaceQuestion::TakeAt(const Point3& point) {
    const auto* solid = dynamic_cast<const HostSolid*>(EntityAt(Session(), point));
    const std::vector<TopoDS_Face> faces =
        solid == nullptr ? std::vector<TopoDS_Face>{} : FacesAt(Session(), solid->Shape(), point);
    const auto flat = std::ranges::find_if(faces, &IsFlat);
    if (flat == faces.end()) {
        Session().Refuse("No flat face of a solid lies there.");
        return false;
    }
    mFrame = FrameOn(*flat, point);
    return true;
}

}  // namespace

Asking<void> UcsOnFace(CommandSession& session) {
    SolidFaceQuestion question(session);
    std::optional<UcsFrame> frame = co_await question;
    if (!frame) {
        session.Refuse("No face was selected.");
        co_return;
    }
    for (;;) {
        const Answered<std::string> option = co_await session.AskKeyword(
            "Enter an option [Xflip/Yflip] <accept>:", "Xflip Yflip", IfEmpty::Allowed);
        if (option.Empty()) break;
        // Half a turn about one axis turns the other one round, and Z with it.
        Point3& turned = option.Is("Xflip") ? frame->yAxis : frame->xAxis;
        turned = Point3{} - turned;
    }
    session.ChangeUcs(*frame);
}

}  // namespace brenvik::host_commands
