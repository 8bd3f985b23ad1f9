// Which group counts what.
#include "drafting_host/dxf/reading/stated_counts.h"

#include <algorithm>

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

std::optional<std::string> FalseCountOfMesh(const PolylineData& polyline, std::string_view stating) {
    constexpr int isMesh = 16, isPolyface = 64, isSmooth = 4, faceOfPolyface = 128, vertexOfMesh = 64;
    const auto stated = static_cast<std::size_t>(polyline.mCount),
               statedToo = static_cast<std::size_t>(polyline.nCount);
    const std::size_t found = polyline.vertices.size();
    if ((polyline.flags & isPolyface) != 0) {
        const auto faces =
            static_cast<std::size_t>(std::ranges::count_if(polyline.vertices, [](const auto& vertex) {
                return (vertex.flags & (faceOfPolyface | vertexOfMesh)) == faceOfPolyface;
            }));
        const bool areTrue =
            (stated == 0 && statedToo == 0) || (stated == found - faces && statedToo == faces);
        if (areTrue) return std::nullopt;
        return std::string(stating) + " " + std::to_string(stated) + " vertices and " +
               std::to_string(statedToo) + " faces, found " + std::to_string(found - faces) + " and " +
               std::to_string(faces) + ", which are taken";
    }
    // A smooth one has vertices of two kinds.
    if ((polyline.flags & isMesh) == 0 || (polyline.flags & isSmooth) != 0) return std::nullopt;
    if (stated * statedToo == found) return std::nullopt;
    return std::string(stating) + " a mesh of " + std::to_string(stated) + " by " +
           std::to_string(statedToo) + " vertices, found " + std::to_string(found) + ", which are taken";
}

}  // namespace brenvik
