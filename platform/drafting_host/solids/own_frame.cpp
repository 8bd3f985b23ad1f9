// Finds the own frame of a part. All candidates that tie are measured, and the choice among them goes by
// sizes alone, so that it is the same however the part is turned.
#include "drafting_host/solids/own_frame.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <GProp_PrincipalProps.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <tuple>

#include "drafting_host/solids/line_search.h"
#include "drafting_host/solids/mass.h"

namespace brenvik::solids {
namespace {

// Areas, lengths and boxes that differ by less are equal: turning a part changes them by rounding only.
constexpr double Tie = 1e-9;
// A box found by search is known less sharply than one by formula.
constexpr double SearchTie = 1e-7;

const std::array<gp_XYZ, 3> World{gp_XYZ(1, 0, 0), gp_XYZ(0, 1, 0), gp_XYZ(0, 0, 1)};

/// Sizes along three directions.
MeasuredFrame MeasureAlong(const Support& support, const std::array<gp_XYZ, 3>& axes) {
    return {
        axes,
        {support.Along(axes[0]).Length(), support.Along(axes[1]).Length(), support.Along(axes[2]).Length()}};
}

/// The world axis that `direction` lies along, exactly, or `direction` itself.
gp_XYZ Snapped(const gp_XYZ& direction) {
    for (const gp_XYZ& axis : World)
        if (Parallel(direction, axis)) return direction.Dot(axis) < 0 ? axis.Reversed() : axis;
    return direction;
}

/// The frame of a normal and a direction that is nearly at right angles to it.
std::array<gp_XYZ, 3> FrameOf(const gp_XYZ& normal, const gp_XYZ& along) {
    const gp_XYZ third = Snapped(normal);
    const gp_XYZ first = Snapped((along - third * along.Dot(third)).Normalized());
    return {first, Snapped(third.Crossed(first).Normalized()), third};
}

/// True when `one` is the better choice: along the world, then smaller, then longer in its first size.
bool Better(const MeasuredFrame& one, const MeasuredFrame& other, double margin) {
    if (one.AlongWorld() != other.AlongWorld()) return one.AlongWorld();
    const double volume = one.BoxVolume(), otherVolume = other.BoxVolume();
    if (std::abs(volume - otherVolume) > margin * std::max(volume, otherVolume)) return volume < otherVolume;
    return one.sizes[0] > other.sizes[0] * (1 + margin);
}

/// Any direction in the plane of `normal`, along a world axis where that is possible.
gp_XYZ SomeDirectionIn(const gp_XYZ& normal) {
    gp_XYZ best = World[0];
    for (const gp_XYZ& axis : World)
        if (std::abs(axis.Dot(normal)) < std::abs(best.Dot(normal)) - Tie) best = axis;
    return (best - normal * best.Dot(normal)).Normalized();
}

/// The frame turned about its third axis so that the rectangle of its first two is smallest. Where the
/// direction it starts from is as good as any, it is kept.
MeasuredFrame SmallestAbout(const Support& support, const std::array<gp_XYZ, 3>& start, double margin) {
    const auto turned = [&](double angle) {
        const gp_XYZ first = start[0] * std::cos(angle) + start[1] * std::sin(angle);
        return std::array<gp_XYZ, 3>{first, start[2].Crossed(first), start[2]};
    };
    const auto fitness = [&](double angle) {
        const auto axes = turned(angle);
        return -support.Along(axes[0]).Length() * support.Along(axes[1]).Length();
    };
    // One degree apart: a rectangle's area has one low between two of its kinks, and shapes with kinks
    // closer than that differ by too little to matter.
    constexpr int steps = 90;
    constexpr double step = std::numbers::pi / 2 / steps;
    std::array<double, steps> areas{};
    for (int index = 0; index < steps; ++index)
        areas[static_cast<std::size_t>(index)] = fitness(index * step);
    const double atStart = areas[0];
    PeakPoint best{0, atStart};
    for (int index = 0; index < steps; ++index) {
        const double here = areas[static_cast<std::size_t>(index)];
        const double before = areas[static_cast<std::size_t>((index + steps - 1) % steps)];
        const double after = areas[static_cast<std::size_t>((index + 1) % steps)];
        if (here < before || here < after) continue;
        // A round part is the same all around; rounding must not start a search at every step.
        if (here - std::min(before, after) < -Tie * here) continue;
        const PeakPoint peak = GoldenPeak(fitness, (index - 1) * step, (index + 1) * step);
        if (peak.value > best.value) best = peak;
    }
    const bool startIsAsGood = best.value <= atStart * (1 - margin);
    return MeasureAlong(support, startIsAsGood ? start : turned(best.at));
}

void TakeBetter(std::optional<MeasuredFrame>& best, const MeasuredFrame& frame, double margin) {
    if (!best || Better(frame, *best, margin)) best = frame;
}

/// Direction of the axis that a face is turned about, where it is.
std::optional<gp_XYZ> AxisOf(const TopoDS_Face& face) {
    const BRepAdaptor_Surface surface(face, Standard_False);
    switch (surface.GetType()) {
        case GeomAbs_Cylinder:
            return surface.Cylinder().Axis().Direction().XYZ();
        case GeomAbs_Cone:
            return surface.Cone().Axis().Direction().XYZ();
        case GeomAbs_Torus:
            return surface.Torus().Axis().Direction().XYZ();
        case GeomAbs_SurfaceOfRevolution:
            return surface.AxeOfRevolution().Direction().XYZ();
        case GeomAbs_Plane:
        case GeomAbs_Sphere:
        case GeomAbs_BezierSurface:
        case GeomAbs_BSplineSurface:
        case GeomAbs_SurfaceOfExtrusion:
        case GeomAbs_OffsetSurface:
        case GeomAbs_OtherSurface:
            break;
    }
    return std::nullopt;
}

/// Direction of the axis that the largest turned face runs about, where there is one.
std::optional<gp_XYZ> TurningAxis(const TopoDS_Shape& shape) {
    std::optional<gp_XYZ> axis;
    double most = 0;
    for (TopExp_Explorer explorer(shape, TopAbs_FACE); explorer.More(); explorer.Next()) {
        const TopoDS_Face& face = TopoDS::Face(explorer.Current());
        const std::optional<gp_XYZ> own = AxisOf(face);
        if (!own) continue;
        const double area = Area(face);
        // Among equal faces one along the world decides.
        const bool larger = area > most * (1 + Tie);
        const bool equalButSquare =
            area > most * (1 - Tie) &&
            std::ranges::any_of(World, [&](const gp_XYZ& w) { return Parallel(w, *own); });
        if (larger || equalButSquare) {
            most = std::max(most, area);
            axis = own;
        }
    }
    return axis;
}

std::array<gp_XYZ, 3> PrincipalAxes(const TopoDS_Shape& shape) {
    GProp_GProps properties;
    BRepGProp::VolumeProperties(shape, properties);
    if (!(std::abs(properties.Mass()) > 0)) BRepGProp::SurfaceProperties(shape, properties);
    const GProp_PrincipalProps principal = properties.PrincipalProperties();
    const gp_XYZ third = principal.ThirdAxisOfInertia().XYZ();
    return FrameOf(third, principal.FirstAxisOfInertia().XYZ());
}

/// Turns the frame about each of its axes in turn until its box shrinks no more.
MeasuredFrame Shrunk(const Support& support, std::array<gp_XYZ, 3> axes) {
    MeasuredFrame best = MeasureAlong(support, axes);
    constexpr int sweeps = 24;
    for (int sweep = 0; sweep < sweeps; ++sweep) {
        const double before = best.BoxVolume();
        for (int turn = 0; turn < 3; ++turn) {
            const std::array<gp_XYZ, 3> about{best.axes[1], best.axes[2], best.axes[0]};
            const MeasuredFrame turned = SmallestAbout(support, about, SearchTie);
            best = turned.BoxVolume() < best.BoxVolume() ? turned : MeasureAlong(support, about);
        }
        if (best.BoxVolume() > before * (1 - 1e-12)) break;
    }
    return best;
}

}  // namespace

bool MeasuredFrame::AlongWorld() const {
    return std::ranges::all_of(axes, [](const gp_XYZ& axis) {
        return std::ranges::any_of(World, [&](const gp_XYZ& w) { return Parallel(axis, w); });
    });
}

MeasuredFrame WorldFrame(const Support& support) { return MeasureAlong(support, World); }

MeasuredFrame FlatFrame(const Support& support, const std::vector<FlatFace>& flats) {
    double largest = 0;
    for (const FlatFace& flat : flats) largest = std::max(largest, flat.area);
    std::optional<MeasuredFrame> best;
    std::vector<std::array<gp_XYZ, 3>> tried;
    const auto consider = [&](const std::array<gp_XYZ, 3>& axes) {
        const bool known = std::ranges::any_of(tried, [&](const std::array<gp_XYZ, 3>& other) {
            return Parallel(axes[0], other[0]) && Parallel(axes[2], other[2]);
        });
        if (known) return;
        tried.push_back(axes);
        TakeBetter(best, MeasureAlong(support, axes), Tie);
    };
    for (const FlatFace& flat : flats) {
        if (flat.area < largest * (1 - Tie)) continue;
        const std::vector<StraightRun> runs = OuterRuns(flat);
        double longest = 0;
        for (const StraightRun& run : runs) longest = std::max(longest, run.length);
        for (const StraightRun& run : runs)
            if (run.length >= longest * (1 - Tie)) consider(FrameOf(flat.normal, run.direction));
        if (runs.empty()) {
            const auto axes = FrameOf(flat.normal, SomeDirectionIn(flat.normal));
            TakeBetter(best, SmallestAbout(support, axes, Tie), Tie);
        }
    }
    return *best;
}

std::vector<gp_XYZ> TurningAxes(const TopoDS_Shape& shape) {
    std::vector<gp_XYZ> axes;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next())
        if (const auto axis = AxisOf(TopoDS::Face(face.Current()))) axes.push_back(*axis);
    return axes;
}

MeasuredFrame RoundFrame(const Support& support, const TopoDS_Shape& shape) {
    const MeasuredFrame square = WorldFrame(support);
    if (const auto axis = TurningAxis(shape)) {
        const MeasuredFrame about = SmallestAbout(support, FrameOf(*axis, SomeDirectionIn(*axis)), Tie);
        // The largest turned face may be a slanted bore in a ball or a free form, whose box is larger.
        if (about.BoxVolume() <= square.BoxVolume() * (1 + Tie)) return about;
        const MeasuredFrame smallest = Shrunk(support, about.axes);
        return smallest.BoxVolume() < square.BoxVolume() * (1 - SearchTie) ? smallest : square;
    }
    const MeasuredFrame own = Shrunk(support, PrincipalAxes(shape));
    return square.BoxVolume() <= own.BoxVolume() * (1 + SearchTie) ? square : own;
}

}  // namespace brenvik::solids
