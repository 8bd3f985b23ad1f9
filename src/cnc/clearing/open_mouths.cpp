// Sides of the path without wood behind them are its mouths. A figure is placed in front of each mouth, and
// the part of it that is air joins the path. Plain figures, which prolong the walls, are tried first; the
// first one with which the bit clears the whole of the path's own area is taken.
#include "cnc/clearing/open_mouths.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "base/skip.h"
#include "cnc/plan/bit_access.h"
#include "cnc/plan/bit_reach.h"
#include "cnc/plan/negligible_sizes.h"
#include "cnc/plan/plan_curve_cuts.h"
#include "cnc/plan/plan_piece.h"
#include "cnc/plan/plan_vectors.h"

namespace brenvik {

namespace {

/// In millimetres: how far behind a side wood is looked for, and how long a mouth is at least.
constexpr double Beside = 0.03, NoMouth = 0.05;
/// In square millimetres.
constexpr double NoArea = 0.02;
/// In places that count as one: by how much a corner may have been moved.
constexpr double SameCorner = 5;
/// Sine of the turn below which a corner is none.
constexpr double NoCorner = 1e-3;
/// Of the bit's diameter: how far from the ends of a mouth a followed line runs off at least.
constexpr double EarShare = 1.2;

/// How a mouth is prolonged: so deep, so much wider on either hand, and at its ends alone or all along.
struct Reach {
    double depth = 0, wider = 0;
    bool atEnds = false;
};

class Mouths {
  public:
    explicit Mouths(const MouthOrder& order) : mOrder(order), mPath(InsideLeft(order.path)), mInPath(mPath) {}

    std::optional<PlanLoop> Best() {
        FindMouths();
        if (mMouths.empty()) return std::nullopt;
        const double nothing = NoArea * mOrder.unit * mOrder.unit;
        // A middle that stays anyway doesn't keep the mouths from being cut whole.
        mKeepsMiddle = mOrder.followed && AreaOnBoard(CoreOf(mPath, mOrder.bit)) < nothing;
        double least = LeftBy(mPath);
        // Where a corner of the air stands into the path, whatever cuts that air leaves it round up to here.
        bool runsOff = AirStandsIn();
        if (least < nothing && !runsOff) return std::nullopt;
        std::optional<PlanLoop> best;
        for (const Reach& reach : Reaches()) {
            if (runsOff && reach.depth == 0) continue;
            std::optional<PlanLoop> path;
            double left = least;
            // A way that arithmetic doesn't close is no way.
            Skip([&] {
                path = RunOff(reach);
                if (path) left = LeftBy(*path);
            });
            if (!path) continue;
            const bool isCleaner = best && HasStep(*best) && !HasStep(*path) && left < least + nothing;
            if (left > least - (runsOff ? -nothing : nothing) && !isCleaner) continue;
            runsOff = false;
            least = left;
            best = std::move(path);
            if (least < nothing && !HasStep(*best)) break;
        }
        return best;
    }

  private:
    /// Whether the path turns away from what lies within it at an end of a mouth.
    bool AirStandsIn() const {
        for (std::size_t i = 0; i < mPath.size(); ++i) {
            const PlanSide &before = mPath[i], &behind = mPath[(i + 1) % mPath.size()];
            const PlanPoint in = AtShare(before, 1) - AtShare(before, 0.999),
                            out = AtShare(behind, 0.001) - AtShare(behind, 0);
            const double turn = Cross(in, out) / (Length(in) * Length(out));
            if (turn > -NoCorner) continue;
            const auto ends = [&](const PlanSide& mouth) {
                return Length(mouth.from - before.to) < SameCorner * mOrder.same ||
                       Length(mouth.to - before.to) < SameCorner * mOrder.same;
            };
            if (std::ranges::any_of(mMouths, ends)) return true;
        }
        return false;
    }

    /// A figure may end next to where a round runs out beside its wall.
    bool HasStep(const PlanLoop& path) const {
        return std::ranges::any_of(path, [this](const PlanSide& side) {
            return Length(side.to - side.from) < NoMouth * mOrder.unit;
        });
    }

    std::vector<Reach> Reaches() const {
        const double off = mOrder.overrun;
        // Where the air has bitten the path it is enough to go straight on.
        std::vector<Reach> reaches{{0, 0, false}, {off, 0, false}};
        // Where the whole mouth is moved, a line that is followed may miss the middle.
        if (mKeepsMiddle) reaches.push_back({off, 0, true});
        reaches.push_back({off, off, false});
        if (mKeepsMiddle) reaches.push_back({off, off, true});
        return reaches;
    }

    /// How much of the path's place on the board the bit would leave, but for the rounds in corners that the
    /// part has.
    double LeftBy(const PlanLoop& path) const {
        BitRest rest = RestOfBit(path, BitPath::Within, mOrder.bit, mOrder.unit);
        const auto isWood = [this](const PlanPoint& point) { return mOrder.wood.Holds(point); };
        for (const RoundedCorner& corner : rest.corners)
            if (!IsCornerOf(corner, isWood, mOrder.unit)) Append(BorderOf(corner), rest.border);
        double area = AreaOnBoard(rest.border);
        if (mKeepsMiddle) area += AreaOnBoard(CoreOf(path, mOrder.bit));
        return area;
    }

