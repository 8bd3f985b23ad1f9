// The plan is cut into upright stripes wherever a side begins, ends or crosses another. In a stripe the sides
// lie one above the other, and each field between two neighbours is wholly inside or outside of everything.
// Sides that should lie on each other and miss by the noise of arithmetic leave fields of no width.
#include "cnc/plan/plan_difference.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numeric>
#include <optional>

namespace brenvik {

namespace {

/// Stripes narrower than this are none, in any unit; sides are exact to about as much.
constexpr double NoStripe = 1e-7;
constexpr double StrayOfChords = 1e-9;
/// Where a field's width is looked at, as shares of its stripe.
constexpr std::array<double, 5> Looks{0.05, 0.25, 0.5, 0.75, 0.95};

/// A piece with the shape that it belongs to; the part itself is -1.
struct Owned {
    enum class Of { Sides, Core, NotReached };
    PlanPiece piece;
    int shape = -1;
    Of of = Of::Sides;
};

/// What has taken a place, or leaves it.
struct Cause {
    int operation = -1;
    bool notReached = false;
};

/// A field that differs.
struct Field {
    Difference difference = Difference::Standing;
    double x0 = 0, x1 = 0;
    const PlanPiece *low = nullptr, *high = nullptr;
    Cause cause;
    std::size_t stripe = 0;
    double area = 0, width = 0;

    PlanBox Box() const { return {x0, low->Lowest(x0, x1), x1, high->Highest(x0, x1)}; }
};

double WidthOf(const Field& field) {
    double widest = 0;
    for (const double share : Looks) {
        const double x = field.x0 + share * (field.x1 - field.x0);
        const double middle = (field.low->At(x) + field.high->At(x)) / 2;
        if (field.high->At(x) <= field.low->At(x)) continue;
        widest = std::max(widest, field.low->Distance(x, middle) + field.high->Distance(x, middle));
    }
    return widest;
}

/// What is known of a place while a stripe is walked from below.
class Place {
  public:
    explicit Place(std::span<const PlanShape> shapes) : mShapes(shapes), mTurns(shapes.size()) {
        for (const PlanShape& shape : shapes)
            if (shape.role == PlanShape::Role::Stock) ++mOutside;
    }

    void Pass(const Owned& side, int way) {
        if (side.shape < 0) {
            mInPart = !mInPart;
            return;
        }
        const auto index = static_cast<std::size_t>(side.shape);
        const bool before = Within(index), sought = IsSought(index);
        mTurns[index][static_cast<std::size_t>(side.of)] += way;
        const bool now = Within(index);
        mSought += static_cast<int>(IsSought(index)) - static_cast<int>(sought);
        if (before == now) return;
        if (mShapes[index].role == PlanShape::Role::Stock)
            mOutside += now ? -1 : 1;
        else
            mTaken += now ? 1 : -1;
    }
    std::optional<Difference> Now() const {
        const bool stays = mOutside == 0 && mTaken == 0;
        if (stays && mInPart && mSought > 0) return Difference::Sought;
        if (stays == mInPart) return std::nullopt;
        return stays ? Difference::Standing : Difference::Gone;
    }
    /// The operation that removes the wood here; where wood is left, one that runs around it or whose bit
    /// doesn't get there.
    Cause CauseOf(Difference difference) const {
        Cause cause;
        for (std::size_t i = 0; i < mShapes.size() && cause.operation < 0; ++i) {
            const bool removal = mShapes[i].role == PlanShape::Role::Removal;
            if (difference == Difference::Gone) {
                if (removal && Within(i)) cause.operation = mShapes[i].operation;
            } else if (difference == Difference::Sought) {
                if (IsSought(i)) cause = {mShapes[i].operation, true};
            } else if (removal ? Has(i, Owned::Of::Sides) : NotReached(i)) {
                cause = {mShapes[i].operation, NotReached(i)};
            }
        }
        return cause;
    }

  private:
    bool Has(std::size_t shape, Owned::Of of) const {
        return mTurns[shape][static_cast<std::size_t>(of)] > 0;
    }
    bool NotReached(std::size_t shape) const { return Has(shape, Owned::Of::NotReached); }
    bool Within(std::size_t shape) const {
        if (mShapes[shape].role == PlanShape::Role::Stock)
            return Has(shape, Owned::Of::Sides) || NotReached(shape);
        return Has(shape, Owned::Of::Sides) && !Has(shape, Owned::Of::Core) && !NotReached(shape);
    }

