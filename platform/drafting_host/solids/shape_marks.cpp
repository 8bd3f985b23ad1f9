// Masses, first and second moments of four fields: the volume, and the area of plane, round and other faces.
// First moments are arrows from the centre of the volume, second moments are tensors about it; their products
// are marks. Products with an odd number of cross products change their sign in a mirror.
#include "drafting_host/solids/shape_marks.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <array>
#include <cmath>
#include <gp_Mat.hxx>
#include <gp_XYZ.hxx>

#include "drafting_host/solids/guard.h"

namespace brenvik::solids {
namespace {

constexpr std::size_t FieldCount = 4;
enum Field : std::size_t { volume, planes, rounds, others };

/// One field, in units of the solid's size: `mass`, `arrow` the first moment, `tensor` the second.
struct Moments {
    double mass = 0;
    gp_XYZ arrow{0, 0, 0};
    gp_Mat tensor{0, 0, 0, 0, 0, 0, 0, 0, 0};
};

Field FieldOf(const TopoDS_Face& face) {
    switch (BRepAdaptor_Surface(face, Standard_False).GetType()) {
        case GeomAbs_Plane:
            return planes;
        case GeomAbs_Cylinder:
        case GeomAbs_Cone:
        case GeomAbs_Sphere:
        case GeomAbs_Torus:
            return rounds;
        default:
            return others;
    }
}

/// The integral of p pT from the matrix of inertia, which is the trace times one less it.
gp_Mat SecondMoment(const gp_Mat& inertia) {
    const double half = (inertia.Value(1, 1) + inertia.Value(2, 2) + inertia.Value(3, 3)) / 2;
    gp_Mat second = inertia.Multiplied(-1);
    for (int i = 1; i <= 3; ++i) second.SetValue(i, i, half - inertia.Value(i, i));
    return second;
}

gp_Mat Square(const gp_XYZ& v) {
    gp_Mat square;
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 3; ++j) square.SetValue(i, j, v.Coord(i) * v.Coord(j));
    return square;
}

void Add(Moments& moments, const GProp_GProps& properties, const gp_XYZ& centre, double size, int dimension) {
    const double mass = properties.Mass();
    const gp_XYZ place = (properties.CentreOfMass().XYZ() - centre) / size;
    const double unit = std::pow(size, dimension);
    moments.mass += mass / unit;
    moments.arrow += place * (mass / unit);
    // The matrix of inertia is about the field's own centre.
    moments.tensor += SecondMoment(properties.MatrixOfInertia()) * (1 / (unit * size * size)) +
                      Square(place) * (mass / unit);
}

std::array<Moments, FieldCount> MomentsOf(const TopoDS_Shape& solid, double& size) {
    std::array<Moments, FieldCount> fields;
    GProp_GProps whole;
    BRepGProp::VolumeProperties(solid, whole);
    size = std::cbrt(std::abs(whole.Mass()));
    const gp_XYZ centre = whole.CentreOfMass().XYZ();
    if (size <= 0) return fields;
    Add(fields[volume], whole, centre, size, 3);
    for (TopExp_Explorer face(solid, TopAbs_FACE); face.More(); face.Next()) {
        GProp_GProps area;
        BRepGProp::SurfaceProperties(face.Current(), area);
        Add(fields[FieldOf(TopoDS::Face(face.Current()))], area, centre, size, 2);
    }
    return fields;
}

/// The axis about which a product of two symmetric tensors isn't symmetric; it turns with the solid as an
/// arrow does, but not in a mirror.
gp_XYZ Twist(const gp_Mat& a, const gp_Mat& b) {
    const gp_Mat c = a.Multiplied(b) - b.Multiplied(a);
    return {c.Value(3, 2), c.Value(1, 3), c.Value(2, 1)};
}

double Trace(const gp_Mat& m) { return m.Value(1, 1) + m.Value(2, 2) + m.Value(3, 3); }

/// Collects marks. Integrals are good to about 1e-9 of the solid's size.
class Marks {
  public:
    void Put(double value) {
        constexpr double noise = 1e-8;
        // What is small is known less well in its own measure, but a mark of 1 has to be met to a millionth.
        result.marks.push_back({value, noise + 1e-7 * std::abs(value)});
    }
    /// A product that counts by its sign; factors of this size may leave noise of a solid that is its own
    /// mirror image.
    void PutProduct(double value, double size) {
        constexpr double noise = 1e-8, sameProduct = 1e-3;
        result.marks.push_back({value, noise * size + sameProduct * std::abs(value)});
    }
    ShapeMarks result;
};

double Size(const gp_Mat& m) { return std::sqrt(Trace(m.Multiplied(m))); }

/// How long an arrow is, or where it is next to nothing, the part of its longest possible length that noise
/// may pretend.
double LengthOf(const Moments& field) {
    constexpr double pretended = 1e-4;
    return field.arrow.Modulus() + pretended * std::sqrt(field.mass * std::abs(Trace(field.tensor)));
}

void PutMirrorMarks(const std::array<Moments, FieldCount>& fields, Marks& marks) {
    for (std::size_t i = 1; i < FieldCount; ++i) {
        const gp_XYZ& arrow = fields[i].arrow;
        const double length = LengthOf(fields[i]);
        for (std::size_t a = 0; a < FieldCount; ++a) {
            const gp_XYZ first = arrow.Multiplied(fields[a].tensor);
            const double size = Size(fields[a].tensor);
            for (std::size_t b = a + 1; b < FieldCount; ++b) {
                const double both = size * Size(fields[b].tensor);
                marks.PutProduct(arrow.Dot(first.Crossed(arrow.Multiplied(fields[b].tensor))),
                                 length * length * length * both);
                marks.PutProduct(arrow.Dot(Twist(fields[a].tensor, fields[b].tensor)), length * both);
            }
            for (std::size_t j = i + 1; j < FieldCount; ++j)
                marks.PutProduct(fields[j].arrow.Dot(arrow.Crossed(first)),
                                 length * length * LengthOf(fields[j]) * size);
        }
    }
}

}  // namespace

ShapeMarks MarksOf(const TopoDS_Shape& solid) {
    return Guarded("marks of a solid", [&] {
        double size = 0;
        const std::array<Moments, FieldCount> fields = MomentsOf(solid, size);
        Marks marks;
        marks.result.marks.push_back({size, 1e-7 * size});
        for (std::size_t i = 0; i < FieldCount; ++i) {
            marks.Put(fields[i].mass);
            for (std::size_t j = i; j < FieldCount; ++j) {
                marks.Put(fields[i].arrow.Dot(fields[j].arrow));
                marks.Put(Trace(fields[i].tensor.Multiplied(fields[j].tensor)));
            }
            marks.Put(Trace(fields[i].tensor));
            marks.Put(Trace(fields[i].tensor.Multiplied(fields[i].tensor).Multiplied(fields[i].tensor)));
        }
        PutMirrorMarks(fields, marks);
        return marks.result;
    });
}

}  // namespace brenvik::solids