    /// How much of the path's place on the board lies within a border.
    double AreaOnBoard(const std::vector<PlanSide>& border) const {
        if (border.empty()) return 0;
        const PlanBox& board = mOrder.board;
        const std::array shapes{PlanShape{PlanShape::Role::Stock, mPath, -1},
                                PlanShape{PlanShape::Role::Stock,
                                          SidesAround({PlanPoint{board.minX, board.minY},
                                                       {board.maxX, board.minY},
                                                       {board.maxX, board.maxY},
                                                       {board.minX, board.maxY}}),
                                          -1},
                                PlanShape{PlanShape::Role::Stock, {}, -1, {}, border}};
        double area = 0;
        for (const PlanSpot& spot : CompareInPlan({}, shapes, NegligibleWidth * mOrder.unit))
            area += spot.area;
        return area;
    }

    static void Append(const std::vector<PlanSide>& more, std::vector<PlanSide>& sides) {
        sides.insert(sides.end(), more.begin(), more.end());
    }

    bool IsOnBoard(const PlanPoint& point) const {
        const PlanBox& board = mOrder.board;
        const double slack = mOrder.same;
        return point.x > board.minX - slack && point.x < board.maxX + slack && point.y > board.minY - slack &&
               point.y < board.maxY + slack;
    }

    void FindMouths() {
        std::vector<PlanSide> sides = mPath;
        Append(mOrder.wood.sides, sides);
        for (const NumberedStretch& stretch : NumberedStretches(sides, mOrder.same)) {
            if (stretch.of >= mPath.size()) continue;
            const PlanSide& side = stretch.side;
            const PlanPoint along = AtShare(side, 0.51) - AtShare(side, 0.49);
            if (Length(side.to - side.from) < NoMouth * mOrder.unit || Length(along) == 0) continue;
            const PlanPoint middle = AtShare(side, 0.5);
            const PlanPoint behind =
                middle + PlanPoint{along.y, -along.x} * (Beside * mOrder.unit / Length(along));
            if (IsOnBoard(middle) && !mOrder.wood.Holds(behind)) mMouths.push_back(side);
        }
    }

    /// The figures in front of a mouth.
    std::vector<std::vector<PlanSide>> FiguresBefore(const PlanSide& mouth, const Reach& reach) const {
        const PlanPoint chord = mouth.to - mouth.from;
        const double length = Length(chord);
        const PlanPoint along = chord * (1 / length), out{along.y, -along.x};
        const double depth = reach.depth + std::max(0.0, mouth.bulge * length / 2);
        const auto figure = [&](double from, double to) {
            const PlanPoint a = mouth.from + along * from, b = mouth.from + along * to;
            return SidesAround({a, a + out * depth, b + out * depth, b});
        };
        std::vector<std::vector<PlanSide>> figures;
        const double ear = EarShare * mOrder.bit;
        if (reach.depth == 0) {
            // No figure in front of the chord.
        } else if (reach.atEnds && 2 * ear < length) {
            figures.push_back(figure(-reach.wider, ear));
            figures.push_back(figure(length - ear, length + reach.wider));
        } else {
            figures.push_back(figure(-reach.wider, length + reach.wider));
        }
        // A mouth that bends inwards has air between itself and its chord.
        if (mouth.bulge < 0) figures.push_back({mouth, {mouth.to, mouth.from, 0}});
        return figures;
    }

    std::optional<PlanLoop> RunOff(const Reach& reach) const {
        std::vector<PlanSide> sides = mPath;
        Append(mOrder.wood.sides, sides);
        std::vector<PlanField> figures;
        for (const PlanSide& mouth : mMouths) {
            for (const std::vector<PlanSide>& figure : FiguresBefore(mouth, reach)) {
                Append(figure, sides);
                figures.emplace_back(figure);
            }
        }
        const auto holds = [&](const PlanPoint& point) {
            if (mInPath.Holds(point)) return true;
            return std::ranges::any_of(figures,
                                       [&](const PlanField& figure) { return figure.Holds(point); }) &&
                   !mOrder.wood.Holds(point);
        };
        for (const PlanArea& area : AreasOf(BorderOf(sides, holds, mOrder.same))) {
            if (!PlanField(area.outer).Holds(PointWithin())) continue;
            // What the figures leave within is air, or else the whole touches wood.
            if (TouchesWood(mOrder.wood, area.outer, mOrder.unit)) return std::nullopt;
            return WithOwnCorners(area.outer);
        }
        return std::nullopt;
    }

    /// Sections are exact to less than contours are, and where both have a corner the contour's stays.
    PlanLoop WithOwnCorners(PlanLoop path) const {
        const auto take = [this](PlanPoint& corner) {
            for (const PlanSide& side : mPath)
                if (Length(side.from - corner) < SameCorner * mOrder.same) corner = side.from;
        };
        for (PlanSide& side : path) {
            take(side.from);
            take(side.to);
        }
        return path;
    }

    PlanPoint PointWithin() const {
        const PlanSide& side = mPath.front();
        const PlanPoint along = AtShare(side, 0.51) - AtShare(side, 0.49);
        return AtShare(side, 0.5) + PlanPoint{-along.y, along.x} * (Beside * mOrder.unit / Length(along));
    }

    const MouthOrder& mOrder;
    const PlanLoop mPath;
    const PlanField mInPath;
    std::vector<PlanSide> mMouths;
    /// The bit follows the line, leaves nothing in the middle of the path, and shall not leave any.
    bool mKeepsMiddle = false;
};

}  // namespace

std::optional<PlanLoop> RunIntoAir(const MouthOrder& order) {
    if (order.path.size() < 2 || order.bit <= 0) return std::nullopt;
    return Mouths(order).Best();
}

}  // namespace brenvik
