#include "dwg/nearly_equal.h"

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <vector>

namespace brenvik::test {
namespace {

/// A shape as one row of numbers and one of texts.
class Values {
  public:
    template <typename... Parts>
    explicit Values(const Parts&... parts) {
        (Add(parts), ...);
    }

    template <typename Number>
    requires std::is_arithmetic_v<Number>
    void Add(Number value) { numbers.push_back(static_cast<double>(value)); }
    void Add(const std::string& text) { texts += text + "|"; }
    void Add(const Point3& point) {
        for (const double value : {point.x, point.y, point.z}) numbers.push_back(value);
    }
    template <typename Item>
    void Add(const std::vector<Item>& items) {
        Add(items.size());
        for (const Item& item : items) Add(item);
    }
    template <typename... Parts>
    void AddAll(const Parts&... parts) {
        (Add(parts), ...);
    }

    void Add(const LineData& d) { AddAll(d.start, d.end, d.thickness, d.normal); }
    void Add(const ArcData& d) {
        AddAll(d.center, d.radius, d.startAngle, d.endAngle, d.thickness, d.normal);
    }
    void Add(const CircleData& d) { AddAll(d.center, d.radius, d.thickness, d.normal); }
    void Add(const EllipseData& d) {
        AddAll(d.center, d.majorAxis, d.normal, d.ratio, d.startParameter, d.endParameter);
    }
    void Add(const SplineData& d) { AddAll(d.degree, d.flags & 7, d.knots, d.weights, d.controlPoints); }
    void Add(const LWPolylineData::Vertex& v) { AddAll(v.x, v.y, v.bulge, v.startWidth, v.endWidth); }
    void Add(const LWPolylineData& d) {
        AddAll(d.vertices, d.closed, d.flags, d.constantWidth, d.elevation, d.thickness, d.normal);
    }
    void Add(const PolylineData::Vertex& v) {
        AddAll(v.point, v.bulge, v.flags, v.handle);
        for (const int index : v.faceIndices) Add(index);
    }
    void Add(const PolylineData& d) {
        AddAll(d.vertices, d.flags, d.mCount, d.nCount, d.elevation, d.thickness, d.normal);
    }
    void Add(const PointData& d) { AddAll(d.position, d.thickness, d.normal); }
    void Add(const TextData& d) {
        AddAll(d.insertion, d.height, d.rotation, d.widthFactor, d.oblique, d.horizontal, d.vertical,
               d.generation, d.text, d.style, d.normal);
        if (d.alignment && (d.horizontal != 0 || d.vertical != 0)) Add(*d.alignment);
    }
    void Add(const MTextData& d) {
        AddAll(d.insertion, d.normal, d.height, d.width, d.attachment, d.flow, d.text, d.style);
    }
    void Add(const InsertData& d) {
        AddAll(d.block, d.insertion, d.scale, d.normal, d.rotation, d.columns, d.rows, d.columnSpacing,
               d.rowSpacing);
    }
    void Add(const QuadData& d) {
        for (const Point3& corner : d.corners) Add(corner);
        AddAll(d.edgeFlags, d.thickness, d.normal);
    }
    void Add(const ViewportData& d) {
        AddAll(d.center, d.width, d.height, d.viewTarget, d.viewDirection, d.viewCenter[0], d.viewCenter[1],
               d.viewHeight, d.twist, d.lensLength, d.frontClip, d.backClip, d.statusFlags, d.frozenLayers);
    }
    void Add(const AcisData& d) { Add(static_cast<int>(d.kind)); }

    std::vector<double> numbers;
    std::string texts;
};

}  // namespace

std::string DifferenceOf(const EntityGeometry& left, const EntityGeometry& right) {
    if (left.index() != right.index()) return "another kind";
    Values one, other;
    std::visit([&](const auto& shape) { one.Add(shape); }, left);
    std::visit([&](const auto& shape) { other.Add(shape); }, right);
    if (one.texts != other.texts) return "\"" + one.texts + "\" for \"" + other.texts + "\"";
    if (one.numbers.size() != other.numbers.size())
        return std::to_string(one.numbers.size()) + " numbers for " + std::to_string(other.numbers.size());
    for (std::size_t i = 0; i < one.numbers.size(); ++i) {
        const double allowed = 1e-9 * std::max(1.0, std::abs(one.numbers[i]));
        if (std::abs(one.numbers[i] - other.numbers[i]) > allowed)
            return "number " + std::to_string(i) + " is " + std::to_string(one.numbers[i]) + " for " +
                   std::to_string(other.numbers[i]);
    }
    return {};
}

}  // namespace brenvik::test
