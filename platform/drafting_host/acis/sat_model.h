// The records of ACIS text as typed values: topology with record indices in place of pointers, and
// geometry as numbers. Layout differences between versions end here.
#pragma once

#include "drafting_host/acis/sat_records.h"
#include "drafting_host/acis/spline_records.h"

#include <gp_XYZ.hxx>

#include <array>
#include <optional>
#include <variant>
#include <vector>

namespace brenvik::acis {

constexpr long Nowhere = -1;

struct BodyRecord {
    long lump = Nowhere, wire = Nowhere, transform = Nowhere;
};
struct LumpRecord {
    long next = Nowhere, shell = Nowhere;
};
struct ShellRecord {
    long next = Nowhere, subshell = Nowhere, face = Nowhere, wire = Nowhere;
};
struct FaceRecord {
    long next = Nowhere, loop = Nowhere, shell = Nowhere, surface = Nowhere;
    bool reversed = false;     ///< The face's outside is the surface's inside.
    bool doubleSided = false;  ///< A sheet rather than the skin of a solid.
};
struct LoopRecord {
    long next = Nowhere, coedge = Nowhere;
};
struct CoedgeRecord {
    long next = Nowhere, edge = Nowhere, pcurve = Nowhere;
    bool reversed = false;
};
struct EdgeRecord {
    long start = Nowhere, end = Nowhere, curve = Nowhere;
    bool reversed = false;  ///< Runs against its curve.
};
/// Places a body: a point p goes to scale * (p * rotation) + translation, p a row.
struct TransformRecord {
    std::array<gp_XYZ, 3> rows{gp_XYZ(1, 0, 0), gp_XYZ(0, 1, 0), gp_XYZ(0, 0, 1)};
    gp_XYZ translation{0, 0, 0};
    double scale = 1;
    /// What its mark says of mirroring; the numbers have it, too. Null where the record ends before.
    std::optional<bool> reflects;
    std::string unknownMark;  ///< The first mark that is none; empty where all are.
};

struct PlaneRecord {
    gp_XYZ origin, normal, uDirection;
};
/// Cylinders and cones; `major` reaches from the axis to the base ellipse.
struct ConeRecord {
    gp_XYZ centre, axis, major;
    double ratio = 1, sine = 0, cosine = 1;
};
struct SphereRecord {
    gp_XYZ centre, equator, pole;
    double radius = 0;  ///< Negative where the inside is the outside.
};
struct TorusRecord {
    gp_XYZ centre, axis, uDirection;
    double major = 0, minor = 0;  ///< A negative minor radius turns the surface inside out.
};
using SurfaceRecord = std::variant<PlaneRecord, ConeRecord, SphereRecord, TorusRecord, SplineSurfaceRecord>;

struct LineRecord {
    gp_XYZ root, direction;
};
struct EllipseRecord {
    gp_XYZ centre, normal, major;
    double ratio = 1;
};
using CurveRecord = std::variant<LineRecord, EllipseRecord, SplineCurveRecord>;

/// Gives records out by index and kind. Each function throws BadRecord when the index leads nowhere,
/// to a record of another kind, or to one with damaged fields; kinds of geometry that are not read
/// are refused by their names.
class Model {
  public:
    explicit Model(const RecordText& source);

    std::size_t Count() const { return mText.records.size(); }
    const Record& At(long index) const { return mText.records[static_cast<std::size_t>(index)]; }

    BodyRecord Body(long index) const;
    LumpRecord Lump(long index) const;
    ShellRecord Shell(long index) const;
    FaceRecord Face(long index) const;
    LoopRecord Loop(long index) const;
    CoedgeRecord Coedge(long index) const;
    EdgeRecord Edge(long index) const;
    gp_XYZ VertexPoint(long index) const;
    TransformRecord Transform(long index) const;
    SurfaceRecord Surface(long index) const;
    CurveRecord Curve(long index) const;
    /// The curve of a coedge in the parameters of its face's surface; empty where the record only points to
    /// one that belongs to the curve in space.
    std::optional<PlaneSplineRecord> Pcurve(long index) const;

  private:
    /// Where the words within a pair of braces begin.
    struct Subtype {
        long record = Nowhere;
        std::size_t place = 0;
    };

    FieldCursor Open(long index, std::string_view kind) const;
    FieldCursor OpenAny(long index, std::string_view kind) const;
    double Length(FieldCursor& fields, long index, std::string_view what) const;
    gp_XYZ Vector(FieldCursor& fields, long index, std::string_view what) const;
    ConeRecord Cone(FieldCursor& fields, long index) const;
    TorusRecord Torus(FieldCursor& fields, long index) const;
    SplineCurveRecord FreeCurve(FieldCursor& fields, long index) const;
    SplineSurfaceRecord FreeSurface(FieldCursor& fields, long index) const;
    Subtype Braces(FieldCursor& fields, long index) const;
    FieldCursor Within(const Subtype& subtype) const;
    const RecordText& mText;
    std::vector<Subtype> mSubtypes;  // in the order of their opening braces, which is how they are numbered
};

}  // namespace brenvik::acis
