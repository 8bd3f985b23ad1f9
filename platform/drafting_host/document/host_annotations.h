// The entities of the drafting host that the system only carries along, hides and shows: free curves,
// meshes, points, texts, filled corners; and block references and viewports with what little is asked
// of them.
#pragma once

#include "drafting_host/document/host_entity.h"

namespace brenvik {

class HostEllipse final : public HostDataEntity<EllipseData> {
  public:
    using HostDataEntity::HostDataEntity;
    std::string_view ObjectName() const override { return "AcDbEllipse"; }
};

class HostSpline final : public HostDataEntity<SplineData> {
  public:
    using HostDataEntity::HostDataEntity;
    std::string_view ObjectName() const override { return "AcDbSpline"; }
};

/// Old-style polylines and meshes.
class HostPolyline final : public HostDataEntity<PolylineData>, public Acad3DPolyline {
  public:
    using HostDataEntity::HostDataEntity;
    std::string_view ObjectName() const override;
    std::vector<double> Coordinates() const override;
    bool Closed() const override;
    void SetClosed(bool closed) override;
    double Thickness() const override;
    void SetThickness(double thickness) override;

  protected:
    void Release() override { mData.vertices.clear(); }
};

class HostPoint final : public HostDataEntity<PointData> {
  public:
    using HostDataEntity::HostDataEntity;
    std::string_view ObjectName() const override { return "AcDbPoint"; }
};

class HostText final : public HostDataEntity<TextData> {
  public:
    using HostDataEntity::HostDataEntity;
    std::string_view ObjectName() const override { return "AcDbText"; }
};

class HostMText final : public HostDataEntity<MTextData> {
  public:
    using HostDataEntity::HostDataEntity;
    std::string_view ObjectName() const override { return "AcDbMText"; }
};

class HostQuad final : public HostDataEntity<QuadData> {
  public:
    using HostDataEntity::HostDataEntity;
    std::string_view ObjectName() const override;
};

class HostViewport final : public HostDataEntity<ViewportData>, public AcadPViewport {
  public:
    using HostDataEntity::HostDataEntity;
    std::string_view ObjectName() const override { return "AcDbViewport"; }
    Point3 Center() const override;
    double Width() const override;
    double Height() const override;
    void Display(bool on) override;
    bool On() const { return mData.status != 0; }
    /// Everything but the place on the sheet counts as the view. Fails on a locked layer.
    void SetValues(ViewportData values);
    /// The sheet's own viewport, which doesn't show the model.
    bool IsSheet() const;
};

class HostBlockReference final : public HostEntity, public AcadBlockReference {
  public:
    HostBlockReference(HostBlock& owner, HandleValue handle, InsertData data)
        : HostEntity(owner, handle), mData(std::move(data)) {}
    std::string_view ObjectName() const override { return "AcDbBlockReference"; }
    std::string Name() const override;
    Point3 InsertionPoint() const override;
    /// New entities in the same space, one level deep; the reference itself stays. Entities of the block
    /// on layer "0" keep it. Fails for a block of uneven scale that holds what can't be stretched.
    std::vector<AcadEntity*> Explode() override;
    HostGeometry Geometry() const override { return mData; }
    const InsertData& Values() const { return mData; }

  protected:
    void ApplyTransform(const Similarity& move) override { brenvik::Transform(mData, move); }
    std::optional<Box3> Box() const override;

  private:
    InsertData mData;
};

}  // namespace brenvik
