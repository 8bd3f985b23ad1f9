// Which corners run off the part, and where they go.
#include "cnc/routes/routing_overrun.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "base/numbers.h"
#include "cnc/drawing/polyline_shape.h"

namespace brenvik {

namespace {

constexpr int Decimals = 5;
/// What each move is longer than the one before it: two corners at one place would make a side of no length.
constexpr double Step = 0.00001;
constexpr double DiametersPerOverrun = 1.75;
/// A wall that meets the edge flatter than this is nearly parallel to it and isn't prolonged.
constexpr double SteepestSlide = 10;

double Round(double value) { return RoundHalfEven(value, Decimals); }

/// On which sides of the part's box a corner lies: -1 lowest, 1 highest, 0 neither.
struct Contact {
    int x = 0, y = 0;
    bool Any() const { return x != 0 || y != 0; }
};

int ContactOf(double value, double low, double high) {
    const double rounded = Round(value);
    if (rounded == Round(low)) return -1;
    return rounded == Round(high) ? 1 : 0;
}

bool ShareSide(const Contact& a, const Contact& b) {
    return (a.x != 0 && a.x == b.x) || (a.y != 0 && a.y == b.y);
}

/// A path and where its corners touch the part's box.
struct Touching {
    std::vector<PathVertex> corners;
    std::vector<Contact> contacts;

    std::size_t Next(std::size_t i) const { return (i + 1) % corners.size(); }
    std::size_t Previous(std::size_t i) const { return (i + corners.size() - 1) % corners.size(); }
};

/// A quarter round from one side of the box to the next is the part's own rim where it bulges out to the
/// box's corner: moved at both ends it grows about its own centre. One that bulges inwards is the wall of a
/// recess at that corner.
bool IsRim(const Touching& path, std::size_t side) {
    const Contact &from = path.contacts[side], &to = path.contacts[path.Next(side)];
    if (ShareSide(from, to) || !from.Any() || !to.Any()) return false;
    const PathVertex &start = path.corners[side], &end = path.corners[path.Next(side)];
    constexpr double quarter = 0.41421356237309503, slack = 1e-4;
    if (std::abs(std::abs(start.bulge) - quarter) >= slack) return false;
    // From its chord an arc bulges to the right where it runs counter-clockwise.
    const double bulgesX = start.bulge * (end.y - start.y), bulgesY = -start.bulge * (end.x - start.x);
    return bulgesX * (from.x + to.x) > 0 && bulgesY * (from.y + to.y) > 0;
}

/// Whether a side of the path runs along the part's edge, so that it has no wall.
bool LiesInEdge(const Touching& path, std::size_t side) {
    if (path.corners[side].bulge != 0) return IsRim(path, side);
    return ShareSide(path.contacts[side], path.contacts[path.Next(side)]);
}

/// Whether a wall that meets an edge of this contact is prolonged.
bool Slides(const PathVertex& from, const PathVertex& wallEnd, const Contact& edge) {
    const double dx = std::abs(from.x - wallEnd.x), dy = std::abs(from.y - wallEnd.y);
    return edge.x != 0 ? dy < SteepestSlide * dx : dx < SteepestSlide * dy;
}

/// Makes a corner that has been moved along one axis follow the line of its wall.
void SlideAlong(const PathVertex& from, const PathVertex& wallEnd, const Contact& edge, PathVertex& moved) {
    if (!Slides(from, wallEnd, edge)) return;
    const double dx = from.x - wallEnd.x, dy = from.y - wallEnd.y;
    if (edge.x != 0)
        moved.y += dy / dx * (moved.x - from.x);
    else
        moved.x += dx / dy * (moved.y - from.y);
}

/// What two corners of one side have in common.
Contact Shared(const Contact& a, const Contact& b) { return {a.x == b.x ? a.x : 0, a.y == b.y ? a.y : 0}; }

/// The cosine of the angle at a corner.
double CosineAt(const PathVertex& corner, const PathVertex& one, const PathVertex& other) {
    const double ax = one.x - corner.x, ay = one.y - corner.y, bx = other.x - corner.x,
                 by = other.y - corner.y;
    return (ax * bx + ay * by) / (std::hypot(ax, ay) * std::hypot(bx, by));
}

/// Moves the corners one after another.
class Mover {
  public:
    Mover(const Touching& path, double overrun) : mPath(path), mOverrun(overrun) {
        mResult.reserve(path.corners.size() + 2);
    }

