// Writing bodies as ACIS text of version 400: no history fields, edges without parameters, one line
// per record but for splines, which take a line for each row of numbers. Records get their index when they
// are first needed and their fields when all are known.
#include "drafting_host/acis/acis_text.h"
#include "drafting_host/acis/analytic_forms.h"
#include "drafting_host/acis/face_loops.h"
#include "drafting_host/acis/spline_shapes.h"

#include <BRepTools.hxx>
#include <BRep_Tool.hxx>
#include <Geom_Plane.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopTools_ShapeMapHasher.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Iterator.hxx>

#include <limits>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace brenvik::acis {
namespace {

struct SameShape {
    std::size_t operator()(const TopoDS_Shape& shape) const {
        return static_cast<std::size_t>(shape.HashCode(std::numeric_limits<int>::max()));
    }
    bool operator()(const TopoDS_Shape& a, const TopoDS_Shape& b) const { return a.IsSame(b); }
};
template <class Value>
using ShapeMap = std::unordered_map<TopoDS_Shape, Value, SameShape, SameShape>;

std::string Number(double value) { return NumberText(value); }

std::string Vector(const gp_XYZ& v) { return Number(v.X()) + " " + Number(v.Y()) + " " + Number(v.Z()); }

std::string Reference(long record) { return "$" + std::to_string(record); }

std::string SurfaceText(const SurfaceRecord& surface) {
    if (const auto* plane = std::get_if<PlaneRecord>(&surface)) {
        return "plane-surface $-1 " + Vector(plane->origin) + " " + Vector(plane->normal) + " " +
               Vector(plane->uDirection) + " forward_v I I I I #";
    }
    if (const auto* cone = std::get_if<ConeRecord>(&surface)) {
        return "cone-surface $-1 " + Vector(cone->centre) + " " + Vector(cone->axis) + " " +
               Vector(cone->major) + " " + Number(cone->ratio) + " I I " + Number(cone->sine) + " " +
               Number(cone->cosine) + " " + Number(cone->major.Modulus()) + " forward I I I I #";
    }
    if (const auto* sphere = std::get_if<SphereRecord>(&surface)) {
        return "sphere-surface $-1 " + Vector(sphere->centre) + " " + Number(sphere->radius) + " " +
               Vector(sphere->equator) + " " + Vector(sphere->pole) + " forward_v I I I I #";
    }
    if (const auto* spline = std::get_if<SplineSurfaceRecord>(&surface)) return SplineSurfaceText(*spline);
    const auto& torus = std::get<TorusRecord>(surface);
    return "torus-surface $-1 " + Vector(torus.centre) + " " + Vector(torus.axis) + " " +
           Number(torus.major) + " " + Number(torus.minor) + " " + Vector(torus.uDirection) +
           " forward_v I I I I #";
}

std::string CurveText(const CurveRecord& curve) {
    if (const auto* line = std::get_if<LineRecord>(&curve))
        return "straight-curve $-1 " + Vector(line->root) + " " + Vector(line->direction) + " I I #";
    if (const auto* spline = std::get_if<SplineCurveRecord>(&curve)) return SplineCurveText(*spline);
    const auto& ellipse = std::get<EllipseRecord>(curve);
    return "ellipse-curve $-1 " + Vector(ellipse.centre) + " " + Vector(ellipse.normal) + " " +
           Vector(ellipse.major) + " " + Number(ellipse.ratio) + " I I #";
}

/// The faces of one shell to come.
struct ShellPart {
    std::vector<TopoDS_Face> faces;
    bool sheet = false;
};
using LumpPart = std::vector<ShellPart>;

void CollectFaces(const TopoDS_Shape& shape, std::vector<TopoDS_Face>& faces) {
    if (shape.ShapeType() == TopAbs_FACE) {
        faces.push_back(TopoDS::Face(shape));
        return;
    }
    for (TopoDS_Iterator part(shape); part.More(); part.Next()) CollectFaces(part.Value(), faces);
}

// Solids become lumps with a shell each for the outside and for voids; everything else is a sheet.
void CollectParts(const TopoDS_Shape& shape, std::vector<LumpPart>& lumps, std::vector<TopoDS_Face>& sheets) {
    if (shape.IsNull()) return;
    if (shape.ShapeType() == TopAbs_SHELL || shape.ShapeType() == TopAbs_FACE) {
        CollectFaces(shape, sheets);
        return;
    }
    if (shape.ShapeType() > TopAbs_FACE)
        throw WriteFailure("loose edges and vertices cannot be written as a body");
    if (shape.ShapeType() != TopAbs_SOLID) {
        for (TopoDS_Iterator part(shape); part.More(); part.Next()) CollectParts(part.Value(), lumps, sheets);
        return;
    }
    LumpPart lump;
    for (TopoDS_Iterator part(shape); part.More(); part.Next()) {
        if (part.Value().ShapeType() != TopAbs_SHELL) continue;
        ShellPart shell;
        CollectFaces(part.Value(), shell.faces);
        if (!shell.faces.empty()) lump.push_back(std::move(shell));
    }
    if (!lump.empty()) lumps.push_back(std::move(lump));
}

// Sheets that share an edge make one lump.
std::vector<LumpPart> SheetLumps(const std::vector<TopoDS_Face>& faces) {
    ShapeMap<std::vector<std::size_t>> byEdge;
    std::vector<std::vector<TopoDS_Shape>> edges(faces.size());
    for (std::size_t i = 0; i < faces.size(); ++i) {
        TopTools_IndexedMapOfShape found;
        TopExp::MapShapes(faces[i], TopAbs_EDGE, found);
        for (int e = 1; e <= found.Extent(); ++e) {
            byEdge[found(e)].push_back(i);
            edges[i].push_back(found(e));
        }
    }
    std::vector<bool> taken(faces.size(), false);
    std::vector<LumpPart> lumps;
    for (std::size_t first = 0; first < faces.size(); ++first) {
        if (taken[first]) continue;
        std::vector<std::size_t> group{first};
        taken[first] = true;
        for (std::size_t at = 0; at < group.size(); ++at) {
            for (const TopoDS_Shape& edge : edges[group[at]]) {
                for (const std::size_t other : byEdge[edge]) {
                    if (!taken[other]) group.push_back(other);
                    taken[other] = true;
                }
            }
        }
        ShellPart shell;
        shell.sheet = true;
        for (const std::size_t index : group) shell.faces.push_back(faces[index]);
        lumps.push_back({std::move(shell)});
    }
    return lumps;
}

std::vector<LumpPart> LumpsOf(const TopoDS_Shape& shape) {
    std::vector<LumpPart> lumps;
    std::vector<TopoDS_Face> sheets;
    CollectParts(shape, lumps, sheets);
    for (LumpPart& lump : SheetLumps(sheets)) lumps.push_back(std::move(lump));
    if (lumps.empty()) throw WriteFailure("the shape holds no face that could be written");
    return lumps;
}

class Writer {
  public:
    /// Each entry holds the lumps of one body.
    std::vector<std::string> Run(const std::vector<std::vector<LumpPart>>& bodies) {
        const std::vector<long> indices = Reserve(bodies.size());
        for (std::size_t i = 0; i < bodies.size(); ++i) WriteBody(bodies[i], indices[i]);
        NumberSubtypes();
        std::vector<std::string> lines{
            "400 " + std::to_string(mRecords.size()) + " " + std::to_string(bodies.size()) + " 0",
            "7 Brenvik 9 ACIS 4.00 0 ", "1 9.9999999999999995e-007 1e-010"};
        for (const std::string& record : mRecords) {
            std::size_t at = 0;
            for (std::size_t end = 0; (end = record.find('\n', at)) != std::string::npos; at = end + 1)
                lines.push_back(record.substr(at, end - at));
            lines.push_back(record.substr(at));
        }
        lines.emplace_back("End-of-ACIS-data");
        return lines;
    }

