// Which corners run off the part, and where they go.
#include "cnc/routes/routing_overrun.h"

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

/// Whether a side of the path lies in the part's edge, so that no wall stands there.
bool LiesInEdge(const Touching& path, std::size_t side) {
    if (path.corners[side].bulge != 0) return IsRim(path, side);
    return ShareSide(path.contacts[side], path.contacts[path.Next(side)]);
}

/// Lets a corner that has been moved along one axis follow the line of its wall.
void SlideAlong(const PathVertex& from, const PathVertex& wallEnd, const Contact& contact,
                PathVertex& moved) {
    const double dx = from.x - wallEnd.x, dy = from.y - wallEnd.y;
    if (contact.y == 0) {
        if (std::abs(dy) < SteepestSlide * std::abs(dx)) moved.y += dy / dx * (moved.x - from.x);
    } else if (contact.x == 0) {
        if (std::abs(dx) < SteepestSlide * std::abs(dy)) moved.x += dx / dy * (moved.y - from.y);
    }
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
        PathVertex moved = Outwards(corner, mPath.contacts[i]);
        if (wallBefore && mPath.corners[previous].bulge != 0) {
            mResult.push_back({corner.x, corner.y, 0});
            mResult.push_back(moved);
        } else if (wallAfter && corner.bulge != 0) {
            mResult.push_back({moved.x, moved.y, 0});
            mResult.push_back(corner);
        } else {
            if (wallBefore) SlideAlong(corner, mPath.corners[previous], mPath.contacts[i], moved);
            if (wallAfter) SlideAlong(corner, mPath.corners[mPath.Next(i)], mPath.contacts[i], moved);
            mResult.push_back(moved);
        }
    }

    const std::vector<PathVertex>& Result() const { return mResult; }
    bool Moved() const { return mMoves > 0; }

  private:
    double NextMove() { return mOverrun + Step * mMoves++; }

    PathVertex Outwards(const PathVertex& corner, const Contact& contact) {
        PathVertex moved = corner;
        if (contact.x != 0) moved.x += contact.x * NextMove();
        if (contact.y != 0) moved.y += contact.y * NextMove();
        return moved;
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
