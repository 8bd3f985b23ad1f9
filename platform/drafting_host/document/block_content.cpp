// Placing a block's entities.
#include "drafting_host/document/block_content.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/document/host_document.h"

namespace brenvik {

using namespace vectors;

namespace {

constexpr long MostEntitiesShown = 1000000;
/// A file may ask for any number of columns and rows.
constexpr int MostPlaces = 100000;

HostBlock& BlockOf(const HostDocument& document, const InsertData& reference) {
    HostBlock* block = document.FindBlock(reference.block);
    if (block == nullptr) throw host_failure::KeyNotFound("block \"" + reference.block + "\"");
    return *block;
}

/// Programs write scales in as few as six digits behind the point, or work them out in single precision. A
/// part of a metre is out by a thousandth of a millimetre at most.
constexpr double SameScale = 1e-6;

/// From block coordinates to the world, for one column and row.
class Placement {
  public:
    Placement(const InsertData& reference, const Point3& base, int column, int row)
        : mReference(reference), mBase(base) {
        const Axes plane = ObjectAxes(reference.normal);
        const auto [sine, cosine] = OfAngle(reference.rotation);
        mAxes = {plane.x * cosine + plane.y * sine, plane.y * cosine - plane.x * sine, plane.z};
        mOrigin = ToWorld(plane, reference.insertion) + mAxes.x * (column * reference.columnSpacing) +
                  mAxes.y * (row * reference.rowSpacing);
    }

    /// Even scales, mirrors included.
    Similarity Even(double size) const {
        const Point3 s{std::copysign(size, mReference.scale.x), std::copysign(size, mReference.scale.y),
                       std::copysign(size, mReference.scale.z)};
        Matrix4 matrix{};
        matrix[3][3] = 1;
        const Point3 shift = Point(mBase);
        const Point3 columns[3] = {mAxes.x * s.x, mAxes.y * s.y, mAxes.z * s.z};
        for (std::size_t i = 0; i < 3; ++i) {
            matrix[0][i] = columns[i].x;
            matrix[1][i] = columns[i].y;
            matrix[2][i] = columns[i].z;
        }
        const Point3 moved = columns[0] * mBase.x + columns[1] * mBase.y + columns[2] * mBase.z;
        matrix[0][3] = shift.x - moved.x;
        matrix[1][3] = shift.y - moved.y;
        matrix[2][3] = shift.z - moved.z;
        return Similarity::FromMatrix(matrix);
    }

    Point3 Point(const Point3& p) const { return mOrigin + Vector(p - mBase); }
    Point3 Vector(const Point3& v) const {
        const Point3& s = mReference.scale;
        return ToWorld(mAxes, {v.x * s.x, v.y * s.y, v.z * s.z});
    }

