// Layer, thickness and shape of each entity, and whether they agree.
#include "cnc/proof/written_side.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/text.h"
#include "cnc/drawing/level_normal.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/lengths.h"
#include "cnc/part/told.h"
#include "cnc/plan/plan_sides.h"
#include "cnc/targets/bore_rules.h"
#include "cnc/targets/hole_rules.h"

namespace brenvik {

namespace {

/// Of a unit normal: below it a path lies level. Finer than for faces of a part, since a run puts its
/// operations level without the modeller's noise.
constexpr double SameAxis = 1e-6;
/// Places in files have six decimals.
constexpr double PlaceSlack = 1e-4;
/// Rectangles of bores have corners of four decimals, in any unit.
constexpr double RectangleRounding = 1e-4;

/// One entity after another of a file.
class SideReader {
  public:
    SideReader(const SideContext& context, WrittenSide& side) : mContext(context), mSide(side) {}

    void Take(const AcadEntity& entity) {
        mLayer = entity.Layer();
        if (const auto* circle = dynamic_cast<const AcadCircle*>(&entity))
            TakeCircle(*circle);
        else if (const auto* polyline = dynamic_cast<const AcadLWPolyline*>(&entity))
            TakePolyline(*polyline);
        else if (const auto* sheet = dynamic_cast<const Acad3DPolyline*>(&entity))
            TakeSheet(*sheet);
        else
            Fault("an entity that is no operation (" + std::string(entity.ObjectName()) + ")");
    }

  private:
    void Fault(const std::string& what) {
        mSide.faults.push_back(what + " on layer " + mLayer +
                               (mContext.secondSide ? " of the second side" : ""));
    }

    std::optional<OperationName> NameOf(double depthOfEntity) {
        const NameContext context{mContext.target, mContext.metric, mContext.tools, depthOfEntity};
        std::optional<OperationName> name = ReadOperationName(context, mLayer);
        if (!name) Fault("an operation whose name tells nothing");
        return name;
    }

    void TakeCircle(const AcadCircle& circle) {
        const std::optional<OperationName> name = NameOf(std::abs(circle.Thickness()));
        if (!name) return;
        const bool level = IsLevel(circle.Normal(), SameAxis);
        if (name->kind == OperationKind::Bore)
            return level ? Fault("a bore that stands") : TakeBore(circle, *name);
        if (name->kind == OperationKind::Sheet) return Fault("a circle");
        if (!level) return Fault("a circle that isn't level");
        mCutsThrough = name->kind == OperationKind::Route || name->kind == OperationKind::Path;
        AddUpright(*name, Kind(*name, false), SidesOf(circle), circle.Center().z,
                   -circle.Thickness() * circle.Normal().z);
    }

    void TakePolyline(const AcadLWPolyline& polyline) {
        const std::optional<OperationName> name = NameOf(std::abs(polyline.Thickness()));
        if (!name) return;
        if (!IsLevel(polyline.Normal(), SameAxis))
            return Fault(name->kind == OperationKind::Outline || polyline.Color() == layers::OutlineColor
                             ? "an outline that isn't level"
                             : "a path that isn't level");
        if (!polyline.Closed()) return Fault("an open path");
        if (name->kind == OperationKind::Bore) return TakeRectangle(polyline, *name);
        if (name->kind == OperationKind::Sheet) return Fault("a path");
        const double up = polyline.Normal().z;
        mCutsThrough = polyline.Color() == layers::OutlineColor || polyline.Color() == layers::CutOutColor;
        AddUpright(*name, Kind(*name, polyline.Color() == layers::OutlineColor), SidesOf(polyline),
                   polyline.Elevation() * up, -polyline.Thickness() * up);
    }

    static OperationKind Kind(const OperationName& name, bool outline) {
        if (name.kind != OperationKind::Path) return name.kind;
        return outline ? OperationKind::Outline : OperationKind::Route;
    }

    void TakeSheet(const Acad3DPolyline& sheet) {
        const std::optional<OperationName> name = NameOf(sheet.Thickness());
        if (!name) return;
        if (name->kind != OperationKind::Sheet) return Fault("a path in space");
        if (name->depth && Apart(*name->depth, sheet.Thickness(), name->rounding))
            Fault("a sheet " + ReportedLength(sheet.Thickness()) + " thick");
    }

    bool Apart(double a, double b, double rounding) const { return std::abs(a - b) > rounding + Slack(); }
    double Slack() const { return PlaceSlack * MillimetreIn(mContext.metric); }