    /// The shape would take what its bit doesn't get to.
    bool IsSought(std::size_t shape) const {
        const bool removal = mShapes[shape].role == PlanShape::Role::Removal;
        return NotReached(shape) && Has(shape, Owned::Of::Sides) == removal;
    }

    std::span<const PlanShape> mShapes;
    std::vector<std::array<int, 3>> mTurns;
    int mOutside = 0, mTaken = 0, mSought = 0;
    bool mInPart = false;
};

class Sweep {
  public:
    Sweep(std::span<const PlanSide> part, std::span<const PlanShape> shapes, double width)
        : mShapes(shapes), mWidth(width) {
        Add(part, -1, 1);
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            Add(shapes[i].sides, static_cast<int>(i), SignedArea(shapes[i].sides) < 0 ? -1 : 1);
            Add(shapes[i].core, static_cast<int>(i), 1, Owned::Of::Core);
            Add(shapes[i].notReached, static_cast<int>(i), 1, Owned::Of::NotReached);
        }
        std::ranges::sort(mSides, {}, [](const Owned& side) { return side.piece.x0; });
        FindStripes();
    }

    std::vector<PlanSpot> Spots() {
        std::vector<const Owned*> active;
        std::size_t next = 0;
        for (std::size_t i = 0; i + 1 < mPlaces.size(); ++i) {
            const double from = mPlaces[i], to = mPlaces[i + 1];
            for (; next < mSides.size() && mSides[next].piece.x0 <= from + 2 * NoStripe; ++next)
                active.push_back(&mSides[next]);
            std::erase_if(active, [&](const Owned* side) { return side->piece.x1 < to - 2 * NoStripe; });
            WalkStripe(active, i, from, to);
        }
        return Joined();
    }

  private:
    void Add(std::span<const PlanSide> sides, int shape, int way, Owned::Of of = Owned::Of::Sides) {
        std::vector<PlanPiece> pieces;
        for (const PlanSide& side : sides) AddPieces(side, StrayOfChords, pieces);
        for (PlanPiece& piece : pieces) {
            if (piece.x1 - piece.x0 < NoStripe) continue;
            piece.way *= way;
            mSides.push_back({piece, shape, of});
        }
    }

    void FindStripes() {
        for (std::size_t i = 0; i < mSides.size(); ++i) {
            const PlanPiece& piece = mSides[i].piece;
            mPlaces.insert(mPlaces.end(), {piece.x0, piece.x1});
            const double low = piece.Lowest(piece.x0, piece.x1), high = piece.Highest(piece.x0, piece.x1);
            for (std::size_t j = i + 1; j < mSides.size() && mSides[j].piece.x0 < piece.x1; ++j) {
                const PlanPiece& other = mSides[j].piece;
                if (other.Highest(other.x0, other.x1) < low || other.Lowest(other.x0, other.x1) > high)
                    continue;
                AddCrossings(piece, other, mPlaces);
            }
        }
        std::ranges::sort(mPlaces);
        const auto same = [](double a, double b) { return b - a < NoStripe; };
        mPlaces.erase(std::unique(mPlaces.begin(), mPlaces.end(), same), mPlaces.end());
    }

    void WalkStripe(std::vector<const Owned*> sides, std::size_t stripe, double from, double to) {
        const double middle = (from + to) / 2;
        std::ranges::sort(sides, {}, [&](const Owned* side) { return side->piece.At(middle); });
        Place place(mShapes);
        std::optional<Field> field;
        for (const Owned* side : sides) {
            place.Pass(*side, side->piece.way);
            const std::optional<Difference> now = place.Now();
            if (field && now != field->difference) {
                Close(*field, side->piece);
                field.reset();
            }
            // Sides on top of each other come in any order, so a cause may be listed after the first of them.
            if (field && field->cause.operation < 0) field->cause = place.CauseOf(*now);
            if (now && !field)
                field = Field{*now, from, to, &side->piece, nullptr, place.CauseOf(*now), stripe, 0, 0};
        }
    }

    void Close(Field& field, const PlanPiece& high) {
        field.high = &high;
        field.width = WidthOf(field);
        if (field.width < mWidth) return;
        field.area = high.AreaBelow(field.x0, field.x1) - field.low->AreaBelow(field.x0, field.x1);
        mFields.push_back(field);
    }

    /// Side by side, or one above the other with but the noise of arithmetic between them.
    bool Touch(const Field& left, const Field& right) const {
        if (left.difference != right.difference) return false;
        if (left.stripe == right.stripe) {
            const double middle = (left.x0 + left.x1) / 2;
            return right.low->At(middle) - left.high->At(middle) < 10 * NoStripe;
        }
        const double low = std::max(left.low->At(left.x1), right.low->At(right.x0));
        const double high = std::min(left.high->At(left.x1), right.high->At(right.x0));
        return high - low > NoStripe;
    }

