// Drilled holes of whole parts, laid askew and run as a user runs them.
#include "cnc/checker.h"
#include "cnc/targets/target_table.h"

namespace brenvik {
namespace {

using app::Axis;
using app::Workpiece;

class DrilledParts : public CheckedRunTest {
  protected:
    void ExpectSound(Workpiece& piece, const CheckOptions& options = {}) {
        Lay(piece.Solid(), 31, -17, 123, {1234.5, -678.25, 91});
        RunAll();
        EXPECT_EQ(Faults(piece.Solid(), 0, options), std::vector<std::string>{});
    }
    static std::size_t Count(const std::optional<std::vector<Drawn>>& drawn, std::string_view prefix) {
        return drawn ? OnLayers(*drawn, prefix).size() : 0;
    }
    std::size_t CountBoth(std::string_view prefix) {
        return Count(FirstSide(), prefix) + Count(SecondSide(), prefix);
    }
};

TEST_F(DrilledParts, AHoleThroughAPocketAndHolesFromBelowAreDrilledOnce) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({200, 100, 10}, {300, 180, 19});
    board.Drill({250, 140, 10}, Axis::Z, -10, 8);
    board.Drill({400, 140, 0}, Axis::Z, 7, 5);
    board.Drill({450, 140, 0}, Axis::Z, 7, 12);
    ExpectSound(board);
    EXPECT_EQ(CountBoth("VD_"), 3U);
    EXPECT_EQ(Messages().size(), 2U);
}

TEST_F(DrilledParts, AHoleThatOpensIntoARecessOfTheOtherFaceIsDrilledOnce) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 60, 18}, Axis::Z, -18, 5);
    board.Cut({50, 30, -1}, {150, 90, 6});
    board.Drill({300, 60, 18}, Axis::Z, -9, 12);
    board.Cut({400, 100, 10}, {500, 180, 19});
    board.Cut({400, 200, 10}, {500, 280, 19});
    ExpectSound(board);
    EXPECT_EQ(CountBoth("VD_"), 2U);
}

TEST_F(DrilledParts, NestedCounterboresInAPocket) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({200, 100, 15}, {300, 180, 19});
    board.Drill({250, 140, 15}, Axis::Z, -5, 20);
    board.Drill({250, 140, 10}, Axis::Z, -10, 8);
    ExpectSound(board);
    EXPECT_EQ(CountBoth("VD_"), 2U);
    EXPECT_FALSE(SecondSide());
}

TEST_F(DrilledParts, BoresForcedToTheSecondSideAreMadeThereForEveryTarget) {
    Set("HorzBoreOn2", "1");
    for (const Target target : AllTargets) {
        SCOPED_TRACE(TraitsOf(target).name);
        for (Acad3DSolid* solid : All<Acad3DSolid>(document)) solid->Delete();
        Workpiece board = Board(600, 400, 18);
        board.Drill({0, 100, 9}, Axis::X, 34, 8);
        Lay(board.Solid(), 31, -17, 123, {1234.5, -678.25, 91});
        RunAll(target);
        const bool circles = TraitsOf(target).firstFamily;
        const auto bores = [&](const std::optional<std::vector<Drawn>>& side) {
            std::size_t count = 0;
            for (const Drawn& drawn : side.value_or(std::vector<Drawn>{}))
                count += circles ? drawn.kind == "AcDbCircle" : drawn.color == 15;
            return count;
        };
        EXPECT_EQ(bores(FirstSide()), 0U);
        EXPECT_EQ(bores(SecondSide()), 1U);
    }
}

TEST_F(DrilledParts, FortyHolesFromEachFace) {
    Workpiece board = Board(720, 560, 18);
    for (int i = 0; i < 20; ++i) {
        board.Drill({60.0 + 32 * i, 37, 18}, Axis::Z, -12, 5);
        board.Drill({60.0 + 32 * i, 523, 18}, Axis::Z, -12, 5);
        board.Drill({60.0 + 32 * i, 137, 0}, Axis::Z, 12, 5);
        board.Drill({60.0 + 32 * i, 423, 0}, Axis::Z, 12, 5);
    }
    ExpectSound(board);
    EXPECT_EQ(Count(FirstSide(), "VD_"), 40U);
    EXPECT_EQ(Count(SecondSide(), "VD_"), 40U);
}

}  // namespace
}  // namespace brenvik
