// The shapes of entities as groups.
// The host's own "Handle" must be declared before the modeller makes a macro of that word.
#include "drafting_host/dxf/writing/writing.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/failure.h"
#include "drafting_host/acis/acis_text.h"
#include "drafting_host/dxf/data/entity_name.h"
#include "drafting_host/dxf/texts/acis_lines.h"
#include "drafting_host/dxf/texts/dxf_text.h"
#include "drafting_host/dxf/texts/exact_numbers.h"

namespace brenvik {
namespace {

// One call for each kind of geometry.
class GeometryWriter {
  public:
    GeometryWriter(GroupWriter& out, const WritePlan& plan, const KeptGroups* kept)
        : mOut(out), mPlan(plan), mKept(kept) {}

    void operator()(const LineData& data) const;
    void operator()(const ArcData& data) const;
    void operator()(const CircleData& data) const;
    void operator()(const EllipseData& data) const;
    void operator()(const SplineData& data) const;
    void operator()(const LWPolylineData& data) const;
    void operator()(const PolylineData& data) const;
    void operator()(const PointData& data) const;
    void operator()(const TextData& data) const;
    void operator()(const MTextData& data) const;
    void operator()(const InsertData& data) const;
    void operator()(const QuadData& data) const;
    void operator()(const ViewportData& data) const;
    void operator()(const AcisData& data) const;

  private:
    void Round(const Point3& center, double radius, double thickness, const Point3& normal) const;

