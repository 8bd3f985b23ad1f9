// Lines, arcs, circles and lightweight polylines: reading their values, and the few changes that the
// object model allows.
#include "drafting_host/document/host_curves.h"

#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/document/host_block.h"

namespace brenvik {

using namespace vectors;

namespace {

void RequireFinite(double value, const char* what) {
    if (!std::isfinite(value))
        throw host_failure::InvalidArgument(std::string(what) + " is no finite number");
}

Point3 UnitNormal(const Point3& normal) {
    const double length = vectors::Length(normal);
    if (!Finite(normal) || length == 0) throw host_failure::InvalidArgument("the normal has no direction");
    return normal * (1 / length);
}

}  // namespace

Point3 HostLine::StartPoint() const {
    RequireAlive();
    return mData.start;
}

Point3 HostLine::EndPoint() const {
    RequireAlive();
    return mData.end;
}

Point3 HostLine::Delta() const {
    RequireAlive();
    return mData.end - mData.start;
}

double HostLine::Angle() const {
    const Point3 delta = Delta();
    return NormalAngle(std::atan2(delta.y, delta.x));
}

double HostLine::Length() const { return vectors::Length(Delta()); }

Point3 HostLine::Normal() const {
    RequireAlive();
    return mData.normal;
}

void HostLine::SetNormal(const Point3& normal) {
    RequireChangeable();
    mData.normal = UnitNormal(normal);
}

Point3 HostArc::Center() const {
    RequireAlive();
    return mData.center;
}

double HostArc::Radius() const {
    RequireAlive();
    return mData.radius;
}

double HostArc::StartAngle() const {
    RequireAlive();
    return mData.startAngle;
}

double HostArc::EndAngle() const {
    RequireAlive();
    return mData.endAngle;
}

Point3 HostArc::StartPoint() const {
    RequireAlive();
    return OnCircle(mData.center, mData.radius, ObjectAxes(mData.normal), mData.startAngle);
}

Point3 HostArc::EndPoint() const {
    RequireAlive();
    return OnCircle(mData.center, mData.radius, ObjectAxes(mData.normal), mData.endAngle);
}

Point3 HostArc::Normal() const {
    RequireAlive();
    return mData.normal;
}

Point3 HostCircle::Center() const {
    RequireAlive();
    return mData.center;
}

void HostCircle::SetCenter(const Point3& center) {
    RequireChangeable();
    if (!Finite(center)) throw host_failure::InvalidArgument("the centre is no finite point");
    mData.center = center;
}

double HostCircle::Radius() const {
    RequireAlive();
    return mData.radius;
}

double HostCircle::Diameter() const { return 2 * Radius(); }

Point3 HostCircle::Normal() const {
    RequireAlive();
    return mData.normal;
}

void HostCircle::SetNormal(const Point3& normal) {
    RequireChangeable();
    mData.normal = UnitNormal(normal);
}

double HostCircle::Thickness() const {
    RequireAlive();
    return mData.thickness;
}

void HostCircle::SetThickness(double thickness) {
    RequireChangeable();
    RequireFinite(thickness, "the thickness");
    mData.thickness = thickness;
}

std::vector<double> HostLWPolyline::Coordinates() const {
    RequireAlive();
    std::vector<double> result;
    result.reserve(2 * mData.vertices.size());
    for (const LWPolylineData::Vertex& vertex : mData.vertices) {
        result.push_back(vertex.x);
        result.push_back(vertex.y);
    }
    return result;
}

void HostLWPolyline::SetCoordinates(std::span<const double> coordinates) {
    RequireChangeable();
    std::vector<LWPolylineData::Vertex> vertices = VerticesOf(coordinates);
    for (std::size_t i = 0; i < std::min(vertices.size(), mData.vertices.size()); ++i) {
        const double x = vertices[i].x, y = vertices[i].y;
        vertices[i] = mData.vertices[i];
        vertices[i].x = x;
        vertices[i].y = y;
    }
    mData.vertices = std::move(vertices);
}

double HostLWPolyline::Elevation() const {
    RequireAlive();
    return mData.elevation;
}

void HostLWPolyline::SetElevation(double elevation) {
    RequireChangeable();
    RequireFinite(elevation, "the elevation");
    mData.elevation = elevation;
}

double HostLWPolyline::Thickness() const {
    RequireAlive();
    return mData.thickness;
}

void HostLWPolyline::SetThickness(double thickness) {
    RequireChangeable();
    RequireFinite(thickness, "the thickness");
    mData.thickness = thickness;
}

Point3 HostLWPolyline::Normal() const {
    RequireAlive();
    return mData.normal;
}

bool HostLWPolyline::Closed() const {
    RequireAlive();
    return mData.closed;
}

void HostLWPolyline::SetClosed(bool closed) {
    RequireChangeable();
    mData.closed = closed;
}

LWPolylineData::Vertex& HostLWPolyline::VertexAt(int vertex) {
    if (vertex < 0 || static_cast<std::size_t>(vertex) >= mData.vertices.size()) {
        throw host_failure::InvalidArgument("vertex " + std::to_string(vertex) + " of a polyline with " +
                                            std::to_string(mData.vertices.size()));
    }
    return mData.vertices[static_cast<std::size_t>(vertex)];
}

double HostLWPolyline::GetBulge(int vertex) const {
    RequireAlive();
    return const_cast<HostLWPolyline*>(this)->VertexAt(vertex).bulge;
}

void HostLWPolyline::SetBulge(int vertex, double bulge) {
    RequireChangeable();
    RequireFinite(bulge, "the bulge");
    VertexAt(vertex).bulge = bulge;
}

double HostLWPolyline::Area() const {
    RequireAlive();
    return AreaOf(mData);
}

std::vector<AcadEntity*> HostLWPolyline::Explode() {
    RequireAlive();
    std::vector<AcadEntity*> result;
    for (const PolylinePiece& piece : PiecesOf(mData)) {
        HostEntity& made =
            Owner().Add(std::visit([](const auto& curve) { return HostGeometry(curve); }, piece));
        made.SetLook(Look());
        result.push_back(&made);
    }
    return result;
}

std::vector<LWPolylineData::Vertex> VerticesOf(std::span<const double> coordinates) {
    if (coordinates.size() < 4 || coordinates.size() % 2 != 0)
        throw host_failure::InvalidArgument("a polyline takes X and Y of two vertices or more");
    std::vector<LWPolylineData::Vertex> vertices;
    for (std::size_t i = 0; i < coordinates.size(); i += 2) {
        RequireFinite(coordinates[i], "a coordinate");
        RequireFinite(coordinates[i + 1], "a coordinate");
        vertices.push_back({coordinates[i], coordinates[i + 1], 0, 0, 0});
    }
    return vertices;
}

}  // namespace brenvik