  private:
    struct CoedgeWork {
        long index, next, previous, loop, edge;
        bool reversed;
        long pcurve = Nowhere;
    };
    struct EdgeWork {
        long index = Nowhere;
        std::vector<std::size_t> uses;  // coedges, in the order written
    };

    static std::size_t Place(long index) { return static_cast<std::size_t>(index); }
    long Reserve() {
        mRecords.emplace_back();
        return static_cast<long>(mRecords.size()) - 1;
    }
    std::vector<long> Reserve(std::size_t count) {
        std::vector<long> indices(count);
        for (long& index : indices) index = Reserve();
        return indices;
    }

    void WriteBody(const std::vector<LumpPart>& lumps, long body);
    long WriteShells(const LumpPart& lump, long lumpIndex);
    void WriteFace(const TopoDS_Face& face, bool sheet, long index, long next, long shell);
    void WriteFreeFace(const TopoDS_Face& face, bool sheet, long index, long next, long shell);
    void WriteFaceRecord(long index, const std::string& links, bool looksInside, bool sheet);
    long WritePcurve(const TopoDS_Face& face, const FreeUse& use, long surface);
    void NumberSubtypes();
    long WriteLoop(const std::vector<TopoDS_Edge>& edges, long face, long index, long next);
    void WriteApexLoop(const TopoDS_Vertex& apex, long face, long index, long next);
    EdgeWork& EdgeOf(const TopoDS_Edge& edge, long coedge);
    long VertexOf(const TopoDS_Vertex& vertex, long edge);
    void FinishCoedges();
    std::string FaceName() const { return "face " + std::to_string(mFacesWritten); }

