// Farthest points of bulging faces: by formula for spheres and tori, along the turned profile for
// surfaces of revolution, by sampling and climbing for free forms.
#include "drafting_host/solids/bulging_face.h"

#include <BRepTools.hxx>
#include <BRepTopAdaptor_FClass2d.hxx>
#include <ElSLib.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Geom_BezierSurface.hxx>
#include <Precision.hxx>
#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

#include "drafting_host/solids/line_search.h"

namespace brenvik::solids {
namespace {

// Below this a direction counts as lying along an axis, where a whole circle is farthest at once and
// its ends on the boundary decide.
constexpr double AlongAxis = 1e-12;

template <class Spline>
bool Ruled(const Spline& spline) {
    return (spline->UDegree() == 1 && spline->NbUPoles() == 2) ||
           (spline->VDegree() == 1 && spline->NbVPoles() == 2);
}

template <class Spline>
void TakePoles(const Spline& spline, std::vector<gp_XYZ>& hull) {
    for (int row = 1; row <= spline->NbUPoles(); ++row) {
        for (int column = 1; column <= spline->NbVPoles(); ++column)
            hull.push_back(spline->Pole(row, column).XYZ());
    }
}

}  // namespace

bool BulgingFace::CanBulge(const BRepAdaptor_Surface& surface) {
    switch (surface.GetType()) {
        case GeomAbs_Plane:
        case GeomAbs_Cylinder:
        case GeomAbs_Cone:
        case GeomAbs_SurfaceOfExtrusion:
            return false;
        case GeomAbs_BSplineSurface:
            return !Ruled(surface.BSpline());
        case GeomAbs_BezierSurface:
            return !Ruled(surface.Bezier());
        case GeomAbs_Sphere:
        case GeomAbs_Torus:
        case GeomAbs_SurfaceOfRevolution:
        case GeomAbs_OffsetSurface:
        case GeomAbs_OtherSurface:
            return true;
    }
    return true;
}

BulgingFace::BulgingFace(const TopoDS_Face& face) : mFace(face), mSurface(new BRepAdaptor_Surface(face)) {
    mUMin = mSurface->FirstUParameter();
    mUMax = mSurface->LastUParameter();
    mVMin = mSurface->FirstVParameter();
    mVMax = mSurface->LastVParameter();
    const GeomAbs_SurfaceType type = mSurface->GetType();
    if (type == GeomAbs_BSplineSurface) TakePoles(mSurface->BSpline(), mHull);
    if (type == GeomAbs_BezierSurface) TakePoles(mSurface->Bezier(), mHull);
    const bool formula =
        type == GeomAbs_Sphere || type == GeomAbs_Torus || type == GeomAbs_SurfaceOfRevolution;
    if (!formula) Sample();
}

bool BulgingFace::Holds(double u, double v) const {
    if (!mInside) mInside = std::make_shared<BRepTopAdaptor_FClass2d>(mFace, Precision::PConfusion());
    return mInside->Perform(gp_Pnt2d(u, v)) != TopAbs_OUT;
}

double BulgingFace::Peak(const gp_XYZ& direction, const gp_XYZ& origin, double best) const {
    const GeomAbs_SurfaceType type = mSurface->GetType();
    if (type == GeomAbs_Sphere) return SpherePeak(direction, origin, best);
    if (type == GeomAbs_Torus) return TorusPeak(direction, origin, best);
    if (type == GeomAbs_SurfaceOfRevolution) return TurnedPeak(direction, origin, best);
    return FreePeak(direction, origin, best);
}

double BulgingFace::SpherePeak(const gp_XYZ& direction, const gp_XYZ& origin, double best) const {
    const gp_Sphere sphere = mSurface->Sphere();
    const double peak = (sphere.Location().XYZ() - origin).Dot(direction) + sphere.Radius();
    if (!(peak > best)) return best;
    double u = 0, v = 0;
    ElSLib::Parameters(sphere, gp_Pnt(sphere.Location().XYZ() + direction * sphere.Radius()), u, v);
    return Holds(u, v) ? peak : best;
}

double BulgingFace::TorusPeak(const gp_XYZ& direction, const gp_XYZ& origin, double best) const {
    const gp_Torus torus = mSurface->Torus();
    const gp_XYZ axis = torus.Axis().Direction().XYZ();
    const double slant = axis.Dot(direction);
    gp_XYZ outward = direction - axis * slant;
    const double spread = std::abs(slant) < 0.5 ? std::sqrt((1 - slant) * (1 + slant)) : outward.Modulus();
    // Along the axis the top is a whole circle. A boundary that cuts it lies as high, and a face
    // without such a boundary has its seam there.
    outward = spread < AlongAxis ? torus.XAxis().Direction().XYZ() : outward / spread;
    const double peak =
        (torus.Location().XYZ() - origin).Dot(direction) + torus.MajorRadius() * spread + torus.MinorRadius();
    if (!(peak > best)) return best;
    const gp_XYZ point =
        torus.Location().XYZ() + outward * torus.MajorRadius() + direction * torus.MinorRadius();
    double u = 0, v = 0;
    ElSLib::Parameters(torus, gp_Pnt(point), u, v);
    return Holds(u, v) ? peak : best;
}

double BulgingFace::ProfilePeak(double u, const gp_XYZ& direction, const gp_XYZ& origin, double best) const {
    const auto height = [&](double v) { return (mSurface->Value(u, v).XYZ() - origin).Dot(direction); };
    constexpr int pieces = 64;
    const double width = (mVMax - mVMin) / pieces;
    std::array<double, pieces + 1> heights{};
    for (int piece = 0; piece <= pieces; ++piece)
        heights[static_cast<std::size_t>(piece)] = height(mVMin + width * piece);
    for (int piece = 0; piece <= pieces; ++piece) {
        const double here = heights[static_cast<std::size_t>(piece)];
        const double before = heights[static_cast<std::size_t>(std::max(piece - 1, 0))];
        const double after = heights[static_cast<std::size_t>(std::min(piece + 1, pieces))];
        if (here < before || here < after) continue;
        // Above three samples a smooth profile rises by less than the samples differ.
        if (here + 2 * (here - std::min(before, after)) < best) continue;
        const PeakPoint peak = GoldenPeak(height, mVMin + width * std::max(piece - 1, 0),
                                          mVMin + width * std::min(piece + 1, pieces));
        if (peak.value > best && Holds(u, peak.at)) best = peak.value;
    }
    return best;
}

double BulgingFace::TurnedPeak(const gp_XYZ& direction, const gp_XYZ& origin, double best) const {
    const gp_Ax1 turning = mSurface->AxeOfRevolution();
    const gp_XYZ axis = turning.Direction().XYZ();
    const gp_XYZ aside = direction - axis * axis.Dot(direction);
    // Along the axis the profile's own farthest point decides; every turned copy of it reaches as far.
    if (aside.Modulus() < AlongAxis) return ProfilePeak(mUMin, direction, origin, best);
    const gp_XYZ start = mSurface->Value(mUMin, (mVMin + mVMax) / 2).XYZ() - turning.Location().XYZ();
    const gp_XYZ radial = start - axis * start.Dot(axis);
    if (radial.Modulus() < Precision::Confusion()) return best;
    // The farthest point of a circle about the axis lies on the side that looks along the direction (or,
    // where the profile crosses the axis, on the opposite side), so the search runs along two profiles.
    const double angle = std::atan2(axis.Crossed(radial).Dot(aside), radial.Dot(aside));
    best = ProfilePeak(mUMin + angle, direction, origin, best);
    return ProfilePeak(mUMin + angle + std::numbers::pi, direction, origin, best);
}

void BulgingFace::Sample() {
    const auto count = [](int spans, int degree) {
        return std::clamp(spans * std::max(4, 2 * degree), 16, 96);
    };
    mColumns = count(mSurface->NbUIntervals(GeomAbs_C2), 3);
    mRows = count(mSurface->NbVIntervals(GeomAbs_C2), 3);
    mGrid.reserve(static_cast<std::size_t>((mColumns + 1) * (mRows + 1)));
    for (int row = 0; row <= mRows; ++row) {
        for (int column = 0; column <= mColumns; ++column) {
            mGrid.push_back(mSurface
                                ->Value(mUMin + (mUMax - mUMin) * column / mColumns,
                                        mVMin + (mVMax - mVMin) * row / mRows)
                                .XYZ());
        }
    }
}

double BulgingFace::Climb(double u, double v, const gp_XYZ& direction, const gp_XYZ& origin,
                          gp_XYZ& place) const {
    double stepU = (mUMax - mUMin) / std::max(mColumns, 1);
    double stepV = (mVMax - mVMin) / std::max(mRows, 1);
    const auto height = [&](double atU, double atV) {
        return (mSurface->Value(atU, atV).XYZ() - origin).Dot(direction);
    };
    double top = height(u, v);
    // Halving from a grid step down to 1e-9 of it: the height differs from the true top by the square
    // of that. Four moves per halving reach any place within the step.
    for (int halving = 0; halving < 30; ++halving, stepU /= 2, stepV /= 2) {
        for (int move = 0; move < 4; ++move) {
            bool moved = false;
            constexpr std::array<std::pair<int, int>, 8> ways{
                {{1, 0}, {-1, 0}, {0, 1}, {0, -1}, {1, 1}, {1, -1}, {-1, 1}, {-1, -1}}};
            const double fromU = u, fromV = v;
            for (const auto& [wayU, wayV] : ways) {
                const double toU = std::clamp(fromU + wayU * stepU, mUMin, mUMax);
                const double toV = std::clamp(fromV + wayV * stepV, mVMin, mVMax);
                const double value = height(toU, toV);
                if (value > top) {
                    top = value;
                    u = toU;
                    v = toV;
                    moved = true;
                }
            }
            if (!moved) break;
        }
    }
    place = gp_XYZ(u, v, 0);
    return top;
}

double BulgingFace::FreePeak(const gp_XYZ& direction, const gp_XYZ& origin, double best) const {
    if (mGrid.empty()) return best;
    if (!mHull.empty()) {
        const bool reaches = std::ranges::any_of(
            mHull, [&](const gp_XYZ& pole) { return (pole - origin).Dot(direction) > best; });
        if (!reaches) return best;
    }
    std::vector<double> heights;
    heights.reserve(mGrid.size());
    for (const gp_XYZ& point : mGrid) heights.push_back((point - origin).Dot(direction));
    const auto at = [&](int column, int row) {
        return heights[static_cast<std::size_t>(row * (mColumns + 1) + column)];
    };
    for (int row = 0; row <= mRows; ++row) {
        for (int column = 0; column <= mColumns; ++column) {
            const double here = at(column, row);
            bool top = true;
            for (int dr = -1; dr <= 1 && top; ++dr) {
                for (int dc = -1; dc <= 1 && top; ++dc) {
                    const int c = std::clamp(column + dc, 0, mColumns);
                    const int r = std::clamp(row + dr, 0, mRows);
                    top = here >= at(c, r);
                }
            }
            if (!top) continue;
            gp_XYZ place;
            const double u = mUMin + (mUMax - mUMin) * column / mColumns;
            const double v = mVMin + (mVMax - mVMin) * row / mRows;
            const double peak = Climb(u, v, direction, origin, place);
            if (peak > best && Holds(place.X(), place.Y())) best = peak;
        }
    }
    return best;
}

}  // namespace brenvik::solids