    /// The depth by the name or the thickness, whichever carries it; of both the finer one.
    double DepthOf(const OperationName& name, double thickness) {
        // The receiver of the second side gets the height of the circle in the name, not its depth.
        const bool ofCircle =
            mContext.target == Target::THERM && mContext.secondSide && name.kind == OperationKind::Hole;
        // A picture of the file alone doesn't know how thick the part is.
        const bool isKnown = mContext.thickness > 0;
        if (ofCircle && isKnown && name.depth && Apart(*name.depth, mContext.thickness, name.rounding))
            Fault("a name that gives a height of " + ReportedLength(*name.depth) + " where the circle lies " +
                  ReportedLength(mContext.thickness) + " high");
        if (!name.depth || ofCircle)
            return name.through ? std::max(thickness, mContext.thickness) : thickness;
        const bool inNameAlone = name.kind == OperationKind::Hole && !HolesKeepThickness(mContext.target);
        if (thickness == 0 && inNameAlone) return *name.depth;
        if (!Apart(*name.depth, thickness, name.rounding)) return thickness;
        Fault("a name that gives a depth of " + ReportedLength(*name.depth) + " where the entity is " +
              ReportedLength(thickness) + " deep");
        return *name.depth;
    }

    double WithSkin(double depth) const {
        const bool leavesSkin =
            mContext.skin > 0 && mCutsThrough && !Apart(depth, mContext.thickness - mContext.skin, 0);
        return leavesSkin ? mContext.thickness : depth;
    }

    PlanPoint OnFirst(const PlanPoint& point) const {
        return mContext.secondSide ? PlanPoint{point.x, mContext.width - point.y} : point;
    }
    /// Heights of the file count from the top face that lies up.
    double HeightOnFirst(double z) const { return mContext.secondSide ? -z : mContext.thickness + z; }

    void AddUpright(const OperationName& name, OperationKind kind, std::vector<PlanSide> sides, double z,
                    double thickness) {
        if (std::abs(z) > Slack())
            Fault("a path or hole at height " + ReportedLength(z) + " and not on the top face");
        const double depth = WithSkin(DepthOf(name, thickness));
        if (depth <= 0) return Fault("an operation that cuts nothing");
        if (name.kind != OperationKind::Hole && Trim(name.tool) == "0")
            Fault("a path whose tool is 0, which stands for none,");
        if (name.through && depth < mContext.thickness - Slack())
            Fault("a name that gives a hole right through where it is " + ReportedLength(depth) + " deep");
        if (name.diameter && name.kind == OperationKind::Hole &&
            Apart(*name.diameter, WidthOf(sides), name.rounding))
            Fault("a name that gives a diameter of " + ReportedLength(*name.diameter) +
                  " where the hole is " + ReportedLength(WidthOf(sides)) + " wide");
        for (PlanSide& side : sides) {
            side.from = OnFirst(side.from);
            side.to = OnFirst(side.to);
            if (mContext.secondSide) side.bulge = -side.bulge;
        }
        const double top = HeightOnFirst(0), floor = HeightOnFirst(-depth);
        // Only some targets name routes and pockets apart; where a line goes through the part, the piece
        // inside it falls out.
        const bool followed = name.kind == OperationKind::Route && depth < mContext.thickness - Slack();
        mSide.operations.push_back({kind, mLayer, mContext.secondSide, std::move(sides), std::min(top, floor),
                                    std::max(top, floor), kind == OperationKind::Hole ? 0 : BitOf(name),
                                    followed});
    }

    /// By the name's diameter or its tool. A name with neither leaves the choice to the operator, who has
    /// nothing narrower than the narrowest bit.
    double BitOf(const OperationName& name) const {
        if (name.diameter) return *name.diameter;
        double narrowest = 0;
        for (const MaterialTool& bit : mContext.bits) {
            if (bit.diameter <= 0 || bit.number.empty() || bit.number == "0") continue;
            if (!name.tool.empty() && bit.number != name.tool) continue;
            if (narrowest == 0 || bit.diameter < narrowest) narrowest = bit.diameter;
        }
        return narrowest;
    }

    static double WidthOf(const std::vector<PlanSide>& circle) {
        return std::hypot(circle.front().to.x - circle.front().from.x,
                          circle.front().to.y - circle.front().from.y);
    }

    static bool LeadsFrom(PartSide side, const Point3& into) {
        const SideTraits& edge = Sides()[static_cast<std::size_t>(side)];
        const double along = edge.axis == Axis::X ? into.x : into.y;
        return std::abs(along - (edge.atMax ? -1 : 1)) < SameAxis;
    }

