// Transformations, carried out on the geometry itself.
#include "drafting_host/solids/transform.h"

#include <BRepBuilderAPI_Transform.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <cmath>

#include "drafting_host/solids/clean_entry.h"
#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/rebuild.h"

namespace brenvik::solids {
namespace {

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

}  // namespace brenvik::solids
