// Each operation against the sheet, and each pair against each other.
#include "cnc/proof/single_operations.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <numbers>

#include "cnc/part/told.h"
#include "cnc/proof/twin_operations.h"

namespace brenvik {

namespace {

/// In millimetres: less deep or wide than this is nothing.
constexpr double NoDepth = 0.01;
/// In millimetres: places nearer than this are one, and a side as short is none.
constexpr double SamePlace = 0.01;
constexpr double SameBulge = 1e-3;
/// In millimetres: how far outside of an outline wood is looked for.
constexpr double OutsideOutline = 0.01;

void Widen(PlanBox& box, const PlanPoint& point) {
    box.minX = std::min(box.minX, point.x);
    box.minY = std::min(box.minY, point.y);
    box.maxX = std::max(box.maxX, point.x);
    box.maxY = std::max(box.maxY, point.y);
}

class OperationCheck {
  public:
    explicit OperationCheck(const OperationsOfPart& part)
        : mPart(part), mFaults{{}, std::vector<bool>(part.operations.size())} {}

    OperationFaults Check() {
        for (std::size_t i = 0; i < mPart.operations.size(); ++i)
            for (std::size_t j = i + 1; j < mPart.operations.size(); ++j) LookAtPair(i, j);
        for (std::size_t i = 0; i < mPart.operations.size(); ++i) {
            const WrittenOperation& operation = mPart.operations[i];
            if (operation.kind != OperationKind::Outline && !IsOnSheet(operation))
                TellNeedless(i, NameWithSide(operation) + " passes the part by and cuts nothing");
            LookAtCourse(operation);
        }
        return std::move(mFaults);
    }

  private:
    void LookAtPair(std::size_t i, std::size_t j) {
        const WrittenOperation &a = mPart.operations[i], &b = mPart.operations[j];
        if (AreTwins(a, b, {mPart.box.min.z, mPart.box.max.z}, mPart.unit))
            return TellNeedless(j, a.layer == b.layer ? a.layer + " stands twice in one place"
                                                      : a.layer + " and " + b.layer + " stand in one place");
        const bool areOutlines = a.kind == OperationKind::Outline && b.kind == OperationKind::Outline;
        if (areOutlines && a.secondSide == b.secondSide) LookAtOutlines(i, j);
    }

    void Tell(std::string text) { mFaults.texts.push_back(std::move(text)); }
    void TellNeedless(std::size_t number, std::string text) {
        Tell(std::move(text));
        mFaults.needless[number] = true;
    }

    /// Of an operation within the part: how far the spoil board is cut doesn't count.
    double LowOf(const WrittenOperation& one) const { return std::max(one.low, mPart.box.min.z); }
    double HighOf(const WrittenOperation& one) const { return std::min(one.high, mPart.box.max.z); }

    // Operations that pass the sheet by.

    bool IsOnSheet(const WrittenOperation& operation) const {
        const std::vector<PlanSide> sides =
            operation.bore ? BoreAt(operation, operation.bore->on.z) : operation.sides;
        const double slack = NoDepth * mPart.unit;
        const Box3& box = mPart.box;
        return Overlap(BoxAround(sides), {box.min.x, box.min.y, box.max.x, box.max.y}, slack) &&
               HighOf(operation) - LowOf(operation) > slack;
    }

    // Outlines. Those of a part's lumps lie apart, or around a lump in the window of another one.

    bool GoAroundTheSame(std::size_t i, std::size_t j) const {
        const std::array shapes{PlanShape{PlanShape::Role::Stock, mPart.operations[i].sides, -1},
                                PlanShape{PlanShape::Role::Stock, mPart.operations[j].sides, -1}};
        return !CompareInPlan({}, shapes, NoDepth * mPart.unit).empty();
    }

    /// Whether the bit, which goes around outside, would go through wood of the part.
    bool CutsIntoPart(const WrittenOperation& outline) const {
        const double out = OutsideOutline * mPart.unit * (SignedArea(outline.sides) < 0 ? -1 : 1);
        return std::ranges::any_of(outline.sides, [&](const PlanSide& side) {
            return std::ranges::any_of(std::array{0.25, 0.5, 0.75}, [&](double share) {
                return mPart.isWood(outline, Beside(side, share, out));
            });
        });
    }

