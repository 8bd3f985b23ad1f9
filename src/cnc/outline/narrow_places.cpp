// A bit is laid against the outline, place by place, as a disc that touches it from outside: the place is too
// narrow where the disc reaches into a side that looks back at it.
#include "cnc/outline/narrow_places.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "base/angles.h"

namespace brenvik {

namespace {

/// Arcs are followed in chords of this angle.
constexpr double ChordAngle = FullTurn / 180;
/// Two sides look at each other where their normals are turned by more than a right angle and some: an inner
/// corner isn't a narrow place.
constexpr double LooksBack = -0.3;
/// What chords and coordinates are off by, as a share of the disc.
constexpr double Slack = 2e-3;
constexpr int Bisections = 24;
/// How far from the ends of a side the disc is laid, as a share of its length.
constexpr double NearEnd = 1e-3;

struct Plane {
    double x = 0, y = 0;
};

/// A straight piece of the outline.
struct Piece {
    Plane from, to;
    Plane outwards;  ///< Its unit normal.
    std::size_t side = 0;
    bool straight = true;  ///< A side of its own, and not a chord.
};

void AddPiece(std::vector<Piece>& pieces, const Plane& from, const Plane& to, std::size_t side,
              bool straight) {
    const double dx = to.x - from.x, dy = to.y - from.y, length = std::hypot(dx, dy);
    if (length < 1e-9) return;
    pieces.push_back({from, to, {dy / length, -dx / length}, side, straight});
}

/// The pieces of an arc of the given bulge.
void AddArc(std::vector<Piece>& pieces, const PathVertex& start, const PathVertex& end, std::size_t side) {
    const double angle = 4 * std::atan(start.bulge);
    const double dx = end.x - start.x, dy = end.y - start.y;
    // The centre stands on the left of the chord of an arc that runs counter-clockwise by less than half.
    const double offset = (1 - start.bulge * start.bulge) / (4 * start.bulge);
    const Plane center{(start.x + end.x) / 2 - dy * offset, (start.y + end.y) / 2 + dx * offset};
    const int count = std::max(1, static_cast<int>(std::ceil(std::abs(angle) / ChordAngle)));
    const Plane arm{start.x - center.x, start.y - center.y};
    Plane from{start.x, start.y};
    for (int chord = 1; chord <= count; ++chord) {
        const double turn = angle * chord / count;
        const Plane to{center.x + arm.x * std::cos(turn) - arm.y * std::sin(turn),
                       center.y + arm.x * std::sin(turn) + arm.y * std::cos(turn)};
        AddPiece(pieces, from, to, side, false);
        from = to;
    }
}

std::vector<Piece> PiecesOf(std::span<const PathVertex> outline) {
    std::vector<Piece> pieces;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const PathVertex &start = outline[i], &end = outline[(i + 1) % outline.size()];
        if (start.bulge == 0)
            AddPiece(pieces, {start.x, start.y}, {end.x, end.y}, i, true);
        else
            AddArc(pieces, start, end, i);
    }
    return pieces;
}

double DistanceTo(const Piece& piece, const Plane& point) {
    const double dx = piece.to.x - piece.from.x, dy = piece.to.y - piece.from.y;
    const double along =
        ((point.x - piece.from.x) * dx + (point.y - piece.from.y) * dy) / (dx * dx + dy * dy);
    const double at = std::clamp(along, 0.0, 1.0);
    return std::hypot(point.x - piece.from.x - at * dx, point.y - piece.from.y - at * dy);
}

bool LookAtEachOther(const Piece& a, const Piece& b) {
    return a.outwards.x * b.outwards.x + a.outwards.y * b.outwards.y < LooksBack;
}

class Outline {
  public:
    explicit Outline(std::span<const PathVertex> outline) : mPieces(PiecesOf(outline)) {}

    /// Whether a bit of this diameter comes everywhere.
    bool LetsIn(double diameter) const {
        return std::ranges::all_of(mPieces, [&](const Piece& piece) { return LetsIn(piece, diameter); });
    }

  private:
    /// Two straight sides that share a corner: at an acute inner one every bit leaves something.
    static bool Adjoin(const Piece& a, const Piece& b) {
        const auto same = [](const Plane& one, const Plane& other) {
            return std::hypot(one.x - other.x, one.y - other.y) < 1e-6;
        };
        return a.straight && b.straight && (same(a.to, b.from) || same(b.to, a.from));
    }

    /// At the ends and in the middle of the piece, and opposite each corner.
    std::vector<double> PlacesOn(const Piece& piece, double diameter) const {
        std::vector<double> places{NearEnd, 0.5, 1 - NearEnd};
        if (!piece.straight) return {0.5};
        const double dx = piece.to.x - piece.from.x, dy = piece.to.y - piece.from.y;
        for (const Piece& other : mPieces) {
            if (!LookAtEachOther(piece, other) || DistanceTo(piece, other.from) >= diameter) continue;
            for (const Plane& end : {other.from, other.to}) {
                const double along =
                    ((end.x - piece.from.x) * dx + (end.y - piece.from.y) * dy) / (dx * dx + dy * dy);
                if (along > 0 && along < 1) places.push_back(along);
            }
        }
        return places;
    }

    bool LetsIn(const Piece& piece, double diameter) const {
        const double radius = diameter / 2;
        for (const double place : PlacesOn(piece, diameter)) {
            const Plane center{
                piece.from.x + place * (piece.to.x - piece.from.x) + radius * piece.outwards.x,
                piece.from.y + place * (piece.to.y - piece.from.y) + radius * piece.outwards.y};
            for (const Piece& other : mPieces) {
                if (!LookAtEachOther(piece, other) || Adjoin(piece, other)) continue;
                if (DistanceTo(other, center) < radius * (1 - Slack)) return false;
            }
        }
        return true;
    }

    std::vector<Piece> mPieces;
};

}  // namespace

std::optional<double> NarrowestPlace(std::span<const PathVertex> outline, double wanted) {
    const Outline path(outline);
    if (path.LetsIn(wanted)) return std::nullopt;
    double fits = 0, tooWide = wanted;
    for (int step = 0; step < Bisections; ++step) {
        const double middle = (fits + tooWide) / 2;
        (path.LetsIn(middle) ? fits : tooWide) = middle;
    }
    return fits;
}

}  // namespace brenvik
