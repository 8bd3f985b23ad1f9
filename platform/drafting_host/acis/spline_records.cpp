// Reading and writing the numbers of splines. Damaged texts can claim any count, so nothing is set aside
// before the fields for it are known to be there.
#include "drafting_host/acis/spline_records.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/noise.h"

namespace brenvik::acis {
namespace {

// The modeller's own limit.
constexpr int HighestDegree = 25;
// Lines in a drawing are cut at 255 characters; this many knots always fit.
constexpr std::size_t PairsInLine = 5;

int Integer(FieldCursor& fields, long record, std::string_view what, int least, int most) {
    const double value = fields.Number(what);
    if (value != std::floor(value) || value < least || value > most) {
        throw BadRecord(record, "a spline: " + std::string(what) + " of " + NumberText(value) +
                                    "; expected a whole number from " + std::to_string(least) + " to " +
                                    std::to_string(most));
    }
    return static_cast<int>(value);
}

bool Rational(FieldCursor& fields, long record) {
    const std::string_view word = fields.Word("kind of spline");
    if (word == "nubs") return false;
    if (word == "nurbs") return true;
    throw BadRecord(record, "expected the word nubs or nurbs before the numbers of a spline");
}

int KnotCount(FieldCursor& fields, long record) {
    const int most = static_cast<int>(std::min<std::size_t>(fields.Left() / 2, 1000000));
    return Integer(fields, record, "number of knots", 2, std::max(2, most));
}

void ReadKnots(FieldCursor& fields, long record, int count, SplineKnots& knots) {
    for (int i = 0; i < count; ++i) {
        const double value = fields.Number("knot");
        if (std::abs(value) > LongestLength || (i > 0 && !(value > knots.values.back())))
            throw BadRecord(record, "a spline whose knots do not rise");
        knots.values.push_back(value);
        knots.repetitions.push_back(Integer(fields, record, "repetitions of a knot", 1, knots.degree));
    }
}

void RequirePoles(const FieldCursor& fields, long record, std::size_t count, std::size_t numbersEach) {
    if (count < 2 || count > fields.Left() / numbersEach) {
        throw BadRecord(record, "a spline of " + std::to_string(count) + " poles with " +
                                    std::to_string(fields.Left()) + " fields left in the record");
    }
}

double Coordinate(FieldCursor& fields, long record) {
    const double value = fields.Number("pole");
    if (std::abs(value) > LongestLength) throw BadRecord(record, "a spline: a pole is out of range");
    return value;
}

double Weight(FieldCursor& fields, long record) {
    const double weight = fields.Number("weight");
    if (!(weight > 1e-9 && weight < LongestLength))
        throw BadRecord(record, "a spline: a weight is out of range");
    return weight;
}

void ReadPoles(FieldCursor& fields, long record, std::size_t count, bool rational, std::vector<gp_XYZ>& poles,
               std::vector<double>& weights) {
    RequirePoles(fields, record, count, rational ? 4 : 3);
    poles.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double x = Coordinate(fields, record);
        const double y = Coordinate(fields, record);
        const double z = Coordinate(fields, record);
        poles.emplace_back(x, y, z);
        if (rational) weights.push_back(Weight(fields, record));
    }
}

std::string KnotText(const SplineKnots& knots) {
    std::string text;
    for (std::size_t i = 0; i < knots.values.size(); ++i) {
        if (i > 0) text += i % PairsInLine == 0 ? '\n' : ' ';
        text += NumberText(knots.values[i]) + ' ' + std::to_string(knots.repetitions[i]);
    }
    return text + '\n';
}

std::string PoleText(const std::vector<gp_XYZ>& poles, const std::vector<double>& weights) {
    std::string text;
    for (std::size_t i = 0; i < poles.size(); ++i) {
        text += NumberText(poles[i].X()) + ' ' + NumberText(poles[i].Y()) + ' ' + NumberText(poles[i].Z());
        if (!weights.empty()) text += ' ' + NumberText(weights[i]);
        text += '\n';
    }
    return text;
}

const char* Sense(bool reversed) { return reversed ? "reversed" : "forward"; }

}  // namespace

std::size_t SplineKnots::PoleCount() const {
    long sum = 1 - degree;
    for (const int repetition : repetitions) sum += repetition;
    return sum > 0 ? static_cast<std::size_t>(sum) : 0;
}

SplineCurveRecord ReadSplineCurve(FieldCursor& fields, long record) {
    SplineCurveRecord curve;
    const bool rational = Rational(fields, record);
    curve.knots.degree = Integer(fields, record, "degree", 1, HighestDegree);
    fields.SkipWordOrNumber("closure");
    ReadKnots(fields, record, KnotCount(fields, record), curve.knots);
    ReadPoles(fields, record, curve.knots.PoleCount(), rational, curve.poles, curve.weights);
    return curve;
}

