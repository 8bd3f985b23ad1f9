// Which group counts what.
#include "drafting_host/dxf/stated_counts.h"

namespace brenvik {
namespace {

void Compare(Groups groups, int code, std::size_t found, const char* things, std::vector<FalseCount>& all) {
    const Group* const group = FindGroup(groups, code);
    if (group == nullptr) return;
    const int stated = IntegerOf(*group);
    if (stated >= 0 && static_cast<std::size_t>(stated) == found) return;
    all.push_back({group->line, "group " + std::to_string(code) + " states " + std::to_string(stated) + " " +
                                    things + ", found " + std::to_string(found) + ", which are taken"});
}

}  // namespace

std::vector<FalseCount> FalseCountsOf(Groups groups, const EntityGeometry& geometry) {
    std::vector<FalseCount> all;
    if (const auto* const line = std::get_if<LWPolylineData>(&geometry))
        Compare(groups, 90, line->vertices.size(), "vertices", all);
    if (const auto* const spline = std::get_if<SplineData>(&geometry)) {
        Compare(groups, 72, spline->knots.size(), "knots", all);
        Compare(groups, 73, spline->controlPoints.size(), "control points", all);
        Compare(groups, 74, spline->fitPoints.size(), "fit points", all);
    }
    return all;
}

std::optional<FalseCount> FalseCountOfMesh(const PolylineData& polyline, std::size_t line) {
    constexpr int isMesh = 16, isSmooth = 4;
    // A smooth one has vertices of two kinds.
    if ((polyline.flags & isMesh) == 0 || (polyline.flags & isSmooth) != 0) return std::nullopt;
    const std::size_t stated =
        static_cast<std::size_t>(polyline.mCount) * static_cast<std::size_t>(polyline.nCount);
    if (stated == polyline.vertices.size()) return std::nullopt;
    return FalseCount{line, "groups 71 and 72 state a mesh of " + std::to_string(polyline.mCount) + " by " +
                                std::to_string(polyline.nCount) + " vertices, found " +
                                std::to_string(polyline.vertices.size()) + ", which are taken"};
}

}  // namespace brenvik
