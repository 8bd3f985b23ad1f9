// The part is compared slab by slab. Between two neighbouring heights at which anything begins or ends
// nothing changes, so one section is enough; where faces aren't upright a slab is cut more than once.
#include "cnc/proof/part_proof.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <numeric>
#include <optional>
#include <utility>

#include "base/failure.h"
#include "base/skip.h"
#include "cnc/part/told.h"
#include "cnc/plan/bit_access.h"
#include "cnc/plan/bit_reach.h"
#include "cnc/plan/negligible_sizes.h"
#include "cnc/plan/plan_piece.h"
#include "cnc/proof/needless_operations.h"
#include "cnc/proof/single_operations.h"
#include "cnc/proof/slab_sections.h"
#include "cnc/proof/way_checks.h"

namespace brenvik {

namespace {

/// In millimetres: wood less deep than this doesn't count; nor does a spot of a negligible width, unless it
/// is long. A long one counts from a hundredth on, which is more than names round away.
constexpr double NoDepth = 0.01, NoLongWidth = 0.01, NoVolume = 1;
/// Depths in names are rounded to half of it.
constexpr double DepthSlack = 1e-6;
/// Into how many a slab with sloping faces is cut.
constexpr int PiecesOfSlope = 3;
/// Two bores are in one line when they agree to this, in millimetres: names have two decimals.
constexpr double SamePlace = 0.02;

/// The round that a bit leaves in a corner of its path, and the heights at which the part has no such corner.
struct ShownCorner {
    std::vector<PlanSide> border;
    HeightSpan heights;
};

/// A spot of one slab, before those above each other are put together.
struct SlabSpot {
    PlanSpot plan;
    Slab slab;
};

bool Overlap(const PlanSpot& a, const PlanSpot& b, double slack) {
    if (!Overlap(a.box, b.box, slack)) return false;
    return std::ranges::any_of(a.stripes, [&](const PlanBox& one) {
        return std::ranges::any_of(b.stripes,
                                   [&](const PlanBox& other) { return Overlap(one, other, slack); });
    });
}

class Prover {
  public:
    Prover(const SolidSections& part, std::span<const WrittenOperation> operations,
           std::span<const std::vector<PlanSide>> stock, double unit)
        : mPart(part),
          mBox(part.Box()),
          mOperations(operations.begin(), operations.end()),
          mStock(stock),
          mUnit(unit),
          mCorners(operations.size()),
          mShown(operations.size()) {
        for (WrittenOperation& operation : mOperations) {
            if (operation.heightUnknown || operation.heightRounding > 0) FindHeight(operation);
            mShapes.push_back(ShapeOf(operation, static_cast<int>(mShapes.size())));
        }
        for (const Slab& slab : Slabs()) {
            std::vector<PlanSide> sides = mPart.At(slab.Middle());
            PlanField field(sides);
            mSections.push_back({slab, std::move(sides), std::move(field)});
        }
    }

    PartProof Prove() {
        TellSingleOperations();
        for (std::size_t i = 0; i < mOperations.size(); ++i) ShowCorners(i);
        for (const PartSection& section : mSections) {
            const std::vector<PlanShape> shapes = ShapesAt(section.slab.Middle());
            for (PlanSpot& spot : CompareInPlan(section.sides, shapes, NoLongWidth * mUnit))
                mSpots.push_back({std::move(spot), section.slab});
        }
        Join();
        TellStrayWays();
        return std::move(mProof);
    }

  private:
    // What each operation does to the plan.

    static BitPath PathOf(const WrittenOperation& operation) {
        return operation.kind == OperationKind::Outline ? BitPath::Around : BitPath::Within;
    }

    PlanShape ShapeOf(const WrittenOperation& operation, int number) {
        PlanShape shape{
            PathOf(operation) == BitPath::Around ? PlanShape::Role::Stock : PlanShape::Role::Removal,
            operation.sides, number};
        if (operation.bit <= 0) return shape;
        if (operation.followed) shape.core = CoreOf(operation.sides, operation.bit);
        BitRest rest;
        if (Attempt([&] { rest = RestOfBit(operation.sides, PathOf(operation), operation.bit, mUnit); }))
            TellUnknownRest(operation);
        shape.notReached = std::move(rest.border);
        mCorners[static_cast<std::size_t>(number)] = std::move(rest.corners);
        return shape;
    }

    /// What a bit leaves of a path that crosses itself, say, is known to nobody; all else can be compared.
    void TellUnknownRest(const WrittenOperation& operation) {
        const double low = std::max(operation.low, mBox.min.z), high = std::min(operation.high, mBox.max.z);
        mProof.faults.push_back("what the bit of " + ReportedLength(operation.bit) + " leaves of " +
                                NameWithSide(operation) + ", " + ReportedLength(high - low) + " deep, " +
                                PlaceOf(operation) + ", could not be compared, since its way does not close");
    }

