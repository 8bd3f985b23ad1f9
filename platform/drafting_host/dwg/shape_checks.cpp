#include "drafting_host/dwg/shape_checks.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <type_traits>

#include "drafting_host/dxf/texts/exact_numbers.h"
#include "session/ports/point_arithmetic.h"

namespace brenvik::dwg {
namespace {

double Length(const Point3& a) { return std::sqrt(vectors::Dot(a, a)); }

template <typename Number>
std::string Not(const char* what, Number found, const char* expected) {
    std::string shown;
    if constexpr (std::is_same_v<Number, double>)
        shown = RealText(found);
    else
        shown = std::to_string(found);
    return std::string("its ") + what + " is " + shown + " where " + expected + " was expected";
}

/// A normal of length 0 stands for that of the world.
std::string WhyNotNormal(const Point3& normal) {
    constexpr double tolerance = 1e-4;
    const double length = Length(normal);
    if (length == 0 || std::abs(length - 1) < tolerance) return {};
    return Not("normal's length", length, "1");
}

std::string WhyNotAngle(double angle) {
    constexpr double most = 100;
    return std::abs(angle) > most ? Not("angle", angle, "one of a few turns") : "";
}

std::string WhyNot(const ArcData& arc) {
    const std::string start = WhyNotAngle(arc.startAngle);
    return start.empty() ? WhyNotAngle(arc.endAngle) : start;
}

std::string WhyNot(const EllipseData& ellipse) {
    constexpr double tolerance = 1e-4;
    const double axis = Length(ellipse.majorAxis);
    if (axis == 0) return "its major axis has no length";
    if (ellipse.ratio > 1 + tolerance) return Not("ratio of axes", ellipse.ratio, "1 at most");
    if (std::abs(vectors::Dot(ellipse.majorAxis, ellipse.normal)) > tolerance * axis)
        return "its major axis isn't at right angles to its normal";
    const std::string start = WhyNotAngle(ellipse.startParameter);
    return start.empty() ? WhyNotAngle(ellipse.endParameter) : start;
}

/// Whether the curve begins in its first control point and ends in its last.
bool IsClamped(const SplineData& spline) {
    const auto order = static_cast<std::size_t>(spline.degree) + 1;
    const auto& knots = spline.knots;
    return knots.size() >= 2 * order && knots.front() == knots[order - 1] &&
           knots.back() == knots[knots.size() - order];
}

std::string WhyNotFlags(const SplineData& spline) {
    constexpr int isClosed = 1, isPeriodic = 2, isRational = 4;
    if ((spline.flags & isRational) != 0 && spline.weights.empty())
        return "it is said to be rational and has no weights";
    if ((spline.flags & (isClosed | isPeriodic)) == isPeriodic)
        return "it is said to be periodic and not closed";
    if ((spline.flags & isClosed) == 0 || !IsClamped(spline) || spline.controlPoints.size() < 2) return {};
    constexpr double tolerance = 1e-6;
    const Point3 &first = spline.controlPoints.front(), &last = spline.controlPoints.back();
    const double gap = Length({last.x - first.x, last.y - first.y, last.z - first.z});
    if (gap <= tolerance * (1 + Length(first))) return {};
    return "it is said to be closed and its ends lie apart by " + RealText(gap);
}

std::string WhyNot(const SplineData& spline) {
    if (!std::ranges::is_sorted(spline.knots)) return "its knots don't rise";
    if (std::string flags = WhyNotFlags(spline); !flags.empty()) return flags;
    for (const double weight : spline.weights)
        if (weight <= 0) return Not("weight", weight, "more than 0");
    return {};
}

std::string WhyNot(const LWPolylineData& line) {
    if (line.constantWidth < 0) return Not("width", line.constantWidth, "0 or more");
    for (const auto& vertex : line.vertices)
        if (vertex.startWidth < 0 || vertex.endWidth < 0)
            return Not("width", std::min(vertex.startWidth, vertex.endWidth), "0 or more");
    return {};
}

std::string WhyNot(const PolylineData& line) {
    constexpr int isPolyface = 64, isFace = 128, isVertexOfMesh = 64;
    constexpr int known = 255, highestSurface = 8;
    if ((line.flags & ~known) != 0) return Not("kind", line.flags, "one of those that there are");
    if (line.surfaceType < 0 || line.surfaceType > highestSurface)
        return Not("kind of surface", line.surfaceType, "0 to 8");
    if ((line.flags & isPolyface) == 0) return {};
    const auto isFaceOf = [](const PolylineData::Vertex& vertex) {
        return (vertex.flags & (isFace | isVertexOfMesh)) == isFace;
    };
    const auto corners =
        line.vertices.size() - static_cast<std::size_t>(std::ranges::count_if(line.vertices, isFaceOf));
    for (const auto& vertex : line.vertices) {
        if (!isFaceOf(vertex)) continue;
        for (const int index : vertex.faceIndices)
            if (static_cast<std::size_t>(std::abs(index)) > corners)
                return "a face names its vertex " + std::to_string(index) + " of " + std::to_string(corners);
        if (vertex.faceIndices[0] == 0 || vertex.faceIndices[1] == 0)
            return "a face has fewer than 2 corners";
    }
    return {};
}

std::string WhyNot(const TextData& text) {
    constexpr int highestHorizontal = 5, highestVertical = 3;
    constexpr double mostOblique = 1.5707963267948966;
    if (text.height <= 0) return Not("height", text.height, "more than 0");
    if (text.widthFactor <= 0) return Not("factor of width", text.widthFactor, "more than 0");
    if (text.horizontal < 0 || text.horizontal > highestHorizontal)
        return Not("horizontal alignment", text.horizontal, "0 to 5");
    if (text.vertical < 0 || text.vertical > highestVertical)
        return Not("vertical alignment", text.vertical, "0 to 3");
    // Slants to the left are stored as what is left of a whole turn, too.
    if (std::abs(std::remainder(text.oblique, 4 * mostOblique)) >= mostOblique)
        return Not("slant", text.oblique, "less than a right angle");
    return WhyNotAngle(text.rotation);
}

std::string WhyNot(const MTextData& text) {
    constexpr int highestAttachment = 9, highestFlow = 5;
    if (text.height <= 0) return Not("height", text.height, "more than 0");
    if (text.width < 0) return Not("width", text.width, "0 or more");
    if (text.attachment < 1 || text.attachment > highestAttachment)
        return Not("attachment", text.attachment, "1 to 9");
    if (text.flow < 0 || text.flow > highestFlow || (text.flow != 0 && text.flow % 2 == 0))
        return Not("direction of flow", text.flow, "1, 3 or 5");
    return {};
}

std::string WhyNot(const ViewportData& view) {
    if (view.width < 0 || view.height < 0) return Not("size", std::min(view.width, view.height), "0 or more");
    // Above the mark of a grid that follows the plane of work there are none.
    constexpr int allMarks = 0x3FFFFF;
    if (view.statusFlags < 0 || view.statusFlags > allMarks)
        return Not("status", view.statusFlags, "0 to 4194303");
    return Length(view.viewDirection) == 0 ? "its view has no direction" : "";
}

std::string WhyNot(const InsertData& insert) { return WhyNotAngle(insert.rotation); }

template <typename Shape>
std::string WhyNot(const Shape&) {
    return {};
}

}  // namespace

std::string ImpossibleIn(const EntityGeometry& geometry) {
    return std::visit(
        [](const auto& shape) {
            if constexpr (requires { shape.normal; })
                if (std::string reason = WhyNotNormal(shape.normal); !reason.empty()) return reason;
            return WhyNot(shape);
        },
        geometry);
}

}  // namespace brenvik::dwg