  private:
    const InsertData& mReference;
    Point3 mBase;
    Axes mAxes;
    Point3 mOrigin;
};

/// A circle or arc stretched becomes an ellipse, whose axes are those of the stretched pair of radii.
EllipseData Stretched(const ArcData& arc, const Placement& placement) {
    const Axes axes = ObjectAxes(arc.normal);
    const Point3 u = placement.Vector(axes.x * arc.radius), v = placement.Vector(axes.y * arc.radius);
    // Conjugate radii u, v: the axes stand where the distance from the centre peaks.
    const double angle = std::atan2(2 * Dot(u, v), Dot(u, u) - Dot(v, v)) / 2;
    const auto [sine, cosine] = OfAngle(angle);
    EllipseData result;
    result.center = placement.Point(arc.center);
    result.majorAxis = u * cosine + v * sine;
    const Point3 minor = v * cosine - u * sine;
    result.normal = Unit(Cross(result.majorAxis, minor));
    result.ratio = Length(minor) / Length(result.majorAxis);
    double span = NormalAngle(arc.endAngle - arc.startAngle);
    if (span == 0) return result;
    result.startParameter = NormalAngle(arc.startAngle - angle);
    result.endParameter = result.startParameter + span;
    return result;
}

HostGeometry Stretch(const HostGeometry& geometry, const Placement& placement) {
    if (const auto* line = std::get_if<LineData>(&geometry))
        return LineData{placement.Point(line->start), placement.Point(line->end), 0, {0, 0, 1}};
    if (const auto* arc = std::get_if<ArcData>(&geometry)) return Stretched(*arc, placement);
    if (const auto* circle = std::get_if<CircleData>(&geometry))
        return Stretched({circle->center, circle->radius, 0, 0, 0, circle->normal}, placement);
    if (const auto* point = std::get_if<PointData>(&geometry)) {
        PointData moved = *point;
        moved.position = placement.Point(point->position);
        return moved;
    }
    if (const auto* polyline = std::get_if<PolylineData>(&geometry);
        polyline != nullptr && KindOf(*polyline) != PolylineKind::Plane) {
        PolylineData moved = *polyline;
        for (PolylineData::Vertex& vertex : moved.vertices) vertex.point = placement.Point(vertex.point);
        return moved;
    }
    if (const auto* quad = std::get_if<QuadData>(&geometry);
        quad != nullptr && quad->kind == QuadData::Kind::Face) {
        QuadData moved = *quad;
        for (Point3& corner : moved.corners) corner = placement.Point(corner);
        return moved;
    }
    throw host_failure::NotPossible("a block of uneven scale holds what can't be stretched");
}

void AddBox(const HostDocument& document, const InsertData& reference, int depth, long& left,
            BoxBuilder& box) {
    if (depth > DeepestNesting || document.FindBlock(reference.block) == nullptr) return;
    for (PlacedEntity& placed : PlacedContent(document, reference)) {
        if (--left < 0) throw host_failure::NotPossible("block \"" + reference.block + "\" holds too much");
        if (const auto* inner = std::get_if<InsertData>(&placed.geometry)) {
            AddBox(document, *inner, depth + 1, left, box);
            continue;
        }
        std::visit(
            [&](const auto& data) {
                if constexpr (requires { BoxOf(data); })
                    if (const std::optional<Box3> one = BoxOf(data)) box.Add(*one);
            },
            placed.geometry);
    }
}

}  // namespace

std::optional<double> EvenScale(const InsertData& reference) {
    const Point3& scale = reference.scale;
    std::array sizes{std::abs(scale.x), std::abs(scale.y), std::abs(scale.z)};
    std::ranges::sort(sizes);
    const bool isEven = sizes[0] > 0 && sizes[2] - sizes[0] <= SameScale * sizes[2];
    return isEven ? std::optional(sizes[1]) : std::nullopt;
}

std::vector<PlacedEntity> PlacedContent(const HostDocument& document, const InsertData& reference) {
    return PlacedContent(BlockOf(document, reference), reference, [](const HostGeometry&) { return true; });
}

std::vector<PlacedEntity> PlacedContent(const HostBlock& block, const InsertData& reference,
                                        const std::function<bool(const HostGeometry&)>& wanted) {
    const int columns = std::max(1, reference.columns), rows = std::max(1, reference.rows);
    if (static_cast<long long>(columns) * rows > MostPlaces)
        throw host_failure::NotPossible("a block reference with more than 100000 places");
    const std::optional<double> even = EvenScale(reference);
    std::vector<PlacedEntity> result;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const Placement placement(reference, block.Record().base, column, row);
            const Similarity move = even ? placement.Even(*even) : Similarity();
            for (const HostEntity* entity : block.Entities()) {
                HostGeometry geometry = entity->Geometry();
                if (!wanted(geometry)) continue;
                if (even)
                    Transform(geometry, move);
                else
                    geometry = Stretch(geometry, placement);
                result.push_back({std::move(geometry), entity});
            }
        }
    }
    return result;
}

std::optional<Box3> BoxOfReference(const HostDocument& document, const InsertData& reference) {
    BoxBuilder box;
    long left = MostEntitiesShown;
    AddBox(document, reference, 0, left, box);
    return box.Empty() ? std::nullopt : std::optional(box.Box());
}

}  // namespace brenvik
