// What an entity of the open document holds: the plain data of a drawing for curves and texts, and a
// shape of the modeller where the drawing holds a body as text. Moves and boxes of the plain kinds.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <TopoDS_Shape.hxx>
#include <optional>
#include <variant>
#include <vector>

#include "drafting_host/document/geometry/similarity.h"
#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik {

/// A solid, region or body in the modeller's form.
struct ShapeData {
    AcisData::Kind kind = AcisData::Kind::Solid;
    TopoDS_Shape shape;
};

/// EntityGeometry with the shape in place of its text. Copying is cheap: shapes are shared.
using HostGeometry =
    std::variant<LineData, ArcData, CircleData, EllipseData, SplineData, LWPolylineData, PolylineData,
                 PointData, TextData, MTextData, InsertData, QuadData, ViewportData, ShapeData>;

// The data under a move, exact where the move is. Thickness follows the normal; widths and heights
// follow the scale. A mirror keeps the normal's image as the normal and turns the sense of the curve.
void Transform(LineData& data, const Similarity& move);
void Transform(ArcData& data, const Similarity& move);
void Transform(CircleData& data, const Similarity& move);
void Transform(EllipseData& data, const Similarity& move);
void Transform(SplineData& data, const Similarity& move);
void Transform(LWPolylineData& data, const Similarity& move);
void Transform(PolylineData& data, const Similarity& move);
void Transform(PointData& data, const Similarity& move);
void Transform(TextData& data, const Similarity& move);
void Transform(MTextData& data, const Similarity& move);
void Transform(InsertData& data, const Similarity& move);
void Transform(QuadData& data, const Similarity& move);
void Transform(ViewportData& data, const Similarity& move);
void Transform(ShapeData& data, const Similarity& move);
void Transform(HostGeometry& data, const Similarity& move);

// The box in world axes, exact for everything but texts, whose letters this host doesn't draw: theirs
// is a rectangle by height and number of characters. Null if the data holds no point. A block
// reference has no box of its own: its block gives it.
std::optional<Box3> BoxOf(const LineData& data);
std::optional<Box3> BoxOf(const ArcData& data);
std::optional<Box3> BoxOf(const CircleData& data);
std::optional<Box3> BoxOf(const EllipseData& data);
std::optional<Box3> BoxOf(const SplineData& data);
std::optional<Box3> BoxOf(const LWPolylineData& data);
std::optional<Box3> BoxOf(const PolylineData& data);
std::optional<Box3> BoxOf(const PointData& data);
std::optional<Box3> BoxOf(const TextData& data);
std::optional<Box3> BoxOf(const MTextData& data);
std::optional<Box3> BoxOf(const QuadData& data);
std::optional<Box3> BoxOf(const ViewportData& data);
std::optional<Box3> BoxOf(const ShapeData& data);

/// A straight or round piece of a polyline, in world coordinates, in the polyline's order. An arc's
/// data runs counter-clockwise, whatever way the polyline goes along it.
using PolylinePiece = std::variant<LineData, ArcData>;
/// The pieces of a lightweight polyline; pieces without length are left out.
std::vector<PolylinePiece> PiecesOf(const LWPolylineData& data);
/// The pieces of an old-style polyline, plane or in space. None for meshes.
std::vector<PolylinePiece> PiecesOf(const PolylineData& data);

/// Area enclosed by a lightweight polyline, an open one closed by a straight line.
double AreaOf(const LWPolylineData& data);

/// Flags of group 70 of an old-style polyline, and of its vertices.
inline constexpr int ClosedPolylineFlag = 1;
inline constexpr int SpacePolylineFlag = 8;
inline constexpr int SpaceVertexFlag = 32;
/// The kinds of old-style polylines, by the flags of group 70.
enum class PolylineKind { Plane, Space, PolygonMesh, PolyfaceMesh };
PolylineKind KindOf(const PolylineData& data);

}  // namespace brenvik
