// Every edge is followed in the surface's angles. What a face's edges turn, all together, is nothing: each
// ring around the surface has another one that runs against it. Only a tip, where the surface narrows to a
// point, can be cut off by a single ring.
#include "drafting_host/step/models/face_winding.h"

#include <ElSLib.hxx>
#include <GeomAdaptor_Surface.hxx>
#include <Geom_SurfaceOfRevolution.hxx>
#include <algorithm>
#include <array>
#include <cmath>
#include <gp_Ax2.hxx>
#include <map>

#include "base/angles.h"

namespace brenvik::step {
namespace {

/// File units: nearer to its axis a point has no angle.
constexpr double OnAxis = 1e-6;
/// How far the sum of the turns may lie off a whole number: ends fit their curves loosely.
constexpr double Loose = 0.02;

/// A surface's two angles; `v` is none but on a torus.
struct Angles {
    double u = 0, v = 0;
    bool known = true;  ///< False on the axis.
};

class Turning {
  public:
    explicit Turning(const Handle(Geom_Surface) & surface) : mSurface(surface), mType(mSurface.GetType()) {
        if (const auto turned = Handle(Geom_SurfaceOfRevolution)::DownCast(surface); !turned.IsNull())
            mAxes = gp_Ax3(turned->Location(), turned->Direction());
        if (mType == GeomAbs_Cylinder) mAxes = mSurface.Cylinder().Position();
        if (mType == GeomAbs_Cone) mAxes = mSurface.Cone().Position();
        if (mType == GeomAbs_Sphere) mAxes = mSurface.Sphere().Position();
        if (mType == GeomAbs_Torus) mAxes = mSurface.Torus().Position();
    }

    /// A torus that crosses itself has points on its axis.
    bool Known() const {
        return mType == GeomAbs_Cylinder || mType == GeomAbs_Cone || mType == GeomAbs_Sphere ||
               mType == GeomAbs_SurfaceOfRevolution ||
               (mType == GeomAbs_Torus && mSurface.Torus().MinorRadius() < mSurface.Torus().MajorRadius());
    }
    bool IsBall() const { return mType == GeomAbs_Sphere; }
    bool IsTorus() const { return mType == GeomAbs_Torus; }
    bool CanHaveATip() const { return mType == GeomAbs_Cone || mType == GeomAbs_SurfaceOfRevolution; }

    Angles At(const gp_Pnt& point) const {
        Angles angles;
        const gp_Vec out(mAxes.Location(), point);
        const double x = out.Dot(mAxes.XDirection()), y = out.Dot(mAxes.YDirection());
        angles.known = std::hypot(x, y) > OnAxis;
        if (angles.known) angles.u = std::atan2(y, x);
        if (IsTorus()) ElSLib::Parameters(mSurface.Torus(), point, angles.u, angles.v);
        return angles;
    }

  private:
    GeomAdaptor_Surface mSurface;
    GeomAbs_SurfaceType mType;
    gp_Ax3 mAxes;
};

double Nearest(double angle) { return std::remainder(angle, FullTurn); }

/// The angles along an edge from its start to its end, without jumps.
struct Track {
    std::vector<Angles> angles;
    bool endsOnAxis = false, crossesAxis = false;

    double TurnU() const { return angles.back().u - angles.front().u; }
    double TurnV() const { return angles.back().v - angles.front().v; }
};

Track TrackOf(const Turning& surface, const EdgeSamples& samples) {
    Track track;
    const std::vector<gp_Pnt> points = samples.Walk();
    for (std::size_t i = 0; i < points.size(); ++i) {
        Angles here = surface.At(points[i]);
        const bool end = i == 0 || i + 1 == points.size();
        if (!here.known) (end ? track.endsOnAxis : track.crossesAxis) = true;
        if (!track.angles.empty()) {
            const Angles& last = track.angles.back();
            // Half a turn from one point to the next is a way over the axis.
            const double turn = Nearest(here.u - last.u);
            if (here.known && std::abs(turn) > 3) track.crossesAxis = true;
            here.u = here.known ? last.u + turn : last.u;
            here.v = last.v + Nearest(here.v - last.v);
        }
        track.angles.push_back(here);
    }
    return track;
}

class Winding {
  public:
    Winding(const Turning& surface, const std::vector<std::vector<FaceEdge>>& loops)
        : mSurface(surface), mLoops(loops) {
        for (const auto& loop : loops) {
            for (const FaceEdge& use : loop) {
                mBalance[use.edge] += use.forward ? 1 : -1;
                if (!mTracks.contains(use.edge)) mTracks.emplace(use.edge, TrackOf(surface, *use.samples));
            }
        }
    }