    std::size_t Root(std::size_t field) {
        while (mOver[field] != field) field = mOver[field] = mOver[mOver[field]];
        return field;
    }

    /// Neighbours of one kind become one spot.
    std::vector<PlanSpot> Joined() {
        mOver.resize(mFields.size());
        std::iota(mOver.begin(), mOver.end(), std::size_t{0});
        mBeside.resize(mFields.size());
        for (std::size_t i = 0; i < mFields.size(); ++i)
            for (std::size_t j = i + 1; j < mFields.size() && mFields[j].stripe <= mFields[i].stripe + 1; ++j)
                if (Touch(mFields[i], mFields[j])) {
                    mOver[Root(j)] = Root(i);
                    mBeside[i].push_back(j);
                    mBeside[j].push_back(i);
                }
        std::vector<PlanSpot> spots;
        std::vector<std::size_t> spotOf(mFields.size(), mFields.size());
        for (std::size_t i = 0; i < mFields.size(); ++i) {
            std::size_t& spot = spotOf[Root(i)];
            if (spot == mFields.size()) {
                spot = spots.size();
                spots.push_back({mFields[i].difference,
                                 mFields[i].Box(),
                                 0,
                                 0,
                                 mFields[i].cause.operation,
                                 mFields[i].cause.notReached,
                                 {}});
            }
            Grow(spots[spot], mFields[i]);
            spotOf[i] = spot;
        }
        WidenSpots(spots, spotOf);
        for (PlanSpot& spot : spots) spot.width = std::min(spot.width, spot.box.maxX - spot.box.minX);
        std::erase_if(spots, [this](const PlanSpot& spot) { return spot.width < mWidth; });
        return spots;
    }

    // A field may be high and hardly as long as the hair by which two sides miss each other. What hangs
    // together with it and is as wide, or half of it as ends of a round are, has to be as long: an upright
    // sliver is as narrow as all its stripes together, and a frame of slivers as narrow as they are.

    void WidenSpots(std::vector<PlanSpot>& spots, const std::vector<std::size_t>& spotOf) const {
        std::vector<std::size_t> widestFirst(mFields.size());
        std::iota(widestFirst.begin(), widestFirst.end(), std::size_t{0});
        std::ranges::sort(widestFirst, std::greater{}, [this](std::size_t i) { return mFields[i].width; });
        for (const std::size_t i : widestFirst) {
            double& width = spots[spotOf[i]].width;
            if (width < mFields[i].width) width = std::max(width, SureWidth(i));
        }
    }

    double SureWidth(std::size_t field) const {
        const double width = mFields[field].width;
        std::vector<bool> seen(mFields.size());
        std::vector<std::size_t> open{field};
        seen[field] = true;
        double from = mFields[field].x0, to = mFields[field].x1;
        while (!open.empty()) {
            const std::size_t at = open.back();
            open.pop_back();
            from = std::min(from, mFields[at].x0);
            to = std::max(to, mFields[at].x1);
            if (to - from >= width / 2) return width;
            for (const std::size_t beside : mBeside[at]) {
                if (seen[beside] || mFields[beside].width < width / 2) continue;
                seen[beside] = true;
                open.push_back(beside);
            }
        }
        return to - from;
    }

    static void Grow(PlanSpot& spot, const Field& field) {
        if (spot.operation < 0) spot.operation = field.cause.operation;
        spot.notReached = spot.notReached || field.cause.notReached;
        const PlanBox box = field.Box();
        spot.box = {std::min(spot.box.minX, box.minX), std::min(spot.box.minY, box.minY),
                    std::max(spot.box.maxX, box.maxX), std::max(spot.box.maxY, box.maxY)};
        spot.area += field.area;
        spot.stripes.push_back(box);
    }

    std::span<const PlanShape> mShapes;
    double mWidth;
    std::vector<Owned> mSides;
    std::vector<double> mPlaces;
    std::vector<Field> mFields;
    std::vector<std::size_t> mOver;
    /// Of each field, those that it touches.
    std::vector<std::vector<std::size_t>> mBeside;
};

}  // namespace

std::vector<PlanSpot> CompareInPlan(std::span<const PlanSide> part, std::span<const PlanShape> shapes,
                                    double width) {
    return Sweep(part, shapes, width).Spots();
}

double AreaOf(std::span<const PlanSpot> spots) {
    double area = 0;
    for (const PlanSpot& spot : spots) area += spot.area;
    return area;
}

}  // namespace brenvik