    void Take(std::size_t i) {
        const PathVertex& corner = mPath.corners[i];
        const std::size_t previous = mPath.Previous(i);
        const bool wallBefore = !LiesInEdge(mPath, previous), wallAfter = !LiesInEdge(mPath, i);
        if (!mPath.contacts[i].Any() || (wallBefore && wallAfter)) {
            mResult.push_back(corner);
            return;
        }
        const bool wallIsRound =
            (wallBefore && mPath.corners[previous].bulge != 0) || (wallAfter && corner.bulge != 0);
        // A straight wall from one of the part's own corners leaves the edge that the path ends at.
        const std::size_t edge = wallBefore ? i : previous;
        const bool slides = (wallBefore || wallAfter) && !wallIsRound;
        const Contact contact =
            slides ? Shared(mPath.contacts[edge], mPath.contacts[mPath.Next(edge)]) : mPath.contacts[i];
        PathVertex moved = Outwards(i, contact);
        bool straightOut = wallIsRound;
        if (slides) {
            const std::size_t wallEnd = wallBefore ? previous : mPath.Next(i);
            const double out = std::hypot(moved.x - corner.x, moved.y - corner.y);
            straightOut = Drift(i, wallEnd, contact, out) != 0 && EndsCross(edge, contact, out);
            if (!straightOut) SlideAlong(corner, mPath.corners[wallEnd], contact, moved);
        }
        if (straightOut && wallBefore) {
            mResult.push_back({corner.x, corner.y, 0});
            mResult.push_back(moved);
        } else if (straightOut && wallAfter) {
            mResult.push_back({moved.x, moved.y, 0});
            mResult.push_back(corner);
        } else {
            mResult.push_back(moved);
        }
    }

    const std::vector<PathVertex>& Result() const { return mResult; }
    bool Moved() const { return mMoves > 0; }

  private:
    double Longer(double overrun) { return overrun + Step * mMoves++; }

    PathVertex Outwards(std::size_t i, const Contact& contact) {
        PathVertex moved = mPath.corners[i];
        if (contact.x != 0) moved.x += contact.x * Longer(OverrunAt(i, &Contact::x));
        if (contact.y != 0) moved.y += contact.y * Longer(OverrunAt(i, &Contact::y));
        return moved;
    }

    /// Both ends of a side in the edge go equally far, so that it stays parallel to the edge.
    double OverrunAt(std::size_t i, int Contact::*axis) const {
        double most = mOverrun;
        for (const std::size_t side : {mPath.Previous(i), i}) {
            const std::size_t end = mPath.Next(side);
            if (mPath.corners[side].bulge != 0 || mPath.contacts[side].*axis == 0 ||
                mPath.contacts[side].*axis != mPath.contacts[end].*axis)
                continue;
            const Contact edge = Shared(mPath.contacts[side], mPath.contacts[end]);
            most = std::max({most, NeedOf(side, mPath.Previous(side), end, edge),
                             NeedOf(end, mPath.Next(end), side, edge)});
        }
        return most;
    }

    /// How far along an edge a corner goes that follows its wall outwards.
    double Drift(std::size_t corner, std::size_t wallEnd, const Contact& edge, double out) const {
        const std::size_t wall = wallEnd == mPath.Next(corner) ? corner : wallEnd;
        const PathVertex &at = mPath.corners[corner], &to = mPath.corners[wallEnd];
        if (mPath.corners[wall].bulge != 0 || LiesInEdge(mPath, wall) || !Slides(at, to, edge)) return 0;
        const double dx = at.x - to.x, dy = at.y - to.y;
        return edge.x != 0 ? dy / dx * edge.x * out : dx / dy * edge.y * out;
    }

    /// Whether the two ends of a side in the edge would pass each other if both followed their walls.
    bool EndsCross(std::size_t edgeSide, const Contact& edge, double out) const {
        const std::size_t from = edgeSide, to = mPath.Next(edgeSide);
        const PathVertex &a = mPath.corners[from], &b = mPath.corners[to];
        const double length = edge.x != 0 ? b.y - a.y : b.x - a.x;
        const double moved =
            length + Drift(to, mPath.Next(to), edge, out) - Drift(from, mPath.Previous(from), edge, out);
        return moved * length <= 0;
    }

    /// So far that the round in a corner sharper than a right angle ends where the board does.
    double NeedOf(std::size_t corner, std::size_t wallEnd, std::size_t edgeEnd, const Contact& edge) const {
        const std::size_t wall = wallEnd == mPath.Next(corner) ? corner : wallEnd;
        if (mPath.corners[wall].bulge != 0 || LiesInEdge(mPath, wall)) return 0;
        const PathVertex &at = mPath.corners[corner], &to = mPath.corners[wallEnd];
        if (!Slides(at, to, edge)) return 0;
        const double cosine = CosineAt(at, to, mPath.corners[edgeEnd]);
        return cosine <= 0 ? 0 : mOverrun * DiametersPerOverrun / 2 * (1 + cosine);
    }

    const Touching& mPath;
    double mOverrun;
    int mMoves = 0;
    std::vector<PathVertex> mResult;
};

}  // namespace

double OverrunOf(double toolDiameter) { return Round(toolDiameter / DiametersPerOverrun); }

void RunOffEdges(AcadLWPolyline& path, const Box3& part, double overrun) {
    Touching touching{VerticesOf(path), {}};
    if (touching.corners.size() < 2) return;
    for (const PathVertex& corner : touching.corners)
        touching.contacts.push_back(
            {ContactOf(corner.x, part.min.x, part.max.x), ContactOf(corner.y, part.min.y, part.max.y)});
    Mover mover(touching, overrun);
    for (std::size_t i = 0; i < touching.corners.size(); ++i) mover.Take(i);
    if (!mover.Moved()) return;
    SetVertices(path, mover.Result());
    path.Update();
}

}  // namespace brenvik