    // Rounds in corners. Where the part has the corner, every bit leaves a round, so it is no difference, at
    // that height or further up on the bit's way.

    /// Paths run off the board's edges so far that their corners leave nothing on it.
    bool ReachesBoard(const RoundedCorner& corner) const {
        const double slack = NegligibleWidth * mUnit;
        const auto within = [&](const PlanPoint& at) {
            return at.x > mBox.min.x + slack && at.x < mBox.max.x - slack && at.y > mBox.min.y + slack &&
                   at.y < mBox.max.y - slack;
        };
        return within(corner.before.from) || within(corner.before.to) || within(corner.behind.to);
    }

    void ShowCorners(std::size_t number) {
        const WrittenOperation& operation = mOperations[number];
        for (const RoundedCorner& corner : mCorners[number]) {
            if (!ReachesBoard(corner)) continue;
            const std::vector<PlanPoint> behind = BehindWalls(corner, mUnit);
            std::vector<bool> wood(behind.size(), false);
            std::optional<HeightSpan> heights;
            // From the side that the bit comes from.
            for (std::size_t i = 0; i < mSections.size(); ++i) {
                const PartSection& section = mSections[operation.secondSide ? i : mSections.size() - 1 - i];
                const double at = section.slab.Middle();
                if (at <= operation.low || at >= operation.high) continue;
                for (std::size_t point = 0; point < behind.size(); ++point)
                    if (!wood[point]) wood[point] = section.field.Holds(behind[point]);
                if (std::ranges::all_of(wood, [](bool is) { return is; })) break;
                if (!heights) heights = HeightSpan{section.slab.low, section.slab.high};
                heights->low = std::min(heights->low, section.slab.low);
                heights->high = std::max(heights->high, section.slab.high);
            }
            if (heights) mShown[number].push_back({BorderOf(corner), *heights});
        }
    }

    /// The shape of an operation at a height, with the rounds that it leaves there.
    PlanShape ShapeAt(std::size_t number, double height) const {
        PlanShape shape = mShapes[number];
        for (const ShownCorner& corner : mShown[number])
            if (corner.heights.low < height && height < corner.heights.high)
                shape.notReached.insert(shape.notReached.end(), corner.border.begin(), corner.border.end());
        return shape;
    }

    // Bores whose receiver takes the height from elsewhere, or from a name that rounds it.

    void FindHeight(WrittenOperation& operation) const {
        LevelRound& bore = *operation.bore;
        for (const LevelRound& round : mPart.Rounds()) {
            const double dx = round.on.x - bore.on.x, dy = round.on.y - bore.on.y;
            const double across = dx * bore.along.y - dy * bore.along.x;
            const double lean = round.along.x * bore.along.y - round.along.y * bore.along.x;
            if (std::abs(across) > SamePlace * mUnit || std::abs(lean) > 1e-6 ||
                std::abs(round.radius - bore.radius) > SamePlace * mUnit)
                continue;
            if (!operation.heightUnknown &&
                std::abs(round.on.z - bore.on.z) > operation.heightRounding + DepthSlack)
                continue;
            bore.on.z = round.on.z;
            operation.low = bore.on.z - bore.radius;
            operation.high = bore.on.z + bore.radius;
            return;
        }
    }

    // Slabs.

    std::vector<Slab> Slabs() const {
        std::vector<double> levels = mPart.Levels();
        for (const WrittenOperation& operation : mOperations) {
            if (operation.kind == OperationKind::Outline) continue;
            levels.insert(levels.end(), {operation.low, operation.high});
            if (operation.bore) levels.push_back(operation.bore->on.z);
        }
        std::ranges::sort(levels);
        std::vector<Slab> slabs;
        for (std::size_t i = 0; i + 1 < levels.size(); ++i) {
            const Slab slab{std::max(levels[i], mBox.min.z), std::min(levels[i + 1], mBox.max.z)};
            if (slab.high - slab.low <= NoDepth * mUnit + DepthSlack) continue;
            AddSlab(slab, slabs);
        }
        return slabs;
    }

    bool IsSloped(const Slab& slab) const {
        const double at = slab.Middle();
        return std::ranges::any_of(
                   mPart.Slopes(),
                   [at](const HeightSpan& span) { return span.low < at && at < span.high; }) ||
               std::ranges::any_of(mOperations, [at](const WrittenOperation& each) {
                   return each.bore && each.low < at && at < each.high;
               });
    }

    void AddSlab(const Slab& slab, std::vector<Slab>& slabs) const {
        const int pieces = IsSloped(slab) ? PiecesOfSlope : 1;
        const double step = (slab.high - slab.low) / pieces;
        for (int piece = 0; piece < pieces; ++piece)
            slabs.push_back({slab.low + piece * step, slab.low + (piece + 1) * step});
    }

