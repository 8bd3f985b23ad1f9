// Matrices of the host's moves, built so that zeros and ones stay zeros and ones.
#include "drafting_host/document/geometry/similarity.h"

#include <gp_Ax1.hxx>
#include <gp_Mat.hxx>
#include <gp_Pnt.hxx>

#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/solids/clean_entry.h"
#include "drafting_host/solids/transform.h"

namespace brenvik {

using namespace vectors;

namespace {

Point3 Clean(const Point3& row) {
    return {solids::CleanEntry(row.x), solids::CleanEntry(row.y), solids::CleanEntry(row.z)};
}

std::array<Point3, 3> Transposed(const std::array<Point3, 3>& rows) {
    return {Point3{rows[0].x, rows[1].x, rows[2].x}, Point3{rows[0].y, rows[1].y, rows[2].y},
            Point3{rows[0].z, rows[1].z, rows[2].z}};
}

double Determinant(const std::array<Point3, 3>& rows) { return Dot(rows[0], Cross(rows[1], rows[2])); }

void RequireFinite(const Point3& p) {
    if (!Finite(p)) throw host_failure::InvalidArgument("a coordinate is no finite number");
}

}  // namespace

Similarity Similarity::Shift(const Point3& vector) {
    RequireFinite(vector);
    Similarity result;
    result.mShift = vector;
    return result;
}

Similarity Similarity::Turn(const Point3& axisFrom, const Point3& axisTo, double angle) {
    RequireFinite(axisFrom);
    RequireFinite(axisTo);
    if (!std::isfinite(angle)) throw host_failure::InvalidArgument("the angle is no finite number");
    if (Distance(axisFrom, axisTo) == 0)
        throw host_failure::InvalidArgument("the two points of the axis coincide");
    const Point3 n = Unit(axisTo - axisFrom);
    const auto [sine, cosine] = OfAngle(angle);
    const double rest = 1 - cosine;
    Similarity result;
    result.mRows = {
        Clean({cosine + n.x * n.x * rest, n.x * n.y * rest - n.z * sine, n.x * n.z * rest + n.y * sine}),
        Clean({n.y * n.x * rest + n.z * sine, cosine + n.y * n.y * rest, n.y * n.z * rest - n.x * sine}),
        Clean({n.z * n.x * rest - n.y * sine, n.z * n.y * rest + n.x * sine, cosine + n.z * n.z * rest})};
    result.mOnlyShifts = false;
    result.mShift = axisFrom - result.Vector(axisFrom);
    return result;
}

Similarity Similarity::Scale(const Point3& base, double factor) {
    RequireFinite(base);
    if (!(factor > 0) || !std::isfinite(factor))
        throw host_failure::InvalidArgument("a scale factor has to be above 0");
    Similarity result;
    result.mRows = {Point3{factor, 0, 0}, Point3{0, factor, 0}, Point3{0, 0, factor}};
    result.mScale = factor;
    result.mOnlyShifts = factor == 1;
    if (factor != 1) result.mShift = base * (1 - factor);
    return result;
}

Similarity Similarity::Mirror(const Point3& point, const Point3& normal) {
    RequireFinite(point);
    RequireFinite(normal);
    if (Length(normal) == 0) throw host_failure::InvalidArgument("the points give no mirror plane");
    const Point3 n = Unit(normal);
    Similarity result;
    result.mRows = {Clean({1 - 2 * n.x * n.x, -2 * n.x * n.y, -2 * n.x * n.z}),
                    Clean({-2 * n.y * n.x, 1 - 2 * n.y * n.y, -2 * n.y * n.z}),
                    Clean({-2 * n.z * n.x, -2 * n.z * n.y, 1 - 2 * n.z * n.z})};
    result.mShift = n * (2 * Dot(point, n));
    result.mMirrors = true;
    result.mOnlyShifts = false;
    return result;
}

Similarity Similarity::FromFrame(const Point3& origin, const Point3& xAxis, const Point3& yAxis) {
    RequireFinite(origin);
    const Point3 x = Clean(Unit(xAxis));
    const Point3 z = Clean(Unit(Cross(x, yAxis)));
    if (!Finite(x) || !Finite(z) || Length(x) == 0 || Length(z) == 0)
        throw host_failure::InvalidArgument("the axes of a coordinate system have to stand square");
    const Point3 y = Clean(Unit(Cross(z, x)));
    Similarity result;
    result.mRows = Transposed({x, y, z});
    result.mShift = origin;
    result.mOnlyShifts = x == Point3{1, 0, 0} && y == Point3{0, 1, 0};
    return result;
}

Similarity Similarity::FromMatrix(const Matrix4& m) {
    Similarity result;
    for (std::size_t row = 0; row < 3; ++row) {
        result.mRows[row] = {m[row][0], m[row][1], m[row][2]};
        RequireFinite(result.mRows[row]);
    }
    result.mShift = {m[0][3], m[1][3], m[2][3]};
    RequireFinite(result.mShift);
    const double scale = Length(result.mRows[0]);
    // Angles of a matrix typed or computed by others are good to a few digits less than a double's.
    const double tolerance = 1e-9 * scale * scale;
    bool even = scale > 0 && m[3] == std::array<double, 4>{0, 0, 0, 1};
    for (std::size_t i = 0; i < 3 && even; ++i) {
        even = std::abs(Dot(result.mRows[i], result.mRows[i]) - scale * scale) <= tolerance &&
               std::abs(Dot(result.mRows[i], result.mRows[(i + 1) % 3])) <= tolerance;
    }
    if (!even) throw host_failure::InvalidArgument("the matrix is not a rigid move with an even scale");
    for (Point3& row : result.mRows) row = Clean(row * (1 / scale)) * scale;
    result.mScale = scale;
    result.mMirrors = Determinant(result.mRows) < 0;
    result.mOnlyShifts = result.mRows == Similarity().mRows;
    return result;
}

Similarity Similarity::Inverse() const {
    Similarity result = *this;
    const double factor = 1 / (mScale * mScale);
    result.mRows = Transposed(mRows);
    for (Point3& row : result.mRows) row = row * factor;
    result.mScale = 1 / mScale;
    result.mShift = result.Vector(mShift) * -1.0 + Point3{};
    return result;
}

Similarity Similarity::Then(const Similarity& next) const {
    Similarity result;
    const std::array<Point3, 3> columns = Transposed(mRows);
    for (std::size_t row = 0; row < 3; ++row) {
        result.mRows[row] = {Dot(next.mRows[row], columns[0]), Dot(next.mRows[row], columns[1]),
                             Dot(next.mRows[row], columns[2])};
    }
    result.mShift = next.Point(mShift);
    result.mScale = mScale * next.mScale;
    result.mMirrors = mMirrors != next.mMirrors;
    result.mOnlyShifts = result.mRows == Similarity().mRows;
    return result;
}

Point3 Similarity::Point(const Point3& p) const {
    if (mOnlyShifts) return p + mShift;
    return Vector(p) + mShift;
}

Point3 Similarity::Vector(const Point3& v) const {
    if (mOnlyShifts) return v;
    return {Dot(mRows[0], v) + 0.0, Dot(mRows[1], v) + 0.0, Dot(mRows[2], v) + 0.0};
}

Point3 Similarity::Direction(const Point3& v) const {
    if (mOnlyShifts) return v;
    // What typed points leave beside a world axis after a part is turned back onto it: less than any
    // direction is drawn to.
    constexpr double leftOver = 1e-10;
    const auto square = [](double entry) {
        if (std::abs(entry) < leftOver) return 0.0;
        return std::abs(std::abs(entry) - 1) < leftOver ? std::copysign(1.0, entry) : entry;
    };
    const Point3 unit = Unit(Vector(v));
    return {square(unit.x), square(unit.y), square(unit.z)};
}

bool Similarity::Identity() const { return mOnlyShifts && mShift == Point3{}; }

gp_Trsf Similarity::Trsf() const {
    gp_Trsf result;
    if (mOnlyShifts) {
        result.SetTranslation(gp_Vec(mShift.x, mShift.y, mShift.z));
        return result;
    }
    // An even scale alone goes by its own number: the modeller would take a cube root otherwise.
    if (mRows == std::array<Point3, 3>{Point3{mScale, 0, 0}, Point3{0, mScale, 0}, Point3{0, 0, mScale}}) {
        result.SetScaleFactor(mScale);
        result.SetTranslationPart(gp_Vec(mShift.x, mShift.y, mShift.z));
        return result;
    }
    result.SetValues(mRows[0].x, mRows[0].y, mRows[0].z, mShift.x, mRows[1].x, mRows[1].y, mRows[1].z,
                     mShift.y, mRows[2].x, mRows[2].y, mRows[2].z, mShift.z);
    return result;
}

}  // namespace brenvik
