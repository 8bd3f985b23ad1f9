// If no wall of the solid stands in the column, the solid's part in it is a stack of slabs, and one ray
// through it gives their heights.
#include "drafting_host/solids/column.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepBndLib.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>
#include <vector>

#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/operations.h"
#include "drafting_host/solids/plan_curve.h"

namespace brenvik::solids {
namespace {

// As thick as the film that touching bodies may have in common.
constexpr double Film = 1e-7;
constexpr double Parallel = 1e-9;

struct PlanBox {
    PlanPoint low{1e100, 1e100}, high{-1e100, -1e100};

    void Take(const PlanCurve& curve) {
        low = {std::min(low.x, curve.low.x), std::min(low.y, curve.low.y)};
        high = {std::max(high.x, curve.high.x), std::max(high.y, curve.high.y)};
    }
    bool Meets(const PlanPoint& otherLow, const PlanPoint& otherHigh) const {
        return otherLow.x < high.x - Film && otherHigh.x > low.x + Film && otherLow.y < high.y - Film &&
               otherHigh.y > low.y + Film;
    }
};

enum class Lie { Level, Upright, Other };

Lie LieOf(const BRepAdaptor_Surface& surface) {
    if (surface.GetType() == GeomAbs_Plane) {
        const double up = std::abs(surface.Plane().Axis().Direction().Z());
        if (up > 1 - 1e-14) return Lie::Level;
        return up < Parallel ? Lie::Upright : Lie::Other;
    }
    if (surface.GetType() == GeomAbs_Cylinder &&
        std::abs(surface.Cylinder().Axis().Direction().Z()) > 1 - 1e-14)
        return Lie::Upright;
    return Lie::Other;
}

/// The curves of a face's boundary; empty if one of them is neither straight nor round.
std::optional<std::vector<PlanCurve>> BoundaryOf(const TopoDS_Face& face) {
    std::vector<PlanCurve> ring;
    for (TopExp_Explorer edges(face, TopAbs_EDGE); edges.More(); edges.Next()) {
        const TopoDS_Edge& edge = TopoDS::Edge(edges.Current());
        if (edge.Orientation() == TopAbs_INTERNAL || BRep_Tool::Degenerated(edge)) continue;
        const std::optional<PlanCurve> curve = SeenFromAbove(edge);
        if (!curve) return std::nullopt;
        ring.push_back(*curve);
    }
    return ring;
}

/// Heights between the base and the far end of the column, both ways alike: the way of the tool counts up.
class Column {
  public:
    Column(std::vector<PlanCurve> ring, double height) : mRing(std::move(ring)), mUp(height > 0) {
        for (const PlanCurve& curve : mRing) mBox.Take(curve);
        mBase = mUp ? mRing.front().lowZ : -mRing.front().lowZ;
        mEnd = mBase + std::abs(height);
    }

    /// False where an edge of the solid stands in the column, or may do so.
    bool FreeOf(const TopoDS_Edge& edge) const {
        if (BRep_Tool::Degenerated(edge)) return true;
        const std::optional<PlanCurve> curve = SeenFromAbove(edge);
        if (!curve) return FreeOfBox(edge);
        if (Far(curve->lowZ, curve->highZ) <= mBase + Film) return true;
        if (!mBox.Meets(curve->low, curve->high)) return true;
        return !Enters(*curve, mRing, Film);
    }

    bool FreeOfBox(const TopoDS_Shape& shape) const {
        Bnd_Box box;
        BRepBndLib::Add(shape, box, Standard_False);
        if (box.IsVoid()) return true;
        double lowX = 0, lowY = 0, lowZ = 0, highX = 0, highY = 0, highZ = 0;
        box.Get(lowX, lowY, lowZ, highX, highY, highZ);
        return Far(lowZ, highZ) <= mBase + Film || !mBox.Meets({lowX, lowY}, {highX, highY});
    }

    /// The height of a level face that lies over `probe`, if it does; false if that can't be decided.
    bool TakeLevel(const TopoDS_Face& face, double z, const PlanPoint& probe) {
        const double height = mUp ? z : -z;
        if (height <= mBase + Film) return true;
        const std::optional<std::vector<PlanCurve>> ring = BoundaryOf(face);
        if (!ring) return FreeOfBox(face);
        const std::optional<bool> over = Inside(*ring, probe);
        if (!over || height > mEnd) return false;
        if (*over) mHeights.push_back(height);
        return true;
    }

    /// How much of the column's height is material.
    double Material() {
        std::ranges::sort(mHeights, std::greater<>());
        double sum = 0;
        for (std::size_t i = 0; i < mHeights.size(); i += 2)
            sum += mHeights[i] - (i + 1 < mHeights.size() ? mHeights[i + 1] : mBase);
        return sum;
    }

    const std::vector<PlanCurve>& Ring() const { return mRing; }

  private:
    double Far(double lowZ, double highZ) const { return mUp ? highZ : -lowZ; }

    std::vector<PlanCurve> mRing;
    PlanBox mBox;
    bool mUp;
    double mBase = 0, mEnd = 0;
    std::vector<double> mHeights;
};

bool TakeFaces(const TopoDS_Shape& solid, Column& column, const PlanPoint& probe) {
    for (TopExp_Explorer faces(solid, TopAbs_FACE); faces.More(); faces.Next()) {
        const TopoDS_Face& face = TopoDS::Face(faces.Current());
        const BRepAdaptor_Surface surface(face, Standard_False);
        switch (LieOf(surface)) {
            case Lie::Level:
                if (!column.TakeLevel(face, surface.Plane().Location().Z(), probe)) return false;
                break;
            case Lie::Upright:
                break;
            case Lie::Other:
                if (!column.FreeOfBox(face)) return false;
                break;
        }
    }
    return true;
}

std::optional<double> Measure(const TopoDS_Shape& solid, const TopoDS_Face& base, double height) {
    if (LieOf(BRepAdaptor_Surface(base, Standard_False)) != Lie::Level) return std::nullopt;
    std::optional<std::vector<PlanCurve>> ring = BoundaryOf(base);
    if (!ring || ring->empty()) return std::nullopt;
    Column column(std::move(*ring), height);
    const std::optional<PlanPoint> probe = PointInside(column.Ring());
    if (!probe) return std::nullopt;
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(solid, TopAbs_EDGE, edges);
    for (int i = 1; i <= edges.Extent(); ++i)
        if (!column.FreeOf(TopoDS::Edge(edges(i)))) return std::nullopt;
    if (!TakeFaces(solid, column, *probe)) return std::nullopt;
    return column.Material() * Area(base);
}

}  // namespace

std::optional<double> VolumeInColumn(const TopoDS_Shape& solid, const TopoDS_Face& base, double height) {
    if (solid.IsNull() || base.IsNull()) return std::nullopt;
    return Guarded("column", [&] { return Measure(solid, base, height); });
}

}  // namespace brenvik::solids