    // What the operations do at a height.

    static void AddLump(const PlanShape& lump, std::optional<PlanShape>& outline) {
        if (!outline) {
            outline = lump;
            return;
        }
        const auto append = [](std::vector<PlanSide>& sides, const std::vector<PlanSide>& more) {
            sides.insert(sides.end(), more.begin(), more.end());
        };
        append(outline->sides, lump.sides);
        if (outline->notReached.empty()) outline->operation = lump.operation;
        append(outline->notReached, lump.notReached);
    }

    std::vector<PlanShape> ShapesAt(double height) const {
        std::vector<PlanShape> shapes;
        for (const std::vector<PlanSide>& stock : mStock)
            shapes.push_back({PlanShape::Role::Stock, stock, -1});
        // A part of several lumps has several outlines on a side, and may stand in any of them.
        std::array<std::optional<PlanShape>, 2> outlines;
        for (std::size_t i = 0; i < mOperations.size(); ++i) {
            const WrittenOperation& operation = mOperations[i];
            if (height <= operation.low || height >= operation.high) continue;
            if (operation.kind == OperationKind::Outline) {
                AddLump(ShapeAt(i, height), outlines[operation.secondSide ? 1 : 0]);
                continue;
            }
            shapes.push_back(ShapeAt(i, height));
            if (operation.bore) shapes.back().sides = BoreAt(operation, height);
        }
        for (std::optional<PlanShape>& around : outlines)
            if (around) shapes.push_back(*std::move(around));
        // Without an outline the sheet is the part's own box.
        const bool hasStock = std::ranges::any_of(
            shapes, [](const PlanShape& shape) { return shape.role == PlanShape::Role::Stock; });
        if (!hasStock)
            shapes.push_back({PlanShape::Role::Stock,
                              SidesAround({PlanPoint{mBox.min.x, mBox.min.y},
                                           {mBox.max.x, mBox.min.y},
                                           {mBox.max.x, mBox.max.y},
                                           {mBox.min.x, mBox.max.y}}),
                              -1});
        return shapes;
    }

    // Spots that stand above each other.

    std::size_t Root(std::size_t spot) {
        while (mOver[spot] != spot) spot = mOver[spot] = mOver[mOver[spot]];
        return spot;
    }

    bool Meet(const SlabSpot& lower, const SlabSpot& upper) const {
        return lower.plan.difference == upper.plan.difference &&
               std::abs(upper.slab.low - lower.slab.high) < 3 * NoDepth * mUnit &&
               Overlap(lower.plan, upper.plan, NoLongWidth * mUnit / 2);
    }

    void Join() {
        mOver.resize(mSpots.size());
        std::iota(mOver.begin(), mOver.end(), std::size_t{0});
        for (std::size_t i = 0; i < mSpots.size(); ++i)
            for (std::size_t j = i + 1; j < mSpots.size(); ++j)
                if (Meet(mSpots[i], mSpots[j])) mOver[Root(j)] = Root(i);
        std::vector<std::optional<ProofSpot>> joined(mSpots.size());
        for (std::size_t i = 0; i < mSpots.size(); ++i) Grow(joined[Root(i)], mSpots[i]);
        for (std::size_t i = 0; i < joined.size(); ++i) {
            if (!joined[i] || !Counts(*joined[i])) continue;
            if (joined[i]->notReached && joined[i]->difference == Difference::Standing) FindBit(*joined[i]);
            mProof.spots.push_back(std::move(*joined[i]));
        }
    }

    void FindBit(ProofSpot& spot) const {
        const WrittenOperation& operation = mOperations[static_cast<std::size_t>(spot.operation)];
        const Box3& box = spot.box;
        // With a bit for which no way is found, none is named.
        Skip([&] {
            spot.wouldReach =
                WidestForPlace(operation.sides, PathOf(operation),
                               {box.min.x, box.min.y, box.max.x, box.max.y}, operation.bit, mUnit);
        });
        spot.inCorner = spot.wouldReach >= operation.bit;
    }

    void Grow(std::optional<ProofSpot>& whole, const SlabSpot& spot) const {
        const PlanBox& plan = spot.plan.box;
        const Box3 box{{plan.minX, plan.minY, spot.slab.low}, {plan.maxX, plan.maxY, spot.slab.high}};
        if (!whole) {
            whole.emplace();
            whole->difference = spot.plan.difference;
            whole->box = box;
        }
        if (whole->layer.empty() && spot.plan.operation >= 0) {
            const WrittenOperation& cause = mOperations[static_cast<std::size_t>(spot.plan.operation)];
            whole->layer = cause.layer;
            whole->secondSide = cause.secondSide;
            whole->bit = cause.bit;
            whole->hasCore = !mShapes[static_cast<std::size_t>(spot.plan.operation)].core.empty();
            whole->operation = spot.plan.operation;
            whole->notReached = spot.plan.notReached;
        }
        whole->box.min = {std::min(whole->box.min.x, box.min.x), std::min(whole->box.min.y, box.min.y),
                          std::min(whole->box.min.z, box.min.z)};
        whole->box.max = {std::max(whole->box.max.x, box.max.x), std::max(whole->box.max.y, box.max.y),
                          std::max(whole->box.max.z, box.max.z)};
        whole->stripes.insert(whole->stripes.end(), spot.plan.stripes.begin(), spot.plan.stripes.end());
        whole->volume += spot.plan.area * (spot.slab.high - spot.slab.low);
        whole->width = std::max(whole->width, spot.plan.width);
    }

