// The curves of the drafting host: lines, arcs, circles and polylines with operations of their own.
#pragma once

#include "drafting_host/document/host_entity.h"

namespace brenvik {

class HostLine final : public HostDataEntity<LineData>, public AcadLine {
  public:
    using HostDataEntity::HostDataEntity;
    std::string_view ObjectName() const override { return "AcDbLine"; }
    Point3 StartPoint() const override;
    Point3 EndPoint() const override;
    Point3 Delta() const override;
    double Angle() const override;
    double Length() const override;
    Point3 Normal() const override;
    void SetNormal(const Point3& normal) override;
};

class HostArc final : public HostDataEntity<ArcData>, public AcadArc {
  public:
    using HostDataEntity::HostDataEntity;
    std::string_view ObjectName() const override { return "AcDbArc"; }
    Point3 Center() const override;
    double Radius() const override;
    double StartAngle() const override;
    double EndAngle() const override;
    Point3 StartPoint() const override;
    Point3 EndPoint() const override;
    Point3 Normal() const override;
};

class HostCircle final : public HostDataEntity<CircleData>, public AcadCircle {
  public:
    using HostDataEntity::HostDataEntity;
    std::string_view ObjectName() const override { return "AcDbCircle"; }
    Point3 Center() const override;
    void SetCenter(const Point3& center) override;
    double Radius() const override;
    double Diameter() const override;
    Point3 Normal() const override;
    void SetNormal(const Point3& normal) override;
    double Thickness() const override;
    void SetThickness(double thickness) override;
};

class HostLWPolyline final : public HostDataEntity<LWPolylineData>, public AcadLWPolyline {
  public:
    using HostDataEntity::HostDataEntity;
    std::string_view ObjectName() const override { return "AcDbPolyline"; }
    std::vector<double> Coordinates() const override;
    /// The number of vertices may change; bulges and widths stay with their positions.
    void SetCoordinates(std::span<const double> coordinates) override;
    double Elevation() const override;
    void SetElevation(double elevation) override;
    double Thickness() const override;
    void SetThickness(double thickness) override;
    Point3 Normal() const override;
    bool Closed() const override;
    void SetClosed(bool closed) override;
    double GetBulge(int vertex) const override;
    void SetBulge(int vertex, double bulge) override;
    double Area() const override;
    std::vector<AcadEntity*> Explode() override;

  protected:
    void Release() override { mData.vertices.clear(); }

  private:
    LWPolylineData::Vertex& VertexAt(int vertex);
};

/// Vertices of a lightweight polyline from X and Y one after another. Fails for an odd number, fewer
/// than two vertices, or a value that is not finite.
std::vector<LWPolylineData::Vertex> VerticesOf(std::span<const double> coordinates);

}  // namespace brenvik
