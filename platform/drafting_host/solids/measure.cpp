// Measuring: the own frame of a part, unless the part is square to the world.
#include "drafting_host/solids/measure.h"

#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <algorithm>
#include <cmath>

#include "base/failure.h"
#include "drafting_host/solids/own_frame.h"

namespace brenvik::solids {
namespace {

const std::array<gp_XYZ, 3> World{gp_XYZ(1, 0, 0), gp_XYZ(0, 1, 0), gp_XYZ(0, 0, 1)};

double AreaAlong(const std::vector<FlatFace>& flats, const std::array<gp_XYZ, 3>& axes) {
    double area = 0;
    for (const FlatFace& flat : flats) {
        if (std::ranges::any_of(axes, [&](const gp_XYZ& axis) { return Parallel(axis, flat.normal); }))
            area += flat.area;
    }
    return area;
}

/// True when flat faces or straight edges lie along each of the three world axes: the evidence that the
/// part was drawn square.
bool ShowsAllAxes(const std::vector<FlatFace>& flats, const TopoDS_Shape& shape) {
    std::vector<gp_XYZ> directions = StraightDirections(shape);
    for (const FlatFace& flat : flats) directions.push_back(flat.normal);
    return std::ranges::all_of(World, [&](const gp_XYZ& axis) {
        return std::ranges::any_of(directions, [&](const gp_XYZ& way) { return Parallel(axis, way); });
    });
}

/// True for a part that is as wide as it is deep about a world axis along which its flat faces look or its
/// turned faces run, as a round dish on a table is, whatever facet it has.
bool RoundAboutWorldAxis(const MeasuredFrame& square, const std::vector<FlatFace>& flats,
                         const TopoDS_Shape& shape) {
    constexpr double equal = 1e-6;
    std::vector<gp_XYZ> directions = TurningAxes(shape);
    for (const FlatFace& flat : flats) directions.push_back(flat.normal);
    for (std::size_t i = 0; i < World.size(); ++i) {
        const double width = square.sizes[(i + 1) % 3], depth = square.sizes[(i + 2) % 3];
        if (std::abs(width - depth) > equal * width) continue;
        if (std::ranges::any_of(directions, [&](const gp_XYZ& way) { return Parallel(World[i], way); }))
            return true;
    }
    return false;
}

bool DrawnSquare(const Support& support, const std::vector<FlatFace>& flats, const TopoDS_Shape& shape,
                 const MeasuredFrame& own) {
    if (own.AlongWorld()) return true;
    constexpr double tie = 1e-9;
    const MeasuredFrame square = WorldFrame(support);
    const bool allAxes = ShowsAllAxes(flats, shape);
    if (allAxes && AreaAlong(flats, World) > AreaAlong(flats, own.axes) * (1 + tie)) return true;
    if (!allAxes && !RoundAboutWorldAxis(square, flats, shape)) return false;
    return square.BoxVolume() <= own.BoxVolume() * (1 + tie);
}

Extents Result(const MeasuredFrame& frame, int status) {
    const auto& [d1, d2, d3] = frame.sizes;
    if (!std::isfinite(d1) || !std::isfinite(d2) || !std::isfinite(d3))
        return {0, 0, 0, measure_status::NotFinite};
    return {d1, d2, d3, status};
}

Extents Measure(const TopoDS_Shape& shape) {
    if (shape.IsNull() || !TopExp_Explorer(shape, TopAbs_FACE).More()) return {};
    const Support support(shape);
    const MeasuredFrame square = WorldFrame(support);
    if (Result(square, measure_status::Square).status <= 0) return Result(square, measure_status::Square);
    const std::vector<FlatFace> flats = FlatFaces(shape);
    if (flats.empty()) {
        const MeasuredFrame own = RoundFrame(support, shape);
        return own.AlongWorld() ? Result(square, measure_status::Square)
                                : Result(own, measure_status::SmallestBox);
    }
    const MeasuredFrame own = FlatFrame(support, flats);
    return DrawnSquare(support, flats, shape, own) ? Result(square, measure_status::Square)
                                                   : Result(own, measure_status::OwnFrame);
}

}  // namespace

Extents MeasureShape(const TopoDS_Shape& shape) {
    try {
        return Measure(shape);
    } catch (const Standard_Failure&) {
        return {0, 0, 0, measure_status::NotFinite};
    } catch (const Failure&) {
        return {0, 0, 0, measure_status::NotFinite};
    }
}

}  // namespace brenvik::solids
