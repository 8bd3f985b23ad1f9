// Record layouts by version. Up to 600 a record begins with its attribute; from 700 on one or more
// numbers and the history pointer follow, and later versions put more behind the fields used here.
#include "drafting_host/acis/sat_model.h"

#include <cmath>

namespace brenvik::acis {
namespace {

constexpr int FirstWithHistory = 700;
constexpr int FirstWithWires = 107;

std::string Quoted(std::string_view text) {
    std::string shown;
    for (const char c : text.substr(0, 60)) shown.push_back(c >= ' ' && c <= '~' ? c : '?');
    return "'" + shown + "'";
}

void SkipBound(FieldCursor& fields) {
    if (fields.TakeBound()) fields.Number("parameter bound");
}

// The flags of a transform are words, choices in binary data and numbers before version 200.
std::size_t FirstFlag(const std::vector<Field>& fields) {
    constexpr std::size_t flagCount = 3;
    std::size_t numbers = 0;
    for (std::size_t at = 0; at < fields.size(); ++at) {
        if (fields[at].kind == Field::Kind::Word || fields[at].kind == Field::Kind::Choice) return at;
        if (fields[at].kind == Field::Kind::Number) ++numbers;
    }
    return numbers < flagCount ? 0 : fields.size() - flagCount;
}

/// The words of the marks, for no and for yes.
constexpr std::array<std::array<std::string_view, 2>, 3> TransformMarks{
    {{"no_rotate", "rotate"}, {"no_reflect", "reflect"}, {"no_shear", "shear"}}};

/// Null for a mark that is none.
std::optional<bool> MarkOf(const Field& field, const std::array<std::string_view, 2>& words) {
    const bool isWord = field.kind == Field::Kind::Word;
    for (std::size_t i = 0; i < words.size(); ++i)
        if (isWord ? field.text == words[i] : field.number == static_cast<double>(i)) return i == 1;
    return std::nullopt;
}

void TakeMarks(const std::vector<Field>& fields, std::size_t first, TransformRecord& transform) {
    constexpr std::size_t reflection = 1;
    for (std::size_t i = 0; i < TransformMarks.size() && first + i < fields.size(); ++i) {
        const Field& field = fields[first + i];
        const std::optional<bool> mark = MarkOf(field, TransformMarks[i]);
        if (i == reflection) transform.reflects = mark;
        if (!mark && transform.unknownMark.empty())
            transform.unknownMark =
                Quoted(field.kind == Field::Kind::Choice ? std::to_string(field.number) : field.text);
    }
}

}  // namespace

Model::Model(const RecordText& source) : mText(source) {
    for (std::size_t i = 0; i < mText.records.size(); ++i) {
        const Record& record = mText.records[i];
        // Names in attributes may hold braces of their own.
        if (record.name.ends_with("attrib")) continue;
        for (std::size_t at = 0; at + 1 < record.fields.size(); ++at) {
            if (record.fields[at].text == "{" && record.fields[at + 1].text != "ref")
                mSubtypes.push_back({static_cast<long>(i), at + 1});
        }
    }
}

FieldCursor Model::OpenAny(long index, std::string_view kind) const {
    if (index < 0 || static_cast<std::size_t>(index) >= Count()) {
        throw BadRecord(index, "expected a " + std::string(kind) + " record at index " +
                                   std::to_string(index) + ", found " +
                                   (index < 0 ? "no pointer" : "the end of the text"));
    }
    FieldCursor fields(At(index), index);
    fields.Pointer("attribute");
    if (mText.header.version >= FirstWithHistory) {
        fields.SkipNumbers();
        fields.Pointer("history");
    }
    return fields;
}

FieldCursor Model::Open(long index, std::string_view kind) const {
    if (index >= 0 && static_cast<std::size_t>(index) < Count() && At(index).name != kind) {
        throw BadRecord(index,
                        "expected a " + std::string(kind) + " record, found " + Quoted(At(index).name));
    }
    return OpenAny(index, kind);
}

double Model::Length(FieldCursor& fields, long index, std::string_view what) const {
    const double value = fields.Number(what);
    if (std::abs(value) > LongestLength)
        throw BadRecord(index, std::string(At(index).name) + ": " + std::string(what) + " is out of range");
    return value;
}

gp_XYZ Model::Vector(FieldCursor& fields, long index, std::string_view what) const {
    const double x = Length(fields, index, what);
    const double y = Length(fields, index, what);
    const double z = Length(fields, index, what);
    return {x, y, z};
}

BodyRecord Model::Body(long index) const {
    FieldCursor fields = Open(index, "body");
    BodyRecord body;
    fields.SkipNumbers();  // from 3000 on
    body.lump = fields.Pointer("lump");
    body.wire = fields.Pointer("wire");
    body.transform = fields.Pointer("transform");
    return body;
}

LumpRecord Model::Lump(long index) const {
    FieldCursor fields = Open(index, "lump");
    LumpRecord lump;
    lump.next = fields.Pointer("next lump");
    lump.shell = fields.Pointer("shell");
    return lump;
}

ShellRecord Model::Shell(long index) const {
    FieldCursor fields = Open(index, "shell");
    ShellRecord shell;
    shell.next = fields.Pointer("next shell");
    shell.subshell = fields.Pointer("subshell");
    shell.face = fields.Pointer("face");
    // Before version 107 the pointer to the lump follows, the last of the record.
    const long wire = fields.Pointer("wire");
    if (!fields.AtEnd() || mText.header.version >= FirstWithWires) shell.wire = wire;
    return shell;
}

FaceRecord Model::Face(long index) const {
    FieldCursor fields = Open(index, "face");
    FaceRecord face;
    face.next = fields.Pointer("next face");
    face.loop = fields.Pointer("loop");
    face.shell = fields.Pointer("shell");
    fields.Pointer("subshell");
    face.surface = fields.Pointer("surface");
    face.reversed = fields.Choice("sense", "forward", "reversed");
    face.doubleSided = fields.Choice("sides", "single", "double");
    if (face.doubleSided && fields.Choice("containment", "out", "in"))
        throw BadRecord(index, "a sheet inside a solid (double in) is not read; expected double out");
    return face;
}

LoopRecord Model::Loop(long index) const {
    FieldCursor fields = Open(index, "loop");
    LoopRecord loop;
    loop.next = fields.Pointer("next loop");
    loop.coedge = fields.Pointer("coedge");
    return loop;
}

CoedgeRecord Model::Coedge(long index) const {
    FieldCursor fields = Open(index, "coedge");
    CoedgeRecord coedge;
    coedge.next = fields.Pointer("next coedge");
    fields.Pointer("previous coedge");
    fields.Pointer("partner");
    coedge.edge = fields.Pointer("edge");
    coedge.reversed = fields.Choice("sense", "forward", "reversed");
    // The loop, which is how the coedge was reached, then the curve on the surface; both are left out of
    // damaged texts that can be read all the same.
    if (fields.AtPointer()) fields.Pointer("loop");
    fields.SkipNumbers();
    if (fields.AtPointer()) coedge.pcurve = fields.Pointer("curve on the surface");
    return coedge;
}

EdgeRecord Model::Edge(long index) const {
    FieldCursor fields = Open(index, "edge");
    EdgeRecord edge;
    edge.start = fields.Pointer("start vertex");
    fields.SkipNumbers();
    edge.end = fields.Pointer("end vertex");
    fields.SkipNumbers();
    fields.Pointer("coedge");
    edge.curve = fields.Pointer("curve");
    edge.reversed = fields.Choice("sense", "forward", "reversed");
    return edge;
}

gp_XYZ Model::VertexPoint(long index) const {
    FieldCursor fields = Open(index, "vertex");
    fields.Pointer("edge");
    fields.SkipNumbers();
    const long point = fields.Pointer("point");
    FieldCursor place = Open(point, "point");
    return Vector(place, point, "coordinate");
}

TransformRecord Model::Transform(long index) const {
    if (index >= 0 && static_cast<std::size_t>(index) < Count() && At(index).name != "transform")
        Open(index, "transform");
    if (index < 0 || static_cast<std::size_t>(index) >= Count()) OpenAny(index, "transform");
    // Writers disagree on what stands before the thirteen numbers, never on the words behind them.
    const std::vector<Field>& fields = At(index).fields;
    const std::size_t words = FirstFlag(fields);
    constexpr std::size_t numberCount = 13;
    std::array<double, numberCount> numbers{};
    if (words < numberCount) throw BadRecord(index, "transform: expected thirteen numbers before its flags");
    for (std::size_t i = 0; i < numberCount; ++i) {
        const Field& field = fields[words - numberCount + i];
        if (field.kind != Field::Kind::Number || std::abs(field.number) > LongestLength)
            throw BadRecord(index, "transform: expected a number, found " + Quoted(field.text));
        numbers[i] = field.number;
    }
    TransformRecord transform;
    for (std::size_t row = 0; row < 3; ++row)
        transform.rows[row] = gp_XYZ(numbers[3 * row], numbers[3 * row + 1], numbers[3 * row + 2]);
    transform.translation = gp_XYZ(numbers[9], numbers[10], numbers[11]);
    transform.scale = numbers[12];
    TakeMarks(fields, words, transform);
    return transform;
}

ConeRecord Model::Cone(FieldCursor& fields, long index) const {
    ConeRecord cone;
    cone.centre = Vector(fields, index, "centre");
    cone.axis = Vector(fields, index, "axis");
    cone.major = Vector(fields, index, "major axis");
    cone.ratio = fields.Number("ratio");
    SkipBound(fields);
    SkipBound(fields);
    cone.sine = fields.Number("sine");
    cone.cosine = fields.Number("cosine");
    return cone;
}

TorusRecord Model::Torus(FieldCursor& fields, long index) const {
    TorusRecord torus;
    torus.centre = Vector(fields, index, "centre");
    torus.axis = Vector(fields, index, "axis");
    torus.major = Length(fields, index, "major radius");
    torus.minor = Length(fields, index, "minor radius");
    torus.uDirection = Vector(fields, index, "direction");
    return torus;
}

SurfaceRecord Model::Surface(long index) const {
    FieldCursor fields = OpenAny(index, "surface");
    const std::string_view kind = At(index).name;
    if (kind == "plane-surface") {
        PlaneRecord plane;
        plane.origin = Vector(fields, index, "origin");
        plane.normal = Vector(fields, index, "normal");
        plane.uDirection = Vector(fields, index, "direction");
        return plane;
    }
    if (kind == "cone-surface") return Cone(fields, index);
    if (kind == "sphere-surface") {
        SphereRecord sphere;
        sphere.centre = Vector(fields, index, "centre");
        sphere.radius = Length(fields, index, "radius");
        sphere.equator = Vector(fields, index, "direction");
        sphere.pole = Vector(fields, index, "pole");
        return sphere;
    }
    if (kind == "torus-surface") return Torus(fields, index);
    if (kind == "spline-surface") return FreeSurface(fields, index);
    throw BadRecord(index, "a surface of the kind " + Quoted(kind) +
                               " is not read; expected a plane, cone, sphere, torus or spline surface");
}

CurveRecord Model::Curve(long index) const {
    FieldCursor fields = OpenAny(index, "curve");
    const std::string_view kind = At(index).name;
    if (kind == "straight-curve") {
        LineRecord line;
        line.root = Vector(fields, index, "root");
        line.direction = Vector(fields, index, "direction");
        return line;
    }
    if (kind == "ellipse-curve") {
        EllipseRecord ellipse;
        ellipse.centre = Vector(fields, index, "centre");
        ellipse.normal = Vector(fields, index, "normal");
        ellipse.major = Vector(fields, index, "major axis");
        ellipse.ratio = fields.Number("ratio");
        return ellipse;
    }
    if (kind == "intcurve-curve") return FreeCurve(fields, index);
    throw BadRecord(index, "a curve of the kind " + Quoted(kind) +
                               " is not read; expected a straight, an ellipse or an intcurve curve");
}

// A definition in braces may be written elsewhere, with only its number here.
Model::Subtype Model::Braces(FieldCursor& fields, long index) const {
    const std::string_view brace = fields.Word("opening brace");
    if (brace != "{") throw BadRecord(index, "expected an opening brace, found " + Quoted(brace));
    const Subtype here{index, fields.Position()};
    if (fields.Word("subtype") != "ref") return here;
    const double number = fields.Number("number of the subtype");
    if (!(number >= 0 && number < static_cast<double>(mSubtypes.size())) || number != std::floor(number))
        throw BadRecord(index, "a reference to braces that the text does not have");
    return mSubtypes[static_cast<std::size_t>(number)];
}

FieldCursor Model::Within(const Subtype& subtype) const {
    FieldCursor fields(At(subtype.record), subtype.record);
    fields.Seek(subtype.place);
    return fields;
}

// Curves that are exact and curves that are made of something else alike begin with a spline.
SplineCurveRecord Model::FreeCurve(FieldCursor& fields, long index) const {
    const bool reversed = fields.Choice("sense", "forward", "reversed");
    const Subtype subtype = Braces(fields, index);
    FieldCursor inner = Within(subtype);
    const std::string_view kind = inner.Word("subtype");
    inner.SkipNumbers();
    const std::size_t start = inner.Position();
    if (inner.AtWord() && inner.Word("kept as") != "full") inner.Seek(start);
    const std::size_t spline = inner.Position();
    const std::string_view word = inner.AtWord() ? inner.Word("kind of spline") : std::string_view();
    if (word != "nubs" && word != "nurbs") {
        throw BadRecord(
            index, "a free curve of the kind " + Quoted(kind) + " that has no spline of its own is not read");
    }
    inner.Seek(spline);
    SplineCurveRecord curve = ReadSplineCurve(inner, subtype.record);
    curve.reversed = reversed;
    return curve;
}

// Exact surfaces begin with their spline; others say first what they are made of and close with the spline
// that stands in for them. The spline of a surface has two degrees, that of a curve one.
SplineSurfaceRecord Model::FreeSurface(FieldCursor& fields, long index) const {
    const bool reversed = fields.Choice("sense", "forward", "reversed");
    const Subtype subtype = Braces(fields, index);
    const std::vector<Field>& all = At(subtype.record).fields;
    std::optional<std::size_t> spline;
    int depth = 0;
    for (std::size_t at = subtype.place; at < all.size() && depth >= 0; ++at) {
        const std::string_view word = all[at].text;
        if (word == "{") ++depth;
        if (word == "}") --depth;
        if (depth != 0 || (word != "nubs" && word != "nurbs") || at + 2 >= all.size()) continue;
        if (all[at + 1].kind == Field::Kind::Number && all[at + 2].kind == Field::Kind::Number) spline = at;
    }
    if (!spline) {
        throw BadRecord(index, "a free surface of the kind " + Quoted(all[subtype.place].text) +
                                   " that has no spline of its own is not read");
    }
    FieldCursor inner(At(subtype.record), subtype.record);
    inner.Seek(*spline);
    SplineSurfaceRecord surface = ReadSplineSurface(inner, subtype.record);
    surface.reversed = reversed;
    return surface;
}

std::optional<PlaneSplineRecord> Model::Pcurve(long index) const {
    FieldCursor fields = Open(index, "pcurve");
    if (fields.Number("kind of curve on a surface") != 0) return std::nullopt;
    fields.Choice("sense", "forward", "reversed");
    const Subtype subtype = Braces(fields, index);
    FieldCursor inner = Within(subtype);
    inner.Word("subtype");
    inner.SkipNumbers();
    return ReadPlaneSpline(inner, subtype.record);
}

}  // namespace brenvik::acis