    bool Counts(const ProofSpot& spot) const {
        return spot.width > NegligibleWidth * mUnit || spot.volume > NoVolume * mUnit * mUnit * mUnit;
    }

    // Operations by themselves.

    void TellSingleOperations() {
        const auto isWood = [this](const WrittenOperation& each, const PlanPoint& at) {
            return IsWood(Ways(), each, at);
        };
        // Between themselves each takes what its bit gets to: another one may be there for a corner.
        std::vector<PlanShape> shapes = mShapes;
        for (std::size_t i = 0; i < shapes.size(); ++i)
            for (const RoundedCorner& corner : mCorners[i])
                std::ranges::copy(BorderOf(corner), std::back_inserter(shapes[i].notReached));
        const OperationsOfPart part{mOperations, shapes, mBox, mUnit, isWood};
        OperationFaults faults = FaultsOfSingleOperations(part);
        std::ranges::move(faults.texts, std::back_inserter(mProof.faults));
        std::ranges::move(FaultsOfNeedless(part, Board(), std::move(faults.needless)),
                          std::back_inserter(mProof.faults));
    }

    std::vector<BoardAtHeight> Board() const {
        std::vector<BoardAtHeight> board;
        for (const PartSection& section : mSections) {
            board.push_back({{section.slab.low, section.slab.high}, ShapesAt(section.slab.Middle())});
            std::erase_if(board.back().stock,
                          [](const PlanShape& shape) { return shape.role != PlanShape::Role::Stock; });
        }
        return board;
    }

    // The ways of paths.

    WaysOfPart Ways() const { return {mOperations, mSections, mUnit}; }

    /// A report on a path covers the place that it leads to.
    void TellStrayWays() {
        std::ranges::move(FaultsOfDoubledWays(Ways()), std::back_inserter(mProof.faults));
        std::vector<PlanBox> told;
        for (const ProofSpot& spot : mProof.spots)
            if (spot.difference != Difference::Standing)
                told.push_back({spot.box.min.x, spot.box.min.y, spot.box.max.x, spot.box.max.y});
        for (StrayWay& stray : FaultsOfStrayWays(Ways(), told)) {
            const bool isKnown = std::ranges::any_of(mProof.faults, [&stray](const std::string& text) {
                return text.find(stray.name) != std::string::npos;
            });
            if (!isKnown) mProof.faults.push_back(std::move(stray.text));
        }
    }

    const SolidSections& mPart;
    const Box3 mBox;
    std::vector<WrittenOperation> mOperations;
    std::span<const std::vector<PlanSide>> mStock;
    const double mUnit;
    /// Of each operation; of a bore at no height yet.
    std::vector<PlanShape> mShapes;
    /// Of each operation, the rounds in its corners, and those that aren't the part's.
    std::vector<std::vector<RoundedCorner>> mCorners;
    std::vector<std::vector<ShownCorner>> mShown;
    std::vector<PartSection> mSections;
    std::vector<SlabSpot> mSpots;
    std::vector<std::size_t> mOver;
    PartProof mProof;
};

}  // namespace

PartProof ProvePart(const SolidSections& part, std::span<const WrittenOperation> operations,
                    std::span<const std::vector<PlanSide>> stock, double unit) {
    return Prover(part, operations, stock, unit).Prove();
}

bool OutlinesDiffer(std::span<const WrittenOperation> operations, double unit) {
    std::array<std::vector<PlanSide>, 2> outlines;
    for (const WrittenOperation& operation : operations) {
        if (operation.kind != OperationKind::Outline) continue;
        std::vector<PlanSide>& around = outlines[operation.secondSide ? 1 : 0];
        around.insert(around.end(), operation.sides.begin(), operation.sides.end());
    }
    if (outlines[0].empty() || outlines[1].empty()) return false;
    const std::array<PlanShape, 1> second{PlanShape{PlanShape::Role::Stock, outlines[1], -1}};
    return CornersStray(outlines[0], outlines[1], unit) || CornersStray(outlines[1], outlines[0], unit) ||
           !CompareInPlan(outlines[0], second, NegligibleWidth * unit).empty();
}

}  // namespace brenvik