    std::optional<std::string> Fault(bool sameSense) const {
        if (SeamOverPole()) return "has a seam that takes the long way about";
        if (mSurface.IsBall() || TouchesAxis()) return std::nullopt;
        if (!ComesBack()) return "has edges that do not come back around its surface";
        if (mSurface.IsTorus() && HasSeam() && (Area() > 0) != sameSense)
            return "has a seam that takes the long way about";
        return std::nullopt;
    }

  private:
    /// A seam with rings at its ends: of a whole ring both edges are seams, and the order of the two is free.
    bool HasSeam() const {
        const auto seams = std::ranges::count_if(mBalance, [](const auto& edge) { return edge.second == 0; });
        return seams > 0 && static_cast<std::size_t>(seams) < mBalance.size();
    }

    bool SeamOverPole() const {
        return mSurface.IsBall() && std::ranges::any_of(mBalance, [&](const auto& edge) {
                   return edge.second == 0 && mTracks.at(edge.first).crossesAxis;
               });
    }

    bool TouchesAxis() const {
        return std::ranges::any_of(
            mTracks, [](const auto& edge) { return edge.second.endsOnAxis || edge.second.crossesAxis; });
    }

    bool ComesBack() const {
        double u = 0, v = 0;
        bool rulings = false;
        for (const auto& [edge, balance] : mBalance) {
            const Track& track = mTracks.at(edge);
            u += balance * track.TurnU() / FullTurn;
            v += balance * track.TurnV() / FullTurn;
            rulings = rulings || std::abs(track.TurnU()) < Loose;
        }
        const bool tip = mSurface.CanHaveATip() && !rulings && std::abs(std::abs(u) - 1) < Loose;
        return (std::abs(u) < Loose || tip) && std::abs(v) < Loose;
    }

    /// Twice the area that the loops enclose in the angles.
    double Area() const {
        double area = 0;
        for (const auto& loop : mLoops) {
            std::vector<Angles> chain;
            for (const FaceEdge& use : loop) Append(mTracks.at(use.edge).angles, use.forward, chain);
            for (std::size_t i = 0; i < chain.size(); ++i) {
                const Angles &a = chain[i], &b = chain[(i + 1) % chain.size()];
                area += a.u * b.v - a.v * b.u;
            }
        }
        return area;
    }

    static void Append(std::vector<Angles> track, bool forward, std::vector<Angles>& chain) {
        if (!forward) std::ranges::reverse(track);
        if (!chain.empty()) {
            const double u = chain.back().u + Nearest(track.front().u - chain.back().u) - track.front().u;
            const double v = chain.back().v + Nearest(track.front().v - chain.back().v) - track.front().v;
            for (Angles& angles : track) {
                angles.u += u;
                angles.v += v;
            }
        }
        chain.insert(chain.end(), track.begin(), track.end());
    }

    const Turning& mSurface;
    const std::vector<std::vector<FaceEdge>>& mLoops;
    std::map<const void*, int> mBalance;  ///< 0 for a seam.
    std::map<const void*, Track> mTracks;
};

}  // namespace

bool AllKnown(const std::vector<std::vector<FaceEdge>>& loops) {
    return std::ranges::all_of(loops, [](const auto& loop) {
        return std::ranges::none_of(loop, [](const FaceEdge& use) { return use.samples->curve.IsNull(); });
    });
}

std::optional<std::string> WindingFault(const FaceSurface& surface,
                                        const std::vector<std::vector<FaceEdge>>& loops, bool sameSense) {
    if (!surface.Known()) return std::nullopt;
    const Turning turning(surface.Surface());
    if (!turning.Known()) return std::nullopt;
    if (!AllKnown(loops)) return std::nullopt;
    return Winding(turning, loops).Fault(sameSense);
}

}  // namespace brenvik::step
