// The host's entities under shifts, turns, scales and mirrors, worked on analytic values.
#include "drafting_host/document/geometry/host_geometry.h"
#include "drafting_host/document/geometry/text_heights.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/solids/transform.h"

namespace brenvik {

using namespace vectors;

namespace {

/// What a move does to coordinates of an entity's own plane.
class PlaneMove {
  public:
    PlaneMove(const Point3& normal, const Similarity& move)
        : mMove(move), mFrom(ObjectAxes(normal)), mNormal(move.Direction(normal)), mTo(ObjectAxes(mNormal)) {
        const Point3 image = move.Direction(mFrom.x);
        mTurn = move.OnlyShifts() ? 0 : std::atan2(Dot(mTo.y, image) + 0.0, Dot(mTo.x, image) + 0.0);
    }

    const Point3& Normal() const { return mNormal; }
    /// A point of the old plane, elevation as its Z, in the new one.
    Point3 Point(const Point3& p) const { return FromWorld(mTo, mMove.Point(ToWorld(mFrom, p))); }
    /// An angle of the old plane in the new one.
    double Angle(double angle) const {
        if (mMove.OnlyShifts()) return angle;
        return NormalAngle(mMove.Mirrors() ? mTurn - angle : mTurn + angle);
    }

  private:
    const Similarity& mMove;
    Axes mFrom;
    Point3 mNormal;
    Axes mTo;
    double mTurn = 0;
};

}  // namespace

void Transform(LineData& data, const Similarity& move) {
    data.start = move.Point(data.start);
    data.end = move.Point(data.end);
    data.normal = move.Direction(data.normal);
    data.thickness *= move.ScaleFactor();
}

void Transform(ArcData& data, const Similarity& move) {
    const PlaneMove plane(data.normal, move);
    data.center = move.Point(data.center);
    const double start = plane.Angle(data.startAngle), end = plane.Angle(data.endAngle);
    data.startAngle = move.Mirrors() ? end : start;
    data.endAngle = move.Mirrors() ? start : end;
    data.radius *= move.ScaleFactor();
    data.thickness *= move.ScaleFactor();
    data.normal = plane.Normal();
}

void Transform(CircleData& data, const Similarity& move) {
    data.center = move.Point(data.center);
    data.radius *= move.ScaleFactor();
    data.thickness *= move.ScaleFactor();
    data.normal = move.Direction(data.normal);
}

void Transform(EllipseData& data, const Similarity& move) {
    data.center = move.Point(data.center);
    data.majorAxis = move.Vector(data.majorAxis);
    data.normal = move.Direction(data.normal);
    if (!move.Mirrors()) return;
    const bool full = std::abs(data.endParameter - data.startParameter) >= FullTurn - 1e-12;
    if (full) return;
    const double start = data.startParameter;
    data.startParameter = NormalAngle(-data.endParameter);
    data.endParameter = data.startParameter + NormalAngle(-start - data.startParameter);
}

void Transform(SplineData& data, const Similarity& move) {
    for (Point3& p : data.controlPoints) p = move.Point(p);
    for (Point3& p : data.fitPoints) p = move.Point(p);
    data.normal = move.Direction(data.normal);
}

void Transform(LWPolylineData& data, const Similarity& move) {
    const PlaneMove plane(data.normal, move);
    double elevation = data.elevation;
    for (LWPolylineData::Vertex& vertex : data.vertices) {
        const Point3 p = plane.Point({vertex.x, vertex.y, data.elevation});
        vertex.x = p.x;
        vertex.y = p.y;
        elevation = p.z;
        if (move.Mirrors()) vertex.bulge = -vertex.bulge + 0.0;
        vertex.startWidth *= move.ScaleFactor();
        vertex.endWidth *= move.ScaleFactor();
    }
    data.elevation = elevation;
    data.constantWidth *= move.ScaleFactor();
    data.thickness *= move.ScaleFactor();
    data.normal = plane.Normal();
}

void Transform(PolylineData& data, const Similarity& move) {
    const bool own = KindOf(data) == PolylineKind::Plane;
    const PlaneMove plane(data.normal, move);
    const double oldElevation = data.elevation;
    if (own) data.elevation = plane.Point({0, 0, oldElevation}).z;
    for (PolylineData::Vertex& vertex : data.vertices) {
        if (own) {
            const Point3 p = plane.Point({vertex.point.x, vertex.point.y, oldElevation});
            vertex.point = {p.x, p.y, vertex.point.z == oldElevation ? data.elevation : p.z};
            if (move.Mirrors()) vertex.bulge = -vertex.bulge + 0.0;
            vertex.startWidth *= move.ScaleFactor();
            vertex.endWidth *= move.ScaleFactor();
        } else {
            vertex.point = move.Point(vertex.point);
        }
    }
    data.thickness *= move.ScaleFactor();
    data.normal = plane.Normal();
}

void Transform(PointData& data, const Similarity& move) {
    data.position = move.Point(data.position);
    data.normal = move.Direction(data.normal);
    data.thickness *= move.ScaleFactor();
}

void Transform(TextData& data, const Similarity& move) {
    constexpr int backward = 2;
    const PlaneMove plane(data.normal, move);
    data.insertion = plane.Point(data.insertion);
    if (data.alignment) data.alignment = plane.Point(*data.alignment);
    data.rotation = plane.Angle(data.rotation);
    // A mirrored text reads backward: its letters run against its own direction.
    if (move.Mirrors()) {
        data.generation ^= backward;
        data.rotation = NormalAngle(data.rotation + std::numbers::pi);
    }
    data.height *= move.ScaleFactor();
    data.thickness *= move.ScaleFactor();
    data.normal = plane.Normal();
}

void Transform(MTextData& data, const Similarity& move) {
    // A paragraph is always readable, so a mirror moves it and turns its line, and no more.
    const PlaneMove plane(data.normal, move);
    data.insertion = move.Point(data.insertion);
    if (data.direction)
        data.direction = move.Direction(*data.direction);
    else
        data.rotation = plane.Angle(data.rotation);
    data.height *= move.ScaleFactor();
    data.width *= move.ScaleFactor();
    if (!move.OnlyShifts() && move.ScaleFactor() != 1)
        data.text = WithScaledHeights(data.text, move.ScaleFactor());
    data.normal = plane.Normal();
}

void Transform(InsertData& data, const Similarity& move) {
    const PlaneMove plane(data.normal, move);
    data.insertion = plane.Point(data.insertion);
    data.rotation = plane.Angle(data.rotation);
    data.scale = data.scale * move.ScaleFactor();
    data.columnSpacing *= move.ScaleFactor();
    data.rowSpacing *= move.ScaleFactor();
    if (move.Mirrors()) {
        data.scale.y = -data.scale.y;
        data.rowSpacing = -data.rowSpacing + 0.0;
    }
    data.normal = plane.Normal();
}

void Transform(QuadData& data, const Similarity& move) {
    if (data.kind == QuadData::Kind::Face) {
        for (Point3& corner : data.corners) corner = move.Point(corner);
        return;
    }
    const PlaneMove plane(data.normal, move);
    for (Point3& corner : data.corners) corner = plane.Point(corner);
    data.thickness *= move.ScaleFactor();
    data.normal = plane.Normal();
}

void Transform(ViewportData& data, const Similarity& move) {
    // A viewport lies square on its sheet: only its place and size follow.
    data.center = move.Point(data.center);
    data.width *= move.ScaleFactor();
    data.height *= move.ScaleFactor();
}

void Transform(ShapeData& data, const Similarity& move) {
    if (move.Identity()) return;
    if (move.OnlyShifts()) {
        const Point3 shift = move.Point({});
        data.shape = solids::Moved(data.shape, gp_Vec(shift.x, shift.y, shift.z));
        return;
    }
    data.shape = solids::Transformed(data.shape, move.Trsf());
}

void Transform(HostGeometry& data, const Similarity& move) {
    std::visit([&](auto& kind) { Transform(kind, move); }, data);
}

}  // namespace brenvik
