// Names and boxes of the lesser entities; exploding block references.
#include "drafting_host/document/host_annotations.h"

#include "drafting_host/document/block_content.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/document/host_document.h"

namespace brenvik {

using namespace vectors;

std::string_view HostPolyline::ObjectName() const {
    switch (KindOf(mData)) {
        case PolylineKind::Plane:
            return "AcDb2dPolyline";
        case PolylineKind::Space:
            return "AcDb3dPolyline";
        case PolylineKind::PolygonMesh:
            return "AcDbPolygonMesh";
        case PolylineKind::PolyfaceMesh:
            return "AcDbPolyFaceMesh";
    }
    return {};
}

std::vector<double> HostPolyline::Coordinates() const {
    RequireAlive();
    std::vector<double> result;
    result.reserve(3 * mData.vertices.size());
    for (const PolylineData::Vertex& vertex : mData.vertices)
        result.insert(result.end(), {vertex.point.x, vertex.point.y, vertex.point.z});
    return result;
}

bool HostPolyline::Closed() const {
    RequireAlive();
    return (mData.flags & ClosedPolylineFlag) != 0;
}

void HostPolyline::SetClosed(bool closed) {
    RequireChangeable();
    mData.flags = closed ? mData.flags | ClosedPolylineFlag : mData.flags & ~ClosedPolylineFlag;
}

double HostPolyline::Thickness() const {
    RequireAlive();
    return mData.thickness;
}

void HostPolyline::SetThickness(double thickness) {
    RequireChangeable();
    if (!std::isfinite(thickness)) throw host_failure::InvalidArgument("the thickness is no finite number");
    mData.thickness = thickness;
}

std::string_view HostQuad::ObjectName() const {
    switch (mData.kind) {
        case QuadData::Kind::Solid:
            return "AcDbSolid";
        case QuadData::Kind::Trace:
            return "AcDbTrace";
        case QuadData::Kind::Face:
            return "AcDbFace";
    }
    return {};
}

Point3 HostViewport::Center() const {
    RequireAlive();
    return mData.center;
}

double HostViewport::Width() const {
    RequireAlive();
    return mData.width;
}

double HostViewport::Height() const {
    RequireAlive();
    return mData.height;
}

void HostViewport::Display(bool on) {
    RequireChangeable();
    constexpr int shown = 2;
    mData.status = on ? shown : 0;
}

void HostViewport::SetValues(ViewportData values) {
    RequireChangeable();
    mData = std::move(values);
}

bool HostViewport::IsSheet() const {
    constexpr int sheetItself = 1;
    return mData.id == sheetItself;
}

std::string HostBlockReference::Name() const {
    RequireAlive();
    return mData.block;
}

Point3 HostBlockReference::InsertionPoint() const {
    RequireAlive();
    return ToWorld(ObjectAxes(mData.normal), mData.insertion);
}

std::vector<AcadEntity*> HostBlockReference::Explode() {
    RequireAlive();
    std::vector<AcadEntity*> result;
    for (PlacedEntity& placed : PlacedContent(Document(), mData)) {
        HostEntity& made = Owner().Add(std::move(placed.geometry));
        made.SetLook(placed.source->Look());
        made.SetExtendedData(placed.source->ExtendedData());
        result.push_back(&made);
    }
    return result;
}

std::optional<Box3> HostBlockReference::Box() const { return BoxOfReference(Document(), mData); }

}  // namespace brenvik
