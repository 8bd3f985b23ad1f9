// Names of records by what the entity is made of.
#include "drafting_host/dxf/data/entity_name.h"

#include <cmath>
#include <variant>

#include "base/angles.h"

namespace brenvik {
namespace {

struct NameOf {
    std::string_view operator()(const LineData&) const { return "LINE"; }
    std::string_view operator()(const ArcData& arc) const { return IsFullRound(arc) ? "CIRCLE" : "ARC"; }
    std::string_view operator()(const CircleData&) const { return "CIRCLE"; }
    std::string_view operator()(const EllipseData&) const { return "ELLIPSE"; }
    std::string_view operator()(const SplineData&) const { return "SPLINE"; }
    std::string_view operator()(const LWPolylineData&) const { return "LWPOLYLINE"; }
    std::string_view operator()(const PolylineData&) const { return "POLYLINE"; }
    std::string_view operator()(const PointData&) const { return "POINT"; }
    std::string_view operator()(const TextData&) const { return "TEXT"; }
    std::string_view operator()(const MTextData&) const { return "MTEXT"; }
    std::string_view operator()(const InsertData&) const { return "INSERT"; }
    std::string_view operator()(const QuadData& quad) const {
        switch (quad.kind) {
            case QuadData::Kind::Solid:
                return "SOLID";
            case QuadData::Kind::Trace:
                return "TRACE";
            case QuadData::Kind::Face:
                break;
        }
        return "3DFACE";
    }
    std::string_view operator()(const ViewportData&) const { return "VIEWPORT"; }
    std::string_view operator()(const AcisData& body) const {
        switch (body.kind) {
            case AcisData::Kind::Region:
                return "REGION";
            case AcisData::Kind::Body:
                return "BODY";
            case AcisData::Kind::Solid:
                break;
        }
        return "3DSOLID";
    }
};

}  // namespace

bool IsFullRound(const ArcData& arc) {
    constexpr double closeEnough = 1e-12;
    const double sweep = std::abs(std::remainder(arc.endAngle - arc.startAngle, FullTurn));
    return sweep < closeEnough;
}

std::string_view EntityName(const EntityGeometry& geometry) { return std::visit(NameOf{}, geometry); }

}  // namespace brenvik
