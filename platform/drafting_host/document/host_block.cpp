// Making entities, and walking them in drawing order.
#include "drafting_host/document/host_block.h"

#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRep_Builder.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Face.hxx>
#include <type_traits>
#include <unordered_set>

#include "base/letter_case.h"
#include "drafting_host/document/geometry/curve_edges.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/document/host_document.h"
#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/operations.h"
#include "drafting_host/solids/regions.h"

namespace brenvik {

using namespace vectors;

namespace {

// The kind of entity for each kind of data.
template <class Data>
struct KindFor;
template <>
struct KindFor<LineData> : std::type_identity<HostLine> {};
template <>
struct KindFor<ArcData> : std::type_identity<HostArc> {};
template <>
struct KindFor<CircleData> : std::type_identity<HostCircle> {};
template <>
struct KindFor<EllipseData> : std::type_identity<HostEllipse> {};
template <>
struct KindFor<SplineData> : std::type_identity<HostSpline> {};
template <>
struct KindFor<LWPolylineData> : std::type_identity<HostLWPolyline> {};
template <>
struct KindFor<PolylineData> : std::type_identity<HostPolyline> {};
template <>
struct KindFor<PointData> : std::type_identity<HostPoint> {};
template <>
struct KindFor<TextData> : std::type_identity<HostText> {};
template <>
struct KindFor<MTextData> : std::type_identity<HostMText> {};
template <>
struct KindFor<InsertData> : std::type_identity<HostBlockReference> {};
template <>
struct KindFor<QuadData> : std::type_identity<HostQuad> {};
template <>
struct KindFor<ViewportData> : std::type_identity<HostViewport> {};

template <class Kind, class Data>
HostEntity& Stored(HostBlock& block, HandleValue handle, Data&& data) {
    auto& store = std::get<std::deque<Kind>>(block.Document().Store());
    return store.emplace_back(block, handle, std::forward<Data>(data));
}

HostEntity& StoredShape(HostBlock& block, HandleValue handle, ShapeData data) {
    if (data.shape.IsNull()) throw host_failure::InvalidArgument("an entity without a shape");
    switch (data.kind) {
        case AcisData::Kind::Solid:
            return Stored<HostSolid>(block, handle, std::move(data));
        case AcisData::Kind::Region:
            return Stored<HostRegion>(block, handle, std::move(data));
        case AcisData::Kind::Body:
            return Stored<HostBody>(block, handle, std::move(data));
    }
    throw host_failure::InvalidArgument("an entity of an unknown kind");
}

HostEntity& StoredAny(HostBlock& block, HandleValue handle, HostGeometry geometry) {
    return std::visit(
        [&](auto& data) -> HostEntity& {
            using Data = std::decay_t<decltype(data)>;
            if constexpr (std::is_same_v<Data, ShapeData>)
                return StoredShape(block, handle, std::move(data));
            else
                return Stored<typename KindFor<Data>::type>(block, handle, std::move(data));
        },
        geometry);
}

void RequirePositive(double value, const char* what) {
    if (!(value > 0) || !std::isfinite(value))
        throw host_failure::InvalidArgument(std::string(what) + " has to be above 0");
}

void RequirePoint(const Point3& point) {
    if (!Finite(point)) throw host_failure::InvalidArgument("a coordinate is no finite number");
}

/// Whether references in `block` lead to `target`, over any number of blocks. `seen` are those looked at.
bool LeadsTo(const HostDocument& document, const HostBlock& block, const HostBlock& target,
             std::unordered_set<const HostBlock*>& seen) {
    if (&block == &target) return true;
    if (!seen.insert(&block).second) return false;
    for (const HostEntity* entity : block.Entities()) {
        const auto* reference = dynamic_cast<const HostBlockReference*>(entity);
        if (reference == nullptr) continue;
        const HostBlock* inner = document.FindBlock(reference->Values().block);
        if (inner != nullptr && LeadsTo(document, *inner, target, seen)) return true;
    }
    return false;
}

}  // namespace

HostBlock::HostBlock(HostDocument& document, BlockData record)
    : mDocument(document), mRecord(std::move(record)) {
    mRecord.entities.clear();
}

void HostBlock::SetRecord(BlockData record) {
    mRecord = std::move(record);
    mRecord.entities.clear();
}

std::string HostBlock::Name() const { return mRecord.name; }
bool HostBlock::IsModelSpace() const { return EqualsIgnoreCase(mRecord.name, "*Model_Space"); }
bool HostBlock::IsPaperSpace() const { return StartsWithIgnoreCase(mRecord.name, "*Paper_Space"); }

std::span<HostEntity* const> HostBlock::Entities() const {
    // Erased entities are swept out in one go at the next look: erasing thousands stays linear.
    if (mErased > 0) {
        std::erase_if(mEntities, [](const HostEntity* entity) { return entity->Erased(); });
        mErased = 0;
    }
    return mEntities;
}

int HostBlock::Count() const {
    mDocument.RequireOpen();
    return static_cast<int>(Entities().size());
}

AcadEntity* HostBlock::Item(int index) {
    mDocument.RequireOpen();
    const std::span<HostEntity* const> entities = Entities();
    if (index < 0 || static_cast<std::size_t>(index) >= entities.size()) {
        throw host_failure::KeyNotFound("entity " + std::to_string(index) + " of " +
                                        std::to_string(entities.size()));
    }
    return entities[static_cast<std::size_t>(index)];
}

void HostBlock::ForEach(const std::function<void(AcadEntity&)>& visit) {
    mDocument.RequireOpen();
    const std::span<HostEntity* const> entities = Entities();
    const std::vector<HostEntity*> standing(entities.begin(), entities.end());
    for (HostEntity* entity : standing)
        if (!entity->Erased()) visit(*entity);
}

HostEntity& HostBlock::Add(HostGeometry geometry, HandleValue handle) {
    mDocument.RequireOpen();
    HostEntity& entity = StoredAny(*this, mDocument.TakeHandle(handle), std::move(geometry));
    EntityLook look;
    look.layer = &mDocument.CurrentLayer();
    entity.SetLook(std::move(look));
    mEntities.push_back(&entity);
    mDocument.Register(entity);
    return entity;
}

HostSolid& HostBlock::AddSolid(TopoDS_Shape shape) {
    return dynamic_cast<HostSolid&>(Add(ShapeData{AcisData::Kind::Solid, std::move(shape)}));
}

HostRegion& HostBlock::AddRegionShape(TopoDS_Shape shape) {
    return dynamic_cast<HostRegion&>(Add(ShapeData{AcisData::Kind::Region, std::move(shape)}));
}

HostBody& HostBlock::AddBody(TopoDS_Shape shape) {
    return dynamic_cast<HostBody&>(Add(ShapeData{AcisData::Kind::Body, std::move(shape)}));
}

AcadLine* HostBlock::AddLine(const Point3& start, const Point3& end) {
    RequirePoint(start);
    RequirePoint(end);
    return dynamic_cast<AcadLine*>(&Add(LineData{start, end, 0, {0, 0, 1}}));
}

AcadCircle* HostBlock::AddCircle(const Point3& center, double radius) {
    RequirePoint(center);
    RequirePositive(radius, "a radius");
    return dynamic_cast<AcadCircle*>(&Add(CircleData{center, radius, 0, {0, 0, 1}}));
}

AcadArc* HostBlock::AddArc(const Point3& center, double radius, double startAngle, double endAngle) {
    RequirePoint(center);
    RequirePositive(radius, "a radius");
    RequirePoint({startAngle, endAngle, 0});
    return dynamic_cast<AcadArc*>(
        &Add(ArcData{center, radius, NormalAngle(startAngle), NormalAngle(endAngle), 0, {0, 0, 1}}));
}

AcadLWPolyline* HostBlock::AddLightWeightPolyline(std::span<const double> coordinates) {
    LWPolylineData data;
    data.vertices = VerticesOf(coordinates);
    return dynamic_cast<AcadLWPolyline*>(&Add(std::move(data)));
}

Acad3DPolyline* HostBlock::Add3DPoly(std::span<const double> coordinates) {
    if (coordinates.size() < 6 || coordinates.size() % 3 != 0)
        throw host_failure::InvalidArgument("a polyline in space needs two or more vertices of three values");
    PolylineData data;
    data.flags = SpacePolylineFlag;
    for (std::size_t i = 0; i < coordinates.size(); i += 3) {
        PolylineData::Vertex vertex;
        vertex.point = {coordinates[i], coordinates[i + 1], coordinates[i + 2]};
        RequirePoint(vertex.point);
        vertex.flags = SpaceVertexFlag;
        data.vertices.push_back(vertex);
    }
    return dynamic_cast<Acad3DPolyline*>(&Add(std::move(data)));
}

std::vector<AcadRegion*> HostBlock::AddRegion(std::span<AcadEntity* const> curves) {
    std::vector<TopoDS_Edge> edges;
    for (AcadEntity* curve : curves) {
        HostEntity& entity = HostEntityOf(curve);
        entity.RequireAlive();
        const std::vector<TopoDS_Edge> own = EdgesOf(entity.Geometry());
        if (own.empty())
            throw host_failure::NotPossible("no region can be made of " + std::string(entity.ObjectName()));
        edges.insert(edges.end(), own.begin(), own.end());
    }
    if (edges.empty()) throw host_failure::NotPossible("a region needs curves");
    std::vector<AcadRegion*> result;
    for (const TopoDS_Face& face : solids::RegionsFromCurves(edges)) result.push_back(&AddRegionShape(face));
    if (result.empty()) throw host_failure::NotPossible("the curves make no closed loop");
    return result;
}

Acad3DSolid* HostBlock::AddExtrudedSolid(AcadRegion& region, double height, double taper) {
    const auto& source = dynamic_cast<const HostRegion&>(region);
    source.RequireAlive();
    if (taper != 0) throw host_failure::NotPossible("an extrusion with a taper angle other than 0");
    if (height == 0 || !std::isfinite(height))
        throw host_failure::InvalidArgument("the height of an extrusion has to be other than 0");
    std::vector<TopoDS_Shape> lumps;
    std::vector<TopoDS_Face> bases;
    for (TopExp_Explorer faces(source.Shape(), TopAbs_FACE); faces.More(); faces.Next()) {
        bases.push_back(TopoDS::Face(faces.Current()));
        lumps.push_back(solids::ExtrudeRegion(bases.back(), height));
    }
    if (lumps.empty()) throw host_failure::NotPossible("an extrusion of a region without a face");
    TopoDS_Shape shape = lumps.front();
    if (lumps.size() > 1) {
        const BRep_Builder builder;
        TopoDS_Compound all;
        builder.MakeCompound(all);
        for (const TopoDS_Shape& lump : lumps) builder.Add(all, lump);
        shape = all;
    }
    const double up = solids::NormalOf(bases.front()).Z();
    HostSolid& solid = AddSolid(shape);
    // The faces of a region look to one side.
    if (up != 0) solid.SetColumns(std::move(bases), up > 0 ? height : -height);
    return &solid;
}

Acad3DSolid* HostBlock::AddBox(const Point3& center, double length, double width, double height) {
    RequirePoint(center);
    RequirePositive(length, "a length");
    RequirePositive(width, "a width");
    RequirePositive(height, "a height");
    const Point3 half{length / 2, width / 2, height / 2};
    const Point3 low = center - half, high = center + half;
    return &AddSolid(solids::Guarded("making a box", [&]() -> TopoDS_Shape {
        return BRepPrimAPI_MakeBox(gp_Pnt(low.x, low.y, low.z), gp_Pnt(high.x, high.y, high.z)).Solid();
    }));
}

Acad3DSolid* HostBlock::AddCylinder(const Point3& center, double radius, double height) {
    RequirePoint(center);
    RequirePositive(radius, "a radius");
    RequirePositive(height, "a height");
    const gp_Ax2 axis(gp_Pnt(center.x, center.y, center.z - height / 2), gp_Dir(0, 0, 1), gp_Dir(1, 0, 0));
    return &AddSolid(solids::Guarded("making a cylinder", [&]() -> TopoDS_Shape {
        return BRepPrimAPI_MakeCylinder(axis, radius, height).Solid();
    }));
}

AcadPViewport* HostBlock::AddPViewport(const Point3& center, double width, double height) {
    RequirePoint(center);
    RequirePositive(width, "a width");
    RequirePositive(height, "a height");
    if (!IsPaperSpace()) throw host_failure::NotPossible("a viewport lies in paper space");
    constexpr int shown = 2;
    int id = 2;  // The sheet itself has the number 1.
    for (const HostEntity* entity : Entities()) {
        const auto* viewport = dynamic_cast<const HostViewport*>(entity);
        if (viewport != nullptr) id = std::max(id, viewport->Values().id + 1);
    }
    ViewportData data;
    data.center = center;
    data.width = width;
    data.height = height;
    data.status = shown;
    data.id = id;
    data.viewHeight = height;
    auto& viewport = dynamic_cast<HostViewport&>(Add(std::move(data)));
    mDocument.SetCurrentViewport(viewport);
    return &viewport;
}

HostBlockReference& HostBlock::InsertBlock(const Point3& point, std::string_view name, double scale,
                                           double rotation) {
    RequirePoint(point);
    RequirePositive(scale, "a scale");
    const HostBlock* block = mDocument.FindBlock(name);
    if (block == nullptr) throw host_failure::KeyNotFound("block \"" + std::string(name) + "\"");
    std::unordered_set<const HostBlock*> seen;
    if (block->IsSpace() || LeadsTo(mDocument, *block, *this, seen))
        throw host_failure::NotPossible("block \"" + std::string(name) + "\" would hold itself");
    InsertData data;
    data.block = block->Record().name;
    data.insertion = point;
    data.scale = {scale, scale, scale};
    data.rotation = NormalAngle(rotation);
    return dynamic_cast<HostBlockReference&>(Add(std::move(data)));
}

}  // namespace brenvik
