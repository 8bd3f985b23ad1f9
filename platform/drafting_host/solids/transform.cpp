// Transformations with exact matrices, carried out on the geometry itself.
#include "drafting_host/solids/transform.h"

#include <BRepBuilderAPI_Transform.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <cmath>
#include <numbers>

#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/rebuild.h"

namespace brenvik::solids {
namespace {

struct SineCosine {
    double sine;
    double cosine;
};

SineCosine OfAngle(double angle) {
    constexpr double quarter = std::numbers::pi / 2;
    const double turns = std::round(angle / quarter);
    if (std::abs(angle - turns * quarter) > 1e-12) return {std::sin(angle), std::cos(angle)};
    switch (static_cast<int>(std::fmod(std::fmod(turns, 4.0) + 4.0, 4.0))) {
        case 0:
            return {0, 1};
        case 1:
            return {1, 0};
        case 2:
            return {0, -1};
        default:
            return {-1, 0};
    }
}

double CleanEntry(double entry) {
    constexpr double rounding = 1e-14;
    if (std::abs(entry) < rounding) return 0;
    if (std::abs(std::abs(entry) - 1) < rounding) return entry > 0 ? 1 : -1;
    return entry;
}

gp_Trsf FromEntries(const gp_Mat& matrix, const gp_XYZ& shift) {
    gp_Trsf result;
    result.SetValues(matrix(1, 1), matrix(1, 2), matrix(1, 3), shift.X(), matrix(2, 1), matrix(2, 2),
                     matrix(2, 3), shift.Y(), matrix(3, 1), matrix(3, 2), matrix(3, 3), shift.Z());
    return result;
}

bool Rigid(const gp_Trsf& transformation) {
    return std::abs(transformation.ScaleFactor() - 1) < 1e-14 && !transformation.IsNegative();
}

/// A solid that a mirror has turned inside out is turned back.
TopoDS_Shape Outward(const TopoDS_Shape& shape) {
    if (shape.ShapeType() == TopAbs_SOLID && Volume(shape) < 0) return shape.Reversed();
    return shape;
}

}  // namespace

gp_Trsf Cleaned(const gp_Trsf& transformation) {
    if (!Rigid(transformation)) return transformation;
    gp_Mat matrix = transformation.VectorialPart();
    for (int row = 1; row <= 3; ++row)
        for (int column = 1; column <= 3; ++column) matrix(row, column) = CleanEntry(matrix(row, column));
    return FromEntries(matrix, transformation.TranslationPart());
}

gp_Trsf Turn(const gp_Ax1& axis, double angle) {
    const auto [sine, cosine] = OfAngle(angle);
    const gp_XYZ n = axis.Direction().XYZ();
    const double rest = 1 - cosine;
    const gp_Mat matrix(cosine + n.X() * n.X() * rest, n.X() * n.Y() * rest - n.Z() * sine,
                        n.X() * n.Z() * rest + n.Y() * sine, n.Y() * n.X() * rest + n.Z() * sine,
                        cosine + n.Y() * n.Y() * rest, n.Y() * n.Z() * rest - n.X() * sine,
                        n.Z() * n.X() * rest - n.Y() * sine, n.Z() * n.Y() * rest + n.X() * sine,
                        cosine + n.Z() * n.Z() * rest);
    gp_Mat clean = matrix;
    for (int row = 1; row <= 3; ++row)
        for (int column = 1; column <= 3; ++column) clean(row, column) = CleanEntry(matrix(row, column));
    const gp_XYZ center = axis.Location().XYZ();
    return FromEntries(clean, center - center.Multiplied(clean));
}

TopoDS_Shape Placed(const TopoDS_Shape& shape) {
    if (shape.IsNull() || !HasLocations(shape)) return shape;
    return Guarded("placing an object", [&] { return RebuiltUnder(shape, gp_Trsf()); });
}

TopoDS_Shape Transformed(const TopoDS_Shape& shape, const gp_Trsf& transformation) {
    if (shape.IsNull()) return shape;
    return Guarded("transforming an object", [&] {
        if (Rigid(transformation)) return RebuiltUnder(shape, transformation);
        BRepBuilderAPI_Transform general(Placed(shape), transformation, Standard_True);
        if (!general.IsDone()) throw InvalidCall("transforming an object: the modeller can't");
        return Outward(Placed(general.Shape()));
    });
}

TopoDS_Shape Moved(const TopoDS_Shape& shape, const gp_Vec& vector) {
    gp_Trsf move;
    move.SetTranslation(vector);
    return Transformed(shape, move);
}

TopoDS_Shape Rotated(const TopoDS_Shape& shape, const gp_Ax1& axis, double angle) {
    return Transformed(shape, Turn(axis, angle));
}

TopoDS_Shape Scaled(const TopoDS_Shape& shape, const gp_Pnt& center, double factor) {
    if (!(factor > 0) || !std::isfinite(factor))
        throw InvalidCall("scaling an object: the factor must be above 0");
    gp_Trsf scale;
    scale.SetScale(center, factor);
    return Transformed(shape, scale);
}

TopoDS_Shape Mirrored(const TopoDS_Shape& shape, const gp_Ax2& plane) {
    gp_Trsf mirror;
    mirror.SetMirror(plane);
    return Transformed(shape, mirror);
}

}  // namespace brenvik::solids
