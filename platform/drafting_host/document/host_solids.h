// Solids, regions and bodies: entities around a shape of the modeller. Values that take long to compute
// (volume, box, extents) are kept until the shape changes. A shape that can be made again isn't always there.
#pragma once

#include <TopoDS_Face.hxx>
#include <optional>
#include <vector>

#include "drafting_host/document/geometry/shape_source.h"
#include "drafting_host/document/host_entity.h"
#include "drafting_host/document/shape_keeper.h"
#include "drafting_host/solids/measure.h"

namespace brenvik {

class HostShapeEntity : public HostEntity {
  public:
    HostShapeEntity(HostBlock& owner, HandleValue handle, ShapeData data)
        : HostEntity(owner, handle), mData(std::move(data)) {}
    ~HostShapeEntity() override { ForgetSource(); }
    HostShapeEntity(const HostShapeEntity&) = delete;
    HostShapeEntity& operator=(const HostShapeEntity&) = delete;
    HostGeometry Geometry() const override { return ShapeData{mData.kind, Shape()}; }
    /// The same one for as long as anybody has it; later it may be another one with the same numbers.
    TopoDS_Shape Shape() const {
        Settle();
        return PresentShape();
    }
    /// A null shape is not allowed: erase the entity instead.
    void SetShape(TopoDS_Shape shape);
    /// From now on the present shape may go, and is made from this when it is asked for.
    void SetSource(ShapeSourcePointer source);

    // For the keeper of shapes.

    std::size_t ShapeSize() const { return mSource->ShapeSize(); }
    /// Lets the shape go, unless somebody holds it.
    bool LetGo() const;

  protected:
    void ApplyTransform(const Similarity& move) override;
    std::optional<Box3> Box() const override;
    void Release() override { SetShape({}); }
    virtual void ForgetMeasures() { mBox.reset(); }
    /// Takes what lists ask every body for, so that they don't need its shape.
    virtual void TakeMeasures() const { Box(); }
    /// Does what was put off until somebody looks at the shape.
    virtual void Settle() const {}
    /// The shape as it is without anything put off, and its replacement once that is done.
    const TopoDS_Shape& PresentShape() const;
    void ReplaceShape(TopoDS_Shape shape) const;
    /// For a shape that stays, or is replaced.
    void ForgetSource() const;

  private:
    mutable ShapeData mData;
    mutable std::optional<Box3> mBox;
    mutable ShapeSourcePointer mSource;  ///< Null for a shape that can't be made again.
    ShapeKeeper* mKeeper = nullptr;
    mutable std::optional<ShapeKeeper::Place> mPlace;  ///< While there is a shape and its source.
};

class HostSolid final : public HostShapeEntity, public Acad3DSolid {
  public:
    using HostShapeEntity::HostShapeEntity;
    std::string_view ObjectName() const override { return "AcDb3dSolid"; }
    AcadEntity* Copy() override;
    double Volume() const override;
    Point3 Centroid() const override;
    /// A result with nothing left erases this solid too.
    void Boolean(BooleanKind kind, Acad3DSolid& other) override;
    AcadRegion* SectionSolid(const Point3& first, const Point3& second, const Point3& third) override;
    /// The extents of the solid measuring component.
    const solids::Extents& Measures() const;
    /// How many bodies that don't touch it holds.
    std::size_t Lumps() const;
    /// Declares that the solid consists of the upright columns over (or, with a negative height, under) level
    /// faces that don't overlap. Taking it away from another one is cheap then.
    void SetColumns(std::vector<TopoDS_Face> bases, double height);

  protected:
    void ForgetMeasures() override;
    void TakeMeasures() const override;
    void Settle() const override;

  private:
    struct Columns {
        std::vector<TopoDS_Face> bases;
        double height = 0;
    };
    std::optional<double> ShareOf(const Columns& columns) const;
    bool TakeColumnsAway(HostSolid& tool);

    mutable std::optional<double> mVolume;
    std::optional<Columns> mColumns;
    /// Columns that were taken away, as far as the volume is concerned: the cut itself waits until the shape
    /// is asked for. Trial cuts are thrown away before that, and a cut is the dearest thing that a host does.
    mutable TopoDS_Shape mCutOff;
    mutable std::optional<solids::Extents> mExtents;
    mutable std::optional<std::size_t> mLumps;
};

class HostRegion final : public HostShapeEntity, public AcadRegion {
  public:
    using HostShapeEntity::HostShapeEntity;
    std::string_view ObjectName() const override { return "AcDbRegion"; }
    double Area() const override;
    Point3 Normal() const override;
    void Boolean(BooleanKind kind, AcadRegion& other) override;
    /// A region of several faces gives one region per face, one face its boundary curves.
    std::vector<AcadEntity*> Explode() override;

  protected:
    void ForgetMeasures() override;

  private:
    mutable std::optional<double> mArea;
};

class HostBody final : public HostShapeEntity {
  public:
    using HostShapeEntity::HostShapeEntity;
    std::string_view ObjectName() const override { return "AcDbBody"; }
};

}  // namespace brenvik