PlaneSplineRecord ReadPlaneSpline(FieldCursor& fields, long record) {
    PlaneSplineRecord curve;
    const bool rational = Rational(fields, record);
    curve.knots.degree = Integer(fields, record, "degree", 1, HighestDegree);
    fields.SkipWordOrNumber("closure");
    ReadKnots(fields, record, KnotCount(fields, record), curve.knots);
    const std::size_t count = curve.knots.PoleCount();
    RequirePoles(fields, record, count, rational ? 3 : 2);
    for (std::size_t i = 0; i < count; ++i) {
        const double u = Coordinate(fields, record);
        const double v = Coordinate(fields, record);
        curve.poles.emplace_back(u, v);
        if (rational) curve.weights.push_back(Weight(fields, record));
    }
    return curve;
}

SplineSurfaceRecord ReadSplineSurface(FieldCursor& fields, long record) {
    SplineSurfaceRecord surface;
    const bool rational = Rational(fields, record);
    surface.u.degree = Integer(fields, record, "degree", 1, HighestDegree);
    surface.v.degree = Integer(fields, record, "degree", 1, HighestDegree);
    if (rational) fields.SkipWordOrNumber("rational in");
    // How u and v end and where they shrink to a point: said again by the poles themselves.
    for (const std::string_view what : {"closure", "closure", "singularity", "singularity"})
        fields.SkipWordOrNumber(what);
    const int uCount = KnotCount(fields, record);
    const int vCount = KnotCount(fields, record);
    ReadKnots(fields, record, uCount, surface.u);
    ReadKnots(fields, record, vCount, surface.v);
    const std::size_t uPoles = surface.u.PoleCount();
    const std::size_t vPoles = surface.v.PoleCount();
    if (uPoles < 2 || vPoles < 2) throw BadRecord(record, "a spline surface with a single row of poles");
    ReadPoles(fields, record, uPoles * vPoles, rational, surface.poles, surface.weights);
    return surface;
}

std::string SplineCurveText(const SplineCurveRecord& curve) {
    return std::string("intcurve-curve $-1 ") + Sense(curve.reversed) + " { exactcur " +
           (curve.weights.empty() ? "nubs " : "nurbs ") + std::to_string(curve.knots.degree) + " open " +
           std::to_string(curve.knots.values.size()) + '\n' + KnotText(curve.knots) +
           PoleText(curve.poles, curve.weights) +
           "0\nnull_surface\nnull_surface\nnullbs\nnullbs\nI I\n0\n0\n0\nF 1 F 0 } I I #";
}

std::string SplineSurfaceText(const SplineSurfaceRecord& surface) {
    return std::string("spline-surface $-1 ") + Sense(surface.reversed) + " { exactsur " +
           (surface.weights.empty() ? "nubs " : "nurbs ") + std::to_string(surface.u.degree) + ' ' +
           std::to_string(surface.v.degree) + (surface.weights.empty() ? "" : " both") +
           " open open none none " + std::to_string(surface.u.values.size()) + ' ' +
           std::to_string(surface.v.values.size()) + '\n' + KnotText(surface.u) + KnotText(surface.v) +
           PoleText(surface.poles, surface.weights) + "0\n0\n0\n0\n0\n0\n0\nF 1 F 0 F 1 F 0 } I I I I #";
}

std::string PcurveText(const PlaneSplineRecord& curve, double misfit) {
    std::string text = std::string("pcurve $-1 0 forward { exppc ") +
                       (curve.weights.empty() ? "nubs " : "nurbs ") + std::to_string(curve.knots.degree) +
                       " open " + std::to_string(curve.knots.values.size()) + '\n' + KnotText(curve.knots);
    for (std::size_t i = 0; i < curve.poles.size(); ++i) {
        text += NumberText(curve.poles[i].X()) + ' ' + NumberText(curve.poles[i].Y());
        if (!curve.weights.empty()) text += ' ' + NumberText(curve.weights[i]);
        text += '\n';
    }
    return text + NumberText(misfit) + "\nspline forward { ref ? } I I I I } 0 0 #";
}

std::string NumberText(double value) {
    if (!std::isfinite(value)) throw WriteFailure("a coordinate is not a number");
    char text[32];
    const auto [end, error] = std::to_chars(text, text + sizeof text, NoiseAsZero(value));
    return error == std::errc() ? std::string(text, end) : std::string("0");
}

}  // namespace brenvik::acis