    std::vector<std::string> mRecords;
    std::vector<CoedgeWork> mCoedges;
    ShapeMap<EdgeWork> mEdges;
    ShapeMap<long> mVertices;
    int mFacesWritten = 0;
    // Records with braces in the order of the text; those of curves on a surface name the surface's record.
    std::map<long, std::optional<long>> mSubtypes;
};

void Writer::WriteBody(const std::vector<LumpPart>& lumps, long body) {
    const std::vector<long> indices = Reserve(lumps.size());
    mRecords[Place(body)] = "body $-1 " + Reference(indices.front()) + " $-1 $-1 #";
    for (std::size_t i = 0; i < lumps.size(); ++i) {
        const long shell = WriteShells(lumps[i], indices[i]);
        const long next = i + 1 < lumps.size() ? indices[i + 1] : Nowhere;
        mRecords[Place(indices[i])] =
            "lump $-1 " + Reference(next) + " " + Reference(shell) + " " + Reference(body) + " #";
        // Lumps have nothing in common, even where the solids touch.
        FinishCoedges();
    }
}

long Writer::WriteShells(const LumpPart& lump, long lumpIndex) {
    const std::vector<long> shells = Reserve(lump.size());
    for (std::size_t s = 0; s < lump.size(); ++s) {
        const ShellPart& shell = lump[s];
        const std::vector<long> faces = Reserve(shell.faces.size());
        const long next = s + 1 < lump.size() ? shells[s + 1] : Nowhere;
        mRecords[Place(shells[s])] = "shell $-1 " + Reference(next) + " $-1 " + Reference(faces.front()) +
                                     " $-1 " + Reference(lumpIndex) + " #";
        for (std::size_t f = 0; f < faces.size(); ++f) {
            const long following = f + 1 < faces.size() ? faces[f + 1] : Nowhere;
            WriteFace(shell.faces[f], shell.sheet, faces[f], following, shells[s]);
        }
    }
    return shells.front();
}

// A point well within the parameters of a face, off the middle where a symmetric face might have a pole,
// and the surface's normal there.
std::pair<gp_XYZ, gp_XYZ> PointAndNormal(const TopoDS_Face& face, const Handle(Geom_Surface) & surface) {
    double u1 = 0;
    double u2 = 0;
    double v1 = 0;
    double v2 = 0;
    // A plane looks the same way everywhere, and to find its face's parameters the modeller lays every edge
    // into it anew.
    if (Handle(Geom_Plane)::DownCast(surface).IsNull()) BRepTools::UVBounds(face, u1, u2, v1, v2);
    gp_Pnt point;
    gp_Vec alongU;
    gp_Vec alongV;
    surface->D1(u1 + 0.37 * (u2 - u1), v1 + 0.41 * (v2 - v1), point, alongU, alongV);
    return {point.XYZ(), alongU.Crossed(alongV).XYZ()};
}

void Writer::WriteFace(const TopoDS_Face& face, bool sheet, long index, long next, long shell) {
    ++mFacesWritten;
    const Handle(Geom_Surface) surface = BRep_Tool::Surface(face);
    auto record = AnalyticSurface(surface);
    if (!record) {
        WriteFreeFace(face, sheet, index, next, shell);
        return;
    }
    const auto [point, normal] = PointAndNormal(face, surface);
    if (auto* cone = std::get_if<ConeRecord>(&*record)) PutOnNappe(*cone, point);
    const bool looksInside =
        (normal.Dot(Outside(*record, point)) < 0) != (face.Orientation() == TopAbs_REVERSED);
    FaceLoops boundary = LoopsOf(face, FaceName());
    // Poles of spheres and centres of discs are points like any other.
    if (!std::holds_alternative<ConeRecord>(*record)) boundary.spreadPoints.clear();
    const std::vector<long> loops = Reserve(boundary.loops.size() + boundary.spreadPoints.size());
    const long surfaceIndex = Reserve();
    mRecords[Place(surfaceIndex)] = SurfaceText(*record);
    WriteFaceRecord(index,
                    Reference(next) + " " + Reference(loops.empty() ? Nowhere : loops.front()) + " " +
                        Reference(shell) + " $-1 " + Reference(surfaceIndex),
                    looksInside, sheet);
    for (std::size_t i = 0; i < loops.size(); ++i) {
        const long following = i + 1 < loops.size() ? loops[i + 1] : Nowhere;
        if (i < boundary.loops.size())
            WriteLoop(boundary.loops[i], index, loops[i], following);
        else
            WriteApexLoop(boundary.spreadPoints[i - boundary.loops.size()], index, loops[i], following);
    }
}

void Writer::WriteFaceRecord(long index, const std::string& links, bool looksInside, bool sheet) {
    mRecords[Place(index)] = "face $-1 " + links + (looksInside ? " reversed" : " forward") +
                             (sheet ? " double out #" : " single #");
}

// A face on a spline: each coedge brings its curve in the parameters, without which a reader would have to
// search for it on the surface.
void Writer::WriteFreeFace(const TopoDS_Face& face, bool sheet, long index, long next, long shell) {
    const Handle(Geom_Surface) surface = BRep_Tool::Surface(face);
    double u1 = 0;
    double u2 = 0;
    double v1 = 0;
    double v2 = 0;
    BRepTools::UVBounds(face, u1, u2, v1, v2);
    const auto record = SplineOf(surface, u1, u2, v1, v2);
    if (!record) {
        throw WriteFailure(FaceName() + " has a surface of the kind " + KindName(surface) +
                           ", which cannot be written as a spline either");
    }
    const auto boundary = FreeLoopsOf(face, FaceName());
    if (boundary.empty()) throw WriteFailure(FaceName() + " on a spline has no boundary");
    const std::vector<long> loops = Reserve(boundary.size());
    const long surfaceIndex = Reserve();
    mRecords[Place(surfaceIndex)] = SplineSurfaceText(*record);
    mSubtypes[surfaceIndex];
    WriteFaceRecord(index,
                    Reference(next) + " " + Reference(loops.front()) + " " + Reference(shell) + " $-1 " +
                        Reference(surfaceIndex),
                    face.Orientation() == TopAbs_REVERSED, sheet);
    for (std::size_t i = 0; i < loops.size(); ++i) {
        std::vector<TopoDS_Edge> loop;
        for (const FreeUse& use : boundary[i]) loop.push_back(use.edge);
        WriteLoop(loop, index, loops[i], i + 1 < loops.size() ? loops[i + 1] : Nowhere);
        const std::size_t first = mCoedges.size() - loop.size();
        for (std::size_t k = 0; k < loop.size(); ++k)
            mCoedges[first + k].pcurve = WritePcurve(face, boundary[i][k], surfaceIndex);
    }
}

long Writer::WritePcurve(const TopoDS_Face& face, const FreeUse& use, long surface) {
    double first = 0;
    double last = 0;
    const TopoDS_Face forward = TopoDS::Face(face.Oriented(TopAbs_FORWARD));
    const Handle(Geom2d_Curve) curve = BRep_Tool::CurveOnSurface(use.inFace, forward, first, last);
    if (curve.IsNull()) return Nowhere;
    const auto record = SplineOf(curve, first, last, use.edge.Orientation() == TopAbs_REVERSED);
    if (!record) return Nowhere;
    const long index = Reserve();
    mRecords[Place(index)] = PcurveText(*record, BRep_Tool::Tolerance(use.edge));
    mSubtypes[index] = surface;
    return index;
}

// Every pair of braces counts, in the order of the text, but for those that only refer to others.
void Writer::NumberSubtypes() {
    std::map<long, long> numbers;
    for (const auto& [record, surface] : mSubtypes)
        numbers.emplace(record, static_cast<long>(numbers.size()));
    for (const auto& [record, surface] : mSubtypes) {
        if (!surface) continue;
        std::string& text = mRecords[Place(record)];
        const std::string unknown = "{ ref ? }";
        text.replace(text.find(unknown), unknown.size(),
                     "{ ref " + std::to_string(numbers.at(*surface)) + " }");
    }
}

long Writer::WriteLoop(const std::vector<TopoDS_Edge>& loop, long face, long index, long next) {
    const std::vector<long> indices = Reserve(loop.size());
    mRecords[Place(index)] =
        "loop $-1 " + Reference(next) + " " + Reference(indices.front()) + " " + Reference(face) + " #";
    for (std::size_t i = 0; i < loop.size(); ++i) {
        EdgeWork& edge = EdgeOf(loop[i], indices[i]);
        edge.uses.push_back(mCoedges.size());
        mCoedges.push_back({indices[i], indices[(i + 1) % loop.size()],
                            indices[(i + loop.size() - 1) % loop.size()], index, edge.index,
                            loop[i].Orientation() == TopAbs_REVERSED});
    }
    return index;
}

// An apex is an edge without a curve, with one coedge that is its own neighbour.
void Writer::WriteApexLoop(const TopoDS_Vertex& apex, long face, long index, long next) {
    const long coedge = Reserve();
    const long edge = Reserve();
    const long vertex = VertexOf(apex, edge);
    mRecords[Place(index)] =
        "loop $-1 " + Reference(next) + " " + Reference(coedge) + " " + Reference(face) + " #";
    mRecords[Place(coedge)] = "coedge $-1 " + Reference(coedge) + " " + Reference(coedge) + " $-1 " +
                              Reference(edge) + " forward " + Reference(index) + " $-1 #";
    mRecords[Place(edge)] = "edge $-1 " + Reference(vertex) + " " + Reference(vertex) + " " +
                            Reference(coedge) + " $-1 forward #";
}

Writer::EdgeWork& Writer::EdgeOf(const TopoDS_Edge& edge, long coedge) {
    EdgeWork& work = mEdges[edge];
    if (work.index != Nowhere) return work;
    double first = 0;
    double last = 0;
    const Handle(Geom_Curve) curve = BRep_Tool::Curve(edge, first, last);
    std::optional<CurveRecord> record;
    if (!curve.IsNull()) record = AnalyticCurve(curve);
    if (!curve.IsNull() && !record) record = SplineOf(curve, first, last);
    if (!record) {
        throw WriteFailure(FaceName() + " has an edge of the kind " + KindName(curve) +
                           ", which cannot be written");
    }
    work.index = Reserve();
    const TopoDS_Edge forward = TopoDS::Edge(edge.Oriented(TopAbs_FORWARD));
    const long start = VertexOf(TopExp::FirstVertex(forward), work.index);
    const long end = VertexOf(TopExp::LastVertex(forward), work.index);
    const long curveIndex = Reserve();
    mRecords[Place(curveIndex)] = CurveText(*record);
    if (std::holds_alternative<SplineCurveRecord>(*record)) mSubtypes[curveIndex];
    mRecords[Place(work.index)] = "edge $-1 " + Reference(start) + " " + Reference(end) + " " +
                                  Reference(coedge) + " " + Reference(curveIndex) + " forward #";
    return work;
}

long Writer::VertexOf(const TopoDS_Vertex& vertex, long edge) {
    if (vertex.IsNull()) throw WriteFailure(FaceName() + " has an edge without vertices");
    const auto [place, fresh] = mVertices.try_emplace(vertex, Nowhere);
    if (fresh) {
        place->second = Reserve();
        const long point = Reserve();
        mRecords[Place(place->second)] = "vertex $-1 " + Reference(edge) + " " + Reference(point) + " #";
        mRecords[Place(point)] = "point $-1 " + Vector(BRep_Tool::Pnt(vertex).XYZ()) + " #";
    }
    return place->second;
}

// Partners are known only now: the coedges of an edge point to each other in a ring.
void Writer::FinishCoedges() {
    std::vector<long> partner(mCoedges.size(), Nowhere);
    for (const auto& [shape, edge] : mEdges) {
        if (edge.uses.size() < 2) continue;
        for (std::size_t i = 0; i < edge.uses.size(); ++i)
            partner[edge.uses[i]] = mCoedges[edge.uses[(i + 1) % edge.uses.size()]].index;
    }
    for (std::size_t i = 0; i < mCoedges.size(); ++i) {
        const CoedgeWork& coedge = mCoedges[i];
        mRecords[Place(coedge.index)] = "coedge $-1 " + Reference(coedge.next) + " " +
                                        Reference(coedge.previous) + " " + Reference(partner[i]) + " " +
                                        Reference(coedge.edge) +
                                        (coedge.reversed ? " reversed " : " forward ") +
                                        Reference(coedge.loop) + " " + Reference(coedge.pcurve) + " #";
    }
    mCoedges.clear();
    mEdges.clear();
    mVertices.clear();
}

}  // namespace

std::vector<std::string> WriteText(const TopoDS_Shape& shape) { return WriteBodies({shape}); }

std::vector<std::string> WriteBodies(const std::vector<TopoDS_Shape>& shapes) {
    if (shapes.empty()) throw WriteFailure("there is no shape that could be written");
    std::vector<std::vector<LumpPart>> bodies;
    for (const TopoDS_Shape& shape : shapes) bodies.push_back(LumpsOf(shape));
    try {
        return Writer().Run(bodies);
    } catch (const Standard_Failure& failure) {
        throw WriteFailure(std::string("the shape cannot be written: ") + failure.DynamicType()->Name());
    }
}

}  // namespace brenvik::acis
