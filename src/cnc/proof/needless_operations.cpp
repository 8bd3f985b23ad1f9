// Height by height: what of an operation lies on the board, less what the others of its side take there.
#include "cnc/proof/needless_operations.h"

#include "cnc/plan/negligible_sizes.h"

#include <algorithm>
#include <optional>

namespace brenvik {

namespace {

/// In square millimetres. Widths up to the negligible one and areas up to this are ignored.
constexpr double NoArea = 0.05;

class NeedlessCheck {
  public:
    NeedlessCheck(const OperationsOfPart& part, std::span<const BoardAtHeight> board,
                  std::vector<bool> reported)
        : mPart(part), mBoard(board), mReported(std::move(reported)) {
        for (const WrittenOperation& operation : mPart.operations)
            mBoxes.push_back(BoxAround(operation.sides));
    }

    std::vector<std::string> Check() {
        std::vector<std::string> faults;
        ForEachNeedless([&](std::size_t i, const std::vector<std::size_t>& others) {
            faults.push_back(TextOf(i, others));
        });
        return faults;
    }

    std::vector<std::size_t> Places() {
        std::vector<std::size_t> places;
        ForEachNeedless([&](std::size_t i, const std::vector<std::size_t>&) { places.push_back(i); });
        return places;
    }

  private:
    template <class Take>
    void ForEachNeedless(const Take& take) {
        // Of two that cover each other the one that was added is the later one.
        for (std::size_t i = mPart.operations.size(); i-- > 0;) {
            if (mReported[i] || !IsUpright(mPart.operations[i])) continue;
            const std::vector<std::size_t> others = OthersAt(i);
            if (Cuts(i, others)) continue;
            mReported[i] = true;
            take(i, others);
        }
    }

    static bool IsUpright(const WrittenOperation& operation) {
        return !operation.bore && operation.kind != OperationKind::Outline && !operation.sides.empty();
    }

    /// Those of the same side in whose plan it has a part. What the other side has opened it may clear.
    std::vector<std::size_t> OthersAt(std::size_t number) const {
        std::vector<std::size_t> others;
        const WrittenOperation& operation = mPart.operations[number];
        for (std::size_t i = 0; i < mPart.operations.size(); ++i) {
            const WrittenOperation& other = mPart.operations[i];
            if (i == number || mReported[i] || !IsUpright(other) || other.secondSide != operation.secondSide)
                continue;
            if (Overlap(mBoxes[number], mBoxes[i], 0)) others.push_back(i);
        }
        return others;
    }

    /// Whether it takes wood of the board that the others leave, as far as their bits get.
    bool Cuts(std::size_t number, std::span<const std::size_t> others) const {
        return std::ranges::any_of(mBoard,
                                   [&](const BoardAtHeight& board) { return CutsAt(number, others, board); });
    }

    bool CutsAt(std::size_t number, std::span<const std::size_t> others, const BoardAtHeight& board) const {
        const auto isThere = [&](std::size_t which) {
            const WrittenOperation& operation = mPart.operations[which];
            const double height = (board.heights.low + board.heights.high) / 2;
            return operation.low < height && height < operation.high;
        };
        if (!isThere(number)) return false;
        std::vector<PlanShape> shapes = board.stock;
        shapes.push_back({PlanShape::Role::Stock, mPart.operations[number].sides, -1});
        for (const std::size_t other : others)
            if (isThere(other)) shapes.push_back(mPart.shapes[other]);
        const double width = NegligibleWidth * mPart.unit;
        const double without = AreaOf(CompareInPlan({}, shapes, width));
        if (without < NoArea * mPart.unit * mPart.unit) return false;
        // What its own bit doesn't get to it was meant to take.
        shapes.push_back(mPart.shapes[number]);
        shapes.back().notReached.clear();
        return without > AreaOf(CompareInPlan({}, shapes, width)) + NoArea * mPart.unit * mPart.unit;
    }

    std::string TextOf(std::size_t number, const std::vector<std::size_t>& others) const {
        const WrittenOperation& operation = mPart.operations[number];
        const std::string name = NameWithSide(operation);
        if (!Cuts(number, {})) return name + " passes the part by and cuts nothing";
        for (const std::size_t other : others)
            if (!Cuts(number, std::vector{other}))
                return name + " cuts nothing that " + NameWithSide(mPart.operations[other]) +
                       " does not cut, " + PlaceOf(operation);
        return name + " cuts nothing that others do not cut already, " + PlaceOf(operation);
    }

    const OperationsOfPart& mPart;
    std::span<const BoardAtHeight> mBoard;
    std::vector<bool> mReported;
    std::vector<PlanBox> mBoxes;
};

}  // namespace

std::vector<std::string> FaultsOfNeedless(const OperationsOfPart& part, std::span<const BoardAtHeight> board,
                                          std::vector<bool> reported) {
    return NeedlessCheck(part, board, std::move(reported)).Check();
}

std::vector<std::size_t> NeedlessAmong(const OperationsOfPart& part, std::span<const BoardAtHeight> board,
                                       std::vector<bool> reported) {
    return NeedlessCheck(part, board, std::move(reported)).Places();
}

}  // namespace brenvik