    /// To the right of a place on a side.
    static PlanPoint Beside(const PlanSide& side, double share, double off) {
        if (side.bulge == 0) {
            const double dx = side.to.x - side.from.x, dy = side.to.y - side.from.y;
            const double length = std::hypot(dx, dy);
            if (length == 0) return side.from;
            return {side.from.x + share * dx + off * dy / length,
                    side.from.y + share * dy - off * dx / length};
        }
        const PlanRound round = RoundOf(side);
        const double at =
            std::atan2(side.from.y - round.center.y, side.from.x - round.center.x) + share * round.sweep;
        const double radius = round.radius + (round.sweep > 0 ? off : -off);
        return {round.center.x + radius * std::cos(at), round.center.y + radius * std::sin(at)};
    }

    void LookAtOutlines(std::size_t i, std::size_t j) {
        if (!GoAroundTheSame(i, j)) return;
        for (const std::size_t each : {i, j}) {
            const WrittenOperation& outline = mPart.operations[each];
            if (!CutsIntoPart(outline)) continue;
            Tell(NameWithSide(outline) +
                 " goes around wood within another outline, and cuts the part smaller, " + PlaceOf(outline));
        }
    }

    // The way of a path: a control that meets a side without a length, or the same one again, stops there or
    // cuts it twice.

    void LookAtCourse(const WrittenOperation& path) {
        for (auto side = path.sides.begin(); side != path.sides.end(); ++side) {
            const auto isSame = [&](const PlanSide& other) {
                return AreNear(side->from, other.from) && AreNear(side->to, other.to) &&
                       std::abs(side->bulge - other.bulge) < SameBulge;
            };
            const bool isNone = AreNear(side->from, side->to);
            if (!isNone && std::none_of(std::next(side), path.sides.end(), isSame)) continue;
            Tell(NameWithSide(path) + (isNone ? " has a vertex twice, at " : " runs twice from ") +
                 ReportedPlace(side->from) + (isNone ? std::string() : " to " + ReportedPlace(side->to)));
            return;
        }
    }

    bool AreNear(const PlanPoint& a, const PlanPoint& b) const {
        return std::hypot(a.x - b.x, a.y - b.y) < SamePlace * mPart.unit;
    }

    const OperationsOfPart& mPart;
    OperationFaults mFaults;
};

}  // namespace

std::vector<PlanSide> BoreAt(const WrittenOperation& operation, double height) {
    const LevelRound& bore = *operation.bore;
    const double rise = height - bore.on.z;
    const double half = std::sqrt(std::max(0.0, bore.radius * bore.radius - rise * rise));
    const double depth = operation.boreDepth;
    const PlanPoint across{-bore.along.y * half, bore.along.x * half};
    const PlanPoint mouth{bore.on.x, bore.on.y};
    const PlanPoint floor{mouth.x + bore.along.x * depth, mouth.y + bore.along.y * depth};
    return SidesAround({PlanPoint{mouth.x - across.x, mouth.y - across.y},
                        {floor.x - across.x, floor.y - across.y},
                        {floor.x + across.x, floor.y + across.y},
                        {mouth.x + across.x, mouth.y + across.y}});
}

PlanBox BoxAround(const std::vector<PlanSide>& sides) {
    constexpr double far = std::numeric_limits<double>::max(), quarter = std::numbers::pi / 2;
    PlanBox box{far, far, -far, -far};
    for (const PlanSide& side : sides) {
        Widen(box, side.from);
        Widen(box, side.to);
        if (side.bulge == 0) continue;
        const PlanRound round = RoundOf(side);
        const double from = std::atan2(side.from.y - round.center.y, side.from.x - round.center.x);
        const auto [first, last] = std::minmax({from, from + round.sweep});
        for (double turn = std::ceil(first / quarter); turn * quarter <= last; ++turn)
            Widen(box, {round.center.x + round.radius * std::cos(turn * quarter),
                        round.center.y + round.radius * std::sin(turn * quarter)});
    }
    return box;
}

bool Overlap(const PlanBox& a, const PlanBox& b, double slack) {
    return std::min(a.maxX, b.maxX) - std::max(a.minX, b.minX) > slack &&
           std::min(a.maxY, b.maxY) - std::max(a.minY, b.minY) > slack;
}

std::string NameWithSide(const WrittenOperation& operation) {
    return operation.layer + (operation.secondSide ? " of the second side" : "");
}

std::string PlaceOf(const WrittenOperation& operation) {
    const PlanBox box = BoxAround(operation.sides);
    return "from " + ReportedPlace({box.minX, box.minY}) + " to " + ReportedPlace({box.maxX, box.maxY});
}

std::string ReportedPlace(const PlanPoint& point) {
    return ReportedLength(point.x) + "," + ReportedLength(point.y);
}

OperationFaults FaultsOfSingleOperations(const OperationsOfPart& part) {
    return OperationCheck(part).Check();
}

}  // namespace brenvik