    GroupWriter& mOut;
    const WritePlan& mPlan;
    const KeptGroups* mKept;  ///< Null for an entity without.
};

void GeometryWriter::operator()(const LineData& data) const {
    mOut.Word(100, "AcDbLine");
    mOut.RealUnless(39, data.thickness, 0);
    mOut.Point(10, data.start);
    mOut.Point(11, data.end);
    mOut.Normal(data.normal);
}

void GeometryWriter::Round(const Point3& center, double radius, double thickness,
                           const Point3& normal) const {
    mOut.Word(100, "AcDbCircle");
    mOut.RealUnless(39, thickness, 0);
    const Point3 written = NoiseAsZero(normal);
    if (written == Point3{0, 0, 1}) {
        mOut.Point(10, center);
    } else {
        for (const double value : {center.x, center.y, center.z, normal.x, normal.y, normal.z})
            mOut.RequireFinite(value, 10);
        const PlanePointTexts texts = PlanePointText(EntityPlane(written), center);
        mOut.Word(10, texts.x);
        mOut.Word(20, texts.y);
        mOut.Word(30, texts.z);
    }
    mOut.Real(40, radius);
    mOut.Normal(normal);
}

void GeometryWriter::operator()(const ArcData& data) const {
    Round(data.center, data.radius, data.thickness, data.normal);
    if (IsFullRound(data)) return;
    mOut.Word(100, "AcDbArc");
    mOut.Degrees(50, data.startAngle);
    mOut.Degrees(51, data.endAngle);
}

void GeometryWriter::operator()(const CircleData& data) const {
    Round(data.center, data.radius, data.thickness, data.normal);
}

void GeometryWriter::operator()(const EllipseData& data) const {
    mOut.Word(100, "AcDbEllipse");
    mOut.Point(10, data.center);
    mOut.Point(11, data.majorAxis);
    mOut.Normal(data.normal);
    mOut.Real(40, data.ratio);
    mOut.Real(41, data.startParameter);
    mOut.Real(42, data.endParameter);
}

void GeometryWriter::operator()(const SplineData& data) const {
    mOut.Word(100, "AcDbSpline");
    mOut.Normal(data.normal);
    mOut.Whole(70, data.flags);
    mOut.Whole(71, data.degree);
    mOut.Whole(72, static_cast<long>(data.knots.size()));
    mOut.Whole(73, static_cast<long>(data.controlPoints.size()));
    mOut.Whole(74, static_cast<long>(data.fitPoints.size()));
    for (const double knot : data.knots) mOut.Real(40, knot);
    for (const double weight : data.weights) mOut.Real(41, weight);
    for (const Point3& point : data.controlPoints) mOut.Point(10, point);
    for (const Point3& point : data.fitPoints) mOut.Point(11, point);
}

void GeometryWriter::operator()(const LWPolylineData& data) const {
    constexpr int flagLinetype = 128;
    mOut.Word(100, "AcDbPolyline");
    mOut.Whole(90, static_cast<long>(data.vertices.size()));
    mOut.Whole(70, (data.flags & flagLinetype) | (data.closed ? 1 : 0));
    mOut.RealUnless(43, data.constantWidth, 0);
    mOut.RealUnless(38, data.elevation, 0);
    mOut.RealUnless(39, data.thickness, 0);
    const bool hasNumbers = mKept != nullptr && mKept->vertexNumbers.size() == data.vertices.size();
    for (std::size_t i = 0; i < data.vertices.size(); ++i) {
        const LWPolylineData::Vertex& vertex = data.vertices[i];
        mOut.Real(10, vertex.x);
        mOut.Real(20, vertex.y);
        if (vertex.startWidth != 0 || vertex.endWidth != 0) {
            mOut.Real(40, vertex.startWidth);
            mOut.Real(41, vertex.endWidth);
        }
        mOut.RealUnless(42, vertex.bulge, 0);
        if (hasNumbers) mOut.Whole(91, mKept->vertexNumbers[i]);
    }
    mOut.Normal(data.normal);
}

// Old polylines are records of their own, written with their vertices.
void GeometryWriter::operator()(const PolylineData&) const {}

void GeometryWriter::operator()(const PointData& data) const {
    mOut.Word(100, "AcDbPoint");
    mOut.Point(10, data.position);
    mOut.RealUnless(39, data.thickness, 0);
    mOut.Normal(data.normal);
}

void GeometryWriter::operator()(const TextData& data) const {
    mOut.Word(100, "AcDbText");
    mOut.RealUnless(39, data.thickness, 0);
    mOut.Point(10, data.insertion);
    mOut.Real(40, data.height);
    mOut.Text(1, data.text);
    if (data.rotation != 0) mOut.Degrees(50, data.rotation);
    mOut.RealUnless(41, data.widthFactor, 1);
    if (data.oblique != 0) mOut.Degrees(51, data.oblique);
    mOut.Text(7, data.style);
    if (data.generation != 0) mOut.Whole(71, data.generation);
    if (data.horizontal != 0) mOut.Whole(72, data.horizontal);
    if (data.alignment) mOut.Point(11, *data.alignment);
    mOut.Normal(data.normal);
    mOut.Word(100, "AcDbText");
    if (data.vertical != 0) mOut.Whole(73, data.vertical);
}

void GeometryWriter::operator()(const MTextData& data) const {
    constexpr std::size_t longestPiece = 250;
    mOut.Word(100, "AcDbMText");
    mOut.Point(10, data.insertion);
    mOut.Real(40, data.height);
    mOut.Real(41, data.width);
    mOut.Whole(71, data.attachment);
    mOut.Whole(72, data.flow);
    const std::string encoded = EncodeText(data.text);
    std::size_t at = 0;
    for (; encoded.size() - at > longestPiece; at += longestPiece)
        mOut.Word(3, std::string_view(encoded).substr(at, longestPiece));
    mOut.Word(1, std::string_view(encoded).substr(at));
    mOut.Text(7, data.style);
    mOut.Normal(data.normal);
    if (data.direction) mOut.Point(11, *data.direction);
    if (data.rotation != 0) mOut.Degrees(50, data.rotation);
}

void GeometryWriter::operator()(const InsertData& data) const {
    const bool isArray = data.columns != 1 || data.rows != 1;
    mOut.Word(100, isArray ? "AcDbMInsertBlock" : "AcDbBlockReference");
    if (mKept != nullptr && !mKept->parts.empty()) mOut.Whole(66, 1);
    mOut.Text(2, data.block);
    mOut.Point(10, data.insertion);
    mOut.RealUnless(41, data.scale.x, 1);
    mOut.RealUnless(42, data.scale.y, 1);
    mOut.RealUnless(43, data.scale.z, 1);
    if (data.rotation != 0) mOut.Degrees(50, data.rotation);
    if (data.columns != 1) mOut.Whole(70, data.columns);
    if (data.rows != 1) mOut.Whole(71, data.rows);
    mOut.RealUnless(44, data.columnSpacing, 0);
    mOut.RealUnless(45, data.rowSpacing, 0);
    mOut.Normal(data.normal);
}

void GeometryWriter::operator()(const QuadData& data) const {
    const bool isFace = data.kind == QuadData::Kind::Face;
    mOut.Word(100, isFace ? "AcDbFace" : "AcDbTrace");
    for (std::size_t i = 0; i < data.corners.size(); ++i)
        mOut.Point(10 + static_cast<int>(i), data.corners[i]);
    if (isFace) {
        if (data.edgeFlags != 0) mOut.Whole(70, data.edgeFlags);
        return;
    }
    mOut.RealUnless(39, data.thickness, 0);
    mOut.Normal(data.normal);
}

void GeometryWriter::operator()(const ViewportData& data) const {
    mOut.Word(100, "AcDbViewport");
    mOut.Point(10, data.center);
    mOut.Real(40, data.width);
    mOut.Real(41, data.height);
    mOut.Whole(68, data.status);
    mOut.Whole(69, data.id);
    mOut.Real(12, data.viewCenter[0]);
    mOut.Real(22, data.viewCenter[1]);
    mOut.Point(16, data.viewDirection);
    mOut.Point(17, data.viewTarget);
    mOut.Real(42, data.lensLength);
    mOut.Real(43, data.frontClip);
    mOut.Real(44, data.backClip);
    mOut.Real(45, data.viewHeight);
    mOut.Degrees(51, data.twist);
    for (const HandleValue layer : data.frozenLayers)
        if (mPlan.IsLayer(layer)) mOut.HandleGroup(331, layer);
    mOut.Whole(90, data.statusFlags);
    // A viewport that was read has its own settings here, behind its values.
    if (mKept != nullptr && !mKept->own.empty()) return;
    for (const int code : {13, 23}) mOut.Real(code, 0);          // snap base
    for (const int code : {14, 24, 15, 25}) mOut.Real(code, 1);  // snap and grid spacing
    mOut.Real(50, 0);
    mOut.Whole(72, 1000);
    mOut.Word(1, "");
    mOut.Whole(281, 0);
    mOut.Whole(71, 1);
    mOut.Whole(74, 0);
    mOut.Point(110, {});
    mOut.Point(111, {1, 0, 0});
    mOut.Point(112, {0, 1, 0});
    mOut.Whole(79, 0);
    mOut.Real(146, 0);
}

void GeometryWriter::operator()(const AcisData& data) const {
    if (acis::IsBinary(data.text))
        throw InvalidCall(mOut.Place() + ": a body as ACIS text was expected, found binary data");
    mOut.Word(100, "AcDbModelerGeometry");
    mOut.Whole(70, 1);
    for (std::size_t at = 0; at < data.text.size();) {
        const std::size_t end = std::min(data.text.find('\n', at), data.text.size());
        int code = 1;
        for (const std::string& value : AcisGroupsOf(std::string_view(data.text).substr(at, end - at))) {
            mOut.Word(code, value);
            code = 3;
        }
        at = end + 1;
    }
    constexpr int oldestHistory = 1021;
    if (mPlan.Release() < oldestHistory || data.kind != AcisData::Kind::Solid) return;
    if (mKept != nullptr && mKept->further.find("AcDb3dSolid") != std::string::npos) return;
    mOut.Word(100, "AcDb3dSolid");
    mOut.HandleGroup(350, 0);  // without a history of how it was made
}

}  // namespace

void WriteGeometry(GroupWriter& out, const WritePlan& plan, const EntityData& entity) {
    std::visit(GeometryWriter(out, plan, entity.kept.value.get()), entity.geometry);
}

}  // namespace brenvik
