// Takes entities apart, kind by kind.
#include "drafting_host/document/explosion.h"

#include <BRepAdaptor_Surface.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>

#include "base/handle_text.h"
#include "drafting_host/document/geometry/boundary_curves.h"
#include "drafting_host/document/host_document.h"
#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/merging.h"
#include "drafting_host/solids/transform.h"

namespace brenvik {
namespace {

std::vector<HostGeometry> PiecesOfSolid(const TopoDS_Shape& solid) {
    return solids::Guarded("exploding a solid", [&] {
        std::vector<HostGeometry> pieces;
        // Drawings from elsewhere part a bore into two half cylinders; a hole has one wall.
        const TopoDS_Shape whole = solids::Placed(solids::BordersMerged(solid));
        for (TopExp_Explorer faces(whole, TopAbs_FACE); faces.More(); faces.Next()) {
            const TopoDS_Face& face = TopoDS::Face(faces.Current());
            const bool flat = BRepAdaptor_Surface(face, Standard_False).GetType() == GeomAbs_Plane;
            pieces.push_back(ShapeData{flat ? AcisData::Kind::Region : AcisData::Kind::Body, face});
        }
        return pieces;
    });
}

std::vector<HostGeometry> PiecesOfShape(const ShapeData& data) {
    switch (data.kind) {
        case AcisData::Kind::Solid:
            return PiecesOfSolid(data.shape);
        case AcisData::Kind::Region:
            return BoundaryCurves(data.shape);
        case AcisData::Kind::Body:
            return BodyCurves(data.shape);
    }
    return {};
}

std::vector<HostEntity*> OwnPieces(HostEntity& entity) {
    std::vector<HostEntity*> made;
    const auto take = [&](const std::vector<AcadEntity*>& pieces) {
        for (AcadEntity* piece : pieces) made.push_back(&HostEntityOf(piece));
        return made;
    };
    if (auto* region = dynamic_cast<HostRegion*>(&entity)) return take(region->Explode());
    if (auto* polyline = dynamic_cast<HostLWPolyline*>(&entity)) return take(polyline->Explode());
    if (auto* reference = dynamic_cast<HostBlockReference*>(&entity)) return take(reference->Explode());
    std::vector<HostGeometry> pieces;
    if (const auto* shape = dynamic_cast<HostShapeEntity*>(&entity)) {
        pieces = PiecesOfShape(std::get<ShapeData>(shape->Geometry()));
    } else if (const auto* old = dynamic_cast<HostPolyline*>(&entity)) {
        for (const PolylinePiece& piece : PiecesOf(old->Values()))
            pieces.push_back(std::visit([](const auto& curve) { return HostGeometry(curve); }, piece));
    }
    for (HostGeometry& piece : pieces) {
        made.push_back(&entity.Owner().Add(std::move(piece)));
        made.back()->SetLook(entity.Look());
    }
    return made;
}

/// What a reference shows and has no value here goes with it: what its block holds of other kinds,
/// attributes.
void TellLeftBehind(const HostEntity& entity) {
    const auto* reference = dynamic_cast<const HostBlockReference*>(&entity);
    if (reference == nullptr) return;
    const HostBlock* const block = entity.Document().FindBlock(reference->Values().block);
    const bool hasOthers =
        block != nullptr && block->Record().kept && !block->Record().kept->entities.empty();
    const bool hasAttributes = entity.KeptGroupsOfFile() && !entity.KeptGroupsOfFile()->parts.empty();
    if (!hasOthers && !hasAttributes) return;
    entity.Document().Tables().notes.push_back(
        {0,
         "explosion of the reference " + HandleToText(entity.HandleNumber()) + " to block \"" +
             reference->Values().block + "\" left out its " + (hasAttributes ? "attributes" : "") +
             (hasAttributes && hasOthers ? " and the " : "") +
             (hasOthers ? "annotation that the block holds" : ""),
         true});
}

}  // namespace

std::vector<HostEntity*> ExplodeEntity(HostEntity& entity) {
    entity.RequireChangeable();
    std::vector<HostEntity*> pieces = OwnPieces(entity);
    if (pieces.empty()) return pieces;
    TellLeftBehind(entity);
    entity.EraseAnyway();
    return pieces;
}

}  // namespace brenvik
