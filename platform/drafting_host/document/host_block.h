// Model space, paper space and named blocks: entities in drawing order, and the making of entities.
#pragma once

#include <deque>
#include <span>
#include <string>
#include <tuple>
#include <vector>

#include "drafting_host/document/host_annotations.h"
#include "drafting_host/document/host_curves.h"
#include "drafting_host/document/host_solids.h"

namespace brenvik {

/// Where a document's entities live: chunks of one kind each, addresses never change.
using EntityStore =
    std::tuple<std::deque<HostLine>, std::deque<HostArc>, std::deque<HostCircle>, std::deque<HostEllipse>,
               std::deque<HostSpline>, std::deque<HostLWPolyline>, std::deque<HostPolyline>,
               std::deque<HostPoint>, std::deque<HostText>, std::deque<HostMText>,
               std::deque<HostBlockReference>, std::deque<HostQuad>, std::deque<HostViewport>,
               std::deque<HostSolid>, std::deque<HostRegion>, std::deque<HostBody>>;

class HostBlock final : public AcadBlock {
  public:
    /// `record` carries name, base point, flags and handle; its entities are added one by one.
    HostBlock(HostDocument& document, BlockData record);

    std::string Name() const override;
    int Count() const override;
    AcadEntity* Item(int index) override;
    void ForEach(const std::function<void(AcadEntity&)>& visit) override;

    AcadLine* AddLine(const Point3& start, const Point3& end) override;
    AcadCircle* AddCircle(const Point3& center, double radius) override;
    AcadArc* AddArc(const Point3& center, double radius, double startAngle, double endAngle) override;
    AcadLWPolyline* AddLightWeightPolyline(std::span<const double> coordinates) override;
    Acad3DPolyline* Add3DPoly(std::span<const double> coordinates) override;
    std::vector<AcadRegion*> AddRegion(std::span<AcadEntity* const> curves) override;
    /// A region of several faces gives one solid. The taper has to be 0.
    Acad3DSolid* AddExtrudedSolid(AcadRegion& region, double height, double taper) override;
    Acad3DSolid* AddBox(const Point3& center, double length, double width, double height) override;
    Acad3DSolid* AddCylinder(const Point3& center, double radius, double height) override;
    /// Fails outside paper space.
    AcadPViewport* AddPViewport(const Point3& center, double width, double height) override;

    // Beyond the object model, for the host's own commands and for readers.

    /// A new entity on the current layer, last in drawing order. `handle` 0, or one in use, gives it a
    /// new one.
    HostEntity& Add(HostGeometry geometry, HandleValue handle = 0);
    HostSolid& AddSolid(TopoDS_Shape shape);
    HostRegion& AddRegionShape(TopoDS_Shape shape);
    HostBody& AddBody(TopoDS_Shape shape);
    /// A reference to a block of this document. Fails for an unknown block or one that holds this block.
    HostBlockReference& InsertBlock(const Point3& point, std::string_view name, double scale = 1,
                                    double rotation = 0);
    /// The living entities in drawing order. Good until the next change of the block.
    std::span<HostEntity* const> Entities() const;
    HostDocument& Document() const { return mDocument; }
    /// Name, base point, flags and handle; no entities.
    const BlockData& Record() const { return mRecord; }
    void SetRecord(BlockData record);
    bool IsModelSpace() const;
    /// Any sheet, the one shown or another.
    bool IsPaperSpace() const;
    bool IsSpace() const { return IsModelSpace() || IsPaperSpace(); }
    /// Called by an entity that is erased.
    void NoteErased() { ++mErased; }

  private:
    HostDocument& mDocument;
    BlockData mRecord;
    mutable std::vector<HostEntity*> mEntities;
    mutable std::size_t mErased = 0;
};

}  // namespace brenvik