    /// `mouth` and `into` as the file has them.
    void AddBore(const OperationName& name, const Point3& mouth, const Point3& into, double radius,
                 double depth, bool fromAbove) {
        if (name.side && !LeadsFrom(*name.side, into)) Fault("a bore that leads in from another edge");
        if (depth <= 0 || radius <= 0) return Fault("a bore that cuts nothing");
        const double turn = mContext.secondSide ? -1 : 1;
        const PlanPoint plan = OnFirst({mouth.x, mouth.y});
        WrittenOperation bore{OperationKind::Bore, mLayer, mContext.secondSide, {}, 0, 0, 0};
        bore.bore = LevelRound{{plan.x, plan.y, HeightOnFirst(mouth.z)}, {into.x, turn * into.y, 0}, radius};
        bore.boreDepth = depth;
        // A rectangle has no height, and not every name has one.
        bore.heightUnknown = fromAbove && !name.height;
        bore.heightRounding = fromAbove && name.height ? name.rounding : 0;
        bore.low = bore.bore->on.z - radius;
        bore.high = bore.bore->on.z + radius;
        mSide.operations.push_back(std::move(bore));
    }

    void TakeBore(const AcadCircle& circle, const OperationName& name) {
        const Point3 out = circle.Normal();
        if (std::abs(out.z) > SameAxis) return Fault("a bore that isn't level");
        const double depth = -circle.Thickness();
        if (name.diameter && Apart(*name.diameter, circle.Diameter(), name.rounding))
            Fault("a name that gives a diameter of " + ReportedLength(*name.diameter) +
                  " where the bore is " + ReportedLength(circle.Diameter()) + " wide");
        if (name.depth && Apart(*name.depth, depth, name.rounding))
            Fault("a name that gives a depth of " + ReportedLength(*name.depth) + " where the bore is " +
                  ReportedLength(depth) + " deep");
        AddBore(name, circle.Center(), {-out.x, -out.y, 0}, circle.Radius(), depth, false);
    }

    /// Four corners of which the last closes what the others span, all straight, on the part's underside as
    /// it is drawn.
    bool IsRectangle(const AcadLWPolyline& polyline, const std::vector<double>& at) const {
        const double slack = 3 * RectangleRounding + PlaceSlack;
        const auto straight = [&polyline](int side) { return polyline.GetBulge(side) == 0; };
        if (at.size() != 8 || !(straight(0) && straight(1) && straight(2) && straight(3))) return false;
        const Point3 mouth{at[2] - at[0], at[3] - at[1], 0}, into{at[4] - at[2], at[5] - at[3], 0};
        const double lean = std::abs(mouth.x * into.x + mouth.y * into.y);
        return std::abs(at[6] - at[0] - into.x) < slack && std::abs(at[7] - at[1] - into.y) < slack &&
               lean < slack * (std::hypot(mouth.x, mouth.y) + std::hypot(into.x, into.y));
    }

    /// The first side of the rectangle lies on the part's edge, the second leads into the part.
    void TakeRectangle(const AcadLWPolyline& polyline, const OperationName& name) {
        const std::vector<double> at = polyline.Coordinates();
        if (!IsRectangle(polyline, at)) return Fault("a bore that is no rectangle");
        if (polyline.Thickness() != 0 || polyline.Normal().z < 0 ||
            std::abs(polyline.Elevation() + mContext.thickness) > Slack())
            Fault("a bore that doesn't lie on the underside without a thickness");
        const Point3 into{at[4] - at[2], at[5] - at[3], 0};
        const double depth = std::hypot(into.x, into.y), width = std::hypot(at[2] - at[0], at[3] - at[1]);
        if (depth <= 0) return Fault("a bore that cuts nothing");
        const double top = name.height.value_or(mContext.thickness / 2) - mContext.thickness;
        if (name.diameter && Apart(*name.diameter, width, name.rounding + RectangleRounding))
            Fault("a name that gives a diameter of " + ReportedLength(*name.diameter) +
                  " where the bore is " + ReportedLength(width) + " wide");
        if (name.depth && Apart(*name.depth, depth, name.rounding + RectangleRounding))
            Fault("a name that gives a depth of " + ReportedLength(*name.depth) + " where the bore is " +
                  ReportedLength(depth) + " deep");
        AddBore(name, {(at[0] + at[2]) / 2, (at[1] + at[3]) / 2, top}, {into.x / depth, into.y / depth, 0},
                width / 2, depth, true);
    }

    const SideContext& mContext;
    WrittenSide& mSide;
    std::string mLayer;
    /// Whether the entity in hand may be a cut right through, by its kind and colour.
    bool mCutsThrough = false;
};

}  // namespace

WrittenSide ReadWrittenSide(AcadDocument& drawing, const SideContext& context) {
    WrittenSide side;
    SideReader reader(context, side);
    drawing.ModelSpace().ForEach([&reader](AcadEntity& entity) { reader.Take(entity); });
    return side;
}

void ReadWrittenEntity(const AcadEntity& entity, const SideContext& context, WrittenSide& side) {
    SideReader(context, side).Take(entity);
}

}  // namespace brenvik
