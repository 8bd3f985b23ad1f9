// Solids and regions: measures kept until the shape changes, booleans, sections and explosions.
#include "drafting_host/document/host_solids.h"

#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Vertex.hxx>
#include <utility>

#include "base/skip.h"
#include "drafting_host/document/geometry/boundary_curves.h"
#include "drafting_host/document/geometry/curve_edges.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/modeller_points.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/document/host_application.h"
#include "drafting_host/document/kept_groups.h"
#include "drafting_host/solids/column.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/operations.h"
#include "drafting_host/solids/regions.h"

namespace brenvik {

using namespace vectors;

namespace {

solids::BooleanKind KindOf(BooleanKind kind) {
    switch (kind) {
        case BooleanKind::Union:
            return solids::BooleanKind::Union;
        case BooleanKind::Intersection:
            return solids::BooleanKind::Intersect;
        case BooleanKind::Subtraction:
            return solids::BooleanKind::Subtract;
    }
    throw host_failure::InvalidArgument("a boolean is a union, an intersection or a subtraction");
}

/// Faces of a region, in order.
std::vector<TopoDS_Face> FacesOf(const TopoDS_Shape& shape) {
    std::vector<TopoDS_Face> faces;
    for (TopExp_Explorer each(shape, TopAbs_FACE); each.More(); each.Next())
        faces.push_back(TopoDS::Face(each.Current()));
    return faces;
}

Point3 NormalOf(const TopoDS_Face& face) {
    const gp_Dir normal = solids::NormalOf(face);
    return Squared({normal.X() + 0.0, normal.Y() + 0.0, normal.Z() + 0.0});
}

/// A point of a region's plane: one of its corners, or of its only round edge.
Point3 PlaceIn(const TopoDS_Shape& region) {
    const TopExp_Explorer corner(region, TopAbs_VERTEX);
    if (!corner.More()) throw host_failure::NotPossible("a region without a boundary has no plane");
    const gp_Pnt place = BRep_Tool::Pnt(TopoDS::Vertex(corner.Current()));
    return FromModeller(place);
}

/// The two entities may not be one, and both have to be free.
void RequirePair(const HostEntity& one, const HostEntity& other) {
    one.RequireChangeable();
    other.RequireChangeable();
    if (&one == &other) throw host_failure::InvalidArgument("a boolean needs two different objects");
    if (&one.Document() != &other.Document())
        throw host_failure::InvalidArgument("the two objects of a boolean have to be of one drawing");
}

/// The outcome of a boolean: an object with nothing left is erased; one whose shape is untouched keeps its
/// records.
void TakeResult(HostShapeEntity& entity, HostShapeEntity& used, TopoDS_Shape result) {
    used.EraseAnyway();
    if (result.IsNull())
        entity.EraseAnyway();
    else if (!result.IsEqual(entity.Shape()))
        entity.SetShape(std::move(result));
}

}  // namespace

void HostShapeEntity::SetShape(TopoDS_Shape shape) {
    ForgetSource();
    mData.shape = std::move(shape);
    SetKeptGroups(AfterReshaping(KeptGroupsOfFile()));
    ForgetMeasures();
}

void HostShapeEntity::ReplaceShape(TopoDS_Shape shape) const {
    ForgetSource();
    mData.shape = std::move(shape);
}

void HostShapeEntity::SetSource(ShapeSourcePointer source) {
    ForgetSource();
    mKeeper = &Document().Host().Shapes();
    mSource = std::move(source);
    mPlace = mKeeper->Add(*this);
}

void HostShapeEntity::ForgetSource() const {
    if (mPlace) mKeeper->Remove(*mPlace);
    mPlace.reset();
    mSource.reset();
}

const TopoDS_Shape& HostShapeEntity::PresentShape() const {
    if (mSource && mPlace) {
        mKeeper->Touch(*mPlace);
    } else if (mSource) {
        mData.shape = mSource->Make();
        mPlace = mKeeper->Add(*this);
    }
    return mData.shape;
}

bool HostShapeEntity::LetGo() const {
    if (IsHeldElsewhere(mData.shape)) return false;
    // What can't be measured fails again when it is asked for.
    Skip([this] { TakeMeasures(); });
    mKeeper->Remove(*mPlace);
    mPlace.reset();
    mData.shape.Nullify();
    mSource->Rest();
    return true;
}

void HostShapeEntity::ApplyTransform(const Similarity& move) {
    Settle();
    PresentShape();
    brenvik::Transform(mData, move);
    ForgetMeasures();
    ShapeSourcePointer moved = mSource ? MovedSource(mSource, move) : nullptr;
    if (moved)
        mSource = std::move(moved);
    else
        ForgetSource();
}

std::optional<Box3> HostShapeEntity::Box() const {
    Settle();
    if (!mBox) mBox = BoxOf(ShapeData{mData.kind, PresentShape()});
    return mBox;
}

void HostSolid::ForgetMeasures() {
    HostShapeEntity::ForgetMeasures();
    mVolume.reset();
    mExtents.reset();
    mLumps.reset();
    mColumns.reset();
    mCutOff.Nullify();
}

AcadEntity* HostSolid::Copy() {
    auto& copy = dynamic_cast<HostSolid&>(CopyInto(Owner()));
    copy.mVolume = mVolume;
    copy.mExtents = mExtents;
    return &copy;
}

void HostSolid::TakeMeasures() const {
    HostShapeEntity::TakeMeasures();
    Measures();
    Lumps();
}

void HostSolid::SetColumns(std::vector<TopoDS_Face> bases, double height) {
    mColumns = Columns{std::move(bases), height};
}

void HostSolid::Settle() const {
    if (mCutOff.IsNull()) return;
    ReplaceShape(solids::Boolean(PresentShape(), mCutOff, solids::BooleanKind::Subtract));
    mCutOff.Nullify();
}

std::optional<double> HostSolid::ShareOf(const Columns& columns) const {
    double sum = 0;
    for (const TopoDS_Face& base : columns.bases) {
        const std::optional<double> share = solids::VolumeInColumn(Shape(), base, columns.height);
        if (!share) return std::nullopt;
        sum += *share;
    }
    return sum;
}

/// If the columns' share of this solid can be computed from its faces and edges, that settles the volume.
/// False if it can't, and if nothing would be left of the solid.
bool HostSolid::TakeColumnsAway(HostSolid& tool) {
    if (!tool.mColumns) return false;
    const std::optional<double> share = ShareOf(*tool.mColumns);
    if (!share) return false;
    const double left = Volume() - *share;
    if (left < 1e-6 * Volume()) return false;
    const TopoDS_Shape cutOff = tool.Shape();
    tool.EraseAnyway();
    if (*share == 0) return true;
    PresentShape();
    ForgetSource();
    ForgetMeasures();
    mVolume = left;
    mCutOff = cutOff;
    return true;
}

double HostSolid::Volume() const {
    RequireAlive();
    if (!mVolume) mVolume = solids::Volume(Shape());
    return *mVolume;
}

Point3 HostSolid::Centroid() const {
    RequireAlive();
    const gp_Pnt center = solids::Centroid(Shape());
    return FromModeller(center);
}

const solids::Extents& HostSolid::Measures() const {
    RequireAlive();
    if (!mExtents) mExtents = solids::MeasureShape(Shape());
    return *mExtents;
}

std::size_t HostSolid::Lumps() const {
    RequireAlive();
    if (!mLumps) mLumps = solids::LumpsOf(Shape());
    return *mLumps;
}

void HostSolid::Boolean(BooleanKind kind, Acad3DSolid& other) {
    auto& tool = dynamic_cast<HostSolid&>(other);
    RequirePair(*this, tool);
    if (kind == BooleanKind::Subtraction && TakeColumnsAway(tool)) return;
    TakeResult(*this, tool, solids::Boolean(Shape(), tool.Shape(), KindOf(kind)));
}

AcadRegion* HostSolid::SectionSolid(const Point3& first, const Point3& second, const Point3& third) {
    RequireAlive();
    const std::vector<TopoDS_Face> faces =
        solids::SectionByPlane(Shape(), ToModeller(first), ToModeller(second), ToModeller(third));
    if (faces.empty()) throw host_failure::NotPossible("the plane of the section misses the solid");
    if (faces.size() == 1) return &Owner().AddRegionShape(faces.front());
    const BRep_Builder builder;
    TopoDS_Compound all;
    builder.MakeCompound(all);
    for (const TopoDS_Face& face : faces) builder.Add(all, face);
    return &Owner().AddRegionShape(all);
}

void HostRegion::ForgetMeasures() {
    HostShapeEntity::ForgetMeasures();
    mArea.reset();
}

double HostRegion::Area() const {
    RequireAlive();
    if (!mArea) mArea = solids::Area(Shape());
    return *mArea;
}

Point3 HostRegion::Normal() const {
    RequireAlive();
    const std::vector<TopoDS_Face> faces = FacesOf(Shape());
    if (faces.empty()) throw host_failure::NotPossible("a region without a face has no normal");
    return NormalOf(faces.front());
}

void HostRegion::Boolean(BooleanKind kind, AcadRegion& other) {
    auto& tool = dynamic_cast<HostRegion&>(other);
    RequirePair(*this, tool);
    const Point3 mine = Normal(), theirs = tool.Normal();
    const double apart = Dot(PlaceIn(tool.Shape()) - PlaceIn(Shape()), mine);
    if (vectors::Length(Cross(mine, theirs)) > 1e-6 || std::abs(apart) > PointTolerance)
        throw host_failure::NotPossible("the two regions don't lie in one plane");
    TakeResult(*this, tool, solids::Boolean(Shape(), tool.Shape(), KindOf(kind)));
}

std::vector<AcadEntity*> HostRegion::Explode() {
    RequireAlive();
    std::vector<AcadEntity*> result;
    const auto take = [&](HostEntity& made) {
        made.SetLook(Look());
        result.push_back(&made);
    };
    const std::vector<TopoDS_Face> faces = FacesOf(Shape());
    if (faces.size() > 1) {
        for (const TopoDS_Face& face : faces) take(Owner().AddRegionShape(face));
        return result;
    }
    for (HostGeometry& curve : BoundaryCurves(Shape())) take(Owner().Add(std::move(curve)));
    return result;
}

}  // namespace brenvik
