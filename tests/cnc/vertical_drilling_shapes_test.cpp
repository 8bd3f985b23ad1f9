// Shapes whose circles look like those of holes: pins, countersinks, grooves round a pin. Whole parts, laid
// askew and run as a user runs them.
#include "cnc/checker.h"
#include "drafting_host/document/host_block.h"
// The modeller's headers come behind ours, which settle the word that both use.
#include <BRepPrimAPI_MakeCone.hxx>
#include <gp_Ax2.hxx>

namespace brenvik {
namespace {

using app::Axis;
using app::Workpiece;
using Texts = std::vector<std::string>;

class HoleLikeShapes : public CheckedRunTest {
  protected:
    /// An upright cylinder of material.
    void Pin(Workpiece& piece, const Point3& foot, double height, double diameter) {
        Acad3DSolid& pin =
            *document.ModelSpace().AddCylinder({foot.x, foot.y, foot.z + height / 2}, diameter / 2, height);
        piece.Solid().Boolean(BooleanKind::Union, pin);
    }
    /// Takes a cone away: from one diameter at `from` to another one straight above or below it.
    void Countersink(Workpiece& piece, const Point3& from, double toZ, double fromDiameter,
                     double toDiameter) {
        const gp_Ax2 axis({from.x, from.y, from.z}, {0, 0, toZ > from.z ? 1.0 : -1.0});
        HostSolid& cone =
            dynamic_cast<HostBlock&>(document.ModelSpace())
                .AddSolid(BRepPrimAPI_MakeCone(axis, fromDiameter / 2, toDiameter / 2, std::abs(toZ - from.z))
                              .Shape());
        piece.Solid().Boolean(BooleanKind::Subtraction, cone);
    }
    static double Cylinder(double diameter, double height) {
        return std::numbers::pi / 4 * diameter * diameter * height;
    }
    static double Cone(double wide, double narrow, double height) {
        return std::numbers::pi / 12 * height * (wide * wide + wide * narrow + narrow * narrow);
    }
    /// What a bit of the narrow end's diameter leaves of the cone.
    static double ConeBeside(double wide, double narrow, double height) {
        return Cone(wide, narrow, height) - Cylinder(narrow, height);
    }
    /// Of each kind of operation, how many the two files have.
    std::size_t Count(std::string_view prefix, bool second) {
        const std::optional<std::vector<Drawn>> side = second ? SecondSide() : FirstSide();
        return side ? OnLayers(*side, prefix).size() : 0;
    }
    std::size_t Holes() { return Count("VD_", false) + Count("VD_", true); }

    /// Runs the part; `uncovered` is what no operation makes, and `told` what the operator is told instead.
    void Run(Workpiece& piece, double uncovered, const Texts& told) {
        Set("ClearCores", "1");
        Lay(piece.Solid(), 31, -17, 123, {1234.5, -678.25, 91});
        RunAll();
        // The two paths round an island overlap where they part the ring.
        EXPECT_EQ(Faults(piece.Solid(), 0, {uncovered, {"PKC_", "RT_"}}), Texts{});
        Texts messages = Messages();
        ASSERT_GE(messages.size(), 2U);
        EXPECT_EQ(messages.size(), told.empty() ? 2U : 3U) << Join(messages, "\n");
        std::string text = messages.size() == 3 ? messages[1] : "";
        text = text.substr(std::min(text.size(), text.find(": ") + 2));
        EXPECT_EQ(text, Join(told, "; "));
    }
};

TEST_F(HoleLikeShapes, APinInAPocketIsNotDrilledAway) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({100, 100, 8}, {200, 180, 19});
    Pin(board, {150, 140, 8}, 10, 8);
    board.Drill({300, 60, 18}, Axis::Z, -12, 8);
    Run(board, 0, {});
    EXPECT_EQ(Holes(), 1U);
}

TEST_F(HoleLikeShapes, AShortPinInAPocketIsNotDrilledAway) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({100, 100, 8}, {200, 180, 19});
    Pin(board, {150, 140, 8}, 5, 8);
    board.Drill({300, 60, 18}, Axis::Z, -12, 8);
    Run(board, 0, {});
    EXPECT_EQ(Holes(), 1U);
}

TEST_F(HoleLikeShapes, APinOnTheTopFaceIsNotDrilledAway) {
    Workpiece board = Board(600, 400, 18);
    Pin(board, {150, 140, 18}, 7, 8);
    Run(board, 0, {});
    EXPECT_EQ(Holes(), 0U);
}

TEST_F(HoleLikeShapes, APinInARecessOfTheUndersideIsNotDrilledAway) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({100, 100, -1}, {200, 180, 6});
    Pin(board, {150, 140, 0}, 6, 8);
    board.Drill({300, 60, 18}, Axis::Z, -12, 8);
    board.Cut({300, 100, 8}, {500, 380, 19});
    Run(board, 0, {});
    EXPECT_EQ(Holes(), 1U);
}

TEST_F(HoleLikeShapes, AGrooveRoundAPinIsNotDrilled) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 60, 18}, Axis::Z, -9, 30);
    Pin(board, {100, 60, 9}, 9, 10);
    board.Drill({300, 60, 18}, Axis::Z, -12, 8);
    Run(board, 0, {});
    EXPECT_EQ(Holes(), 1U);
}

TEST_F(HoleLikeShapes, APinBesideTheAxisOfAHoleKeepsTheBitOut) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 60, 18}, Axis::Z, -9, 30);
    Pin(board, {105, 60, 9}, 4, 10);
    board.Drill({300, 60, 18}, Axis::Z, -12, 8);
    Run(board, 0, {});
    // Down to the pin as wide as the hole, and two paths beside it.
    EXPECT_EQ(Holes(), 2U);
}

TEST_F(HoleLikeShapes, AHoleInAPinIsDrilled) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({100, 100, 8}, {200, 180, 19});
    Pin(board, {150, 140, 8}, 10, 20);
    board.Drill({150, 140, 18}, Axis::Z, -18, 5);
    Run(board, 0, {});
    EXPECT_EQ(Holes(), 1U);
}

TEST_F(HoleLikeShapes, AHoleBelowAPinIsDrilledFromTheOtherSide) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({100, 100, 10}, {200, 180, 19});
    Pin(board, {150, 140, 10}, 8, 8);
    board.Drill({150, 140, 0}, Axis::Z, 6, 8);
    Run(board, 0, {});
    EXPECT_EQ(Holes(), 1U);
    EXPECT_EQ(Count("VD_Z6_", true), 1U);
}

TEST_F(HoleLikeShapes, ACountersunkHoleIsDrilledAndItsConeTold) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 60, 18}, Axis::Z, -18, 6);
    Countersink(board, {100, 60, 18}, 15, 12, 6);
    board.Drill({300, 60, 18}, Axis::Z, -12, 8);
    Run(board, ConeBeside(12, 6, 3), {"hole of 12 at 100,60,18: no operation"});
    EXPECT_EQ(Count("VD_Z19_T_D6", false), 1U);
    EXPECT_EQ(Holes(), 2U);
}

TEST_F(HoleLikeShapes, ACountersunkBlindHole) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 60, 18}, Axis::Z, -10, 6);
    Countersink(board, {100, 60, 18}, 15, 12, 6);
    board.Cut({300, 100, 8}, {500, 380, 19});
    Run(board, ConeBeside(12, 6, 3), {"hole of 12 at 100,60,18: no operation"});
    EXPECT_EQ(Count("VD_Z10_T_D6", false), 1U);
}

TEST_F(HoleLikeShapes, ACountersinkFromBelowIsToldOnce) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 60, 18}, Axis::Z, -18, 6);
    Countersink(board, {100, 60, 0}, 3, 12, 6);
    board.Cut({300, 100, 8}, {500, 380, 19});
    Run(board, Cone(12, 6, 3), {"hole of 12 at 100,60,0: no operation"});
    EXPECT_EQ(Holes(), 1U);
}

TEST_F(HoleLikeShapes, AHoleCountersunkOnBothFacesIsDrilledAsWideAsItsBore) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 60, 18}, Axis::Z, -18, 6);
    Countersink(board, {100, 60, 18}, 15, 12, 6);
    Countersink(board, {100, 60, 0}, 3, 12, 6);
    board.Cut({300, 100, 8}, {500, 380, 19});
    Run(board, Cone(12, 6, 3) + ConeBeside(12, 6, 3),
        {"hole of 12 at 100,60,18: no operation", "hole of 12 at 100,60,0: no operation"});
    EXPECT_EQ(Holes(), 1U);
}

TEST_F(HoleLikeShapes, ACountersinkInAPocketFloor) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({100, 100, 12}, {200, 180, 19});
    board.Drill({150, 140, 12}, Axis::Z, -12, 5);
    Countersink(board, {150, 140, 12}, 9, 11, 5);
    Run(board, ConeBeside(11, 5, 3), {"hole of 11 at 150,140,12: no operation"});
    EXPECT_EQ(Count("VD_Z19_T_D5", false), 1U);
}

TEST_F(HoleLikeShapes, AConeThroughThePartIsToldOnce) {
    for (const bool wideAbove : {true, false}) {
        for (Acad3DSolid* solid : All<Acad3DSolid>(document)) solid->Delete();
        dialogs.messages.clear();
        Workpiece board = Board(600, 400, 18);
        Countersink(board, {100, 60, 18}, 0, wideAbove ? 20 : 10, wideAbove ? 10 : 20);
        board.Cut({300, 100, 8}, {500, 380, 19});
        Run(board, Cone(20, 10, 18),
            {wideAbove
                 ? "hole of 20 at 100,60,18: no operation"
                 : "wood stays that the part has not, 19.259 by 19.259, right through, from 90.37,50.37 to "
                   "109.63,69.63"});
        EXPECT_EQ(Holes(), 1U) << "as wide as its narrow end";
    }
}

TEST_F(HoleLikeShapes, AWideCountersinkDoesNotTakeTheSecondSideAlong) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 60, 18}, Axis::Z, -18, 20);
    Countersink(board, {100, 60, 18}, 6, 44, 20);
    board.Cut({300, 100, 8}, {500, 380, 19});
    board.Drill({400, 60, 0}, Axis::Z, 7, 5);
    Run(board, ConeBeside(44, 20, 12), {"round shape of 44 at 100,60,18: no operation"});
    EXPECT_EQ(Count("VD_", false), 1U);
    EXPECT_EQ(Count("VD_", true), 1U);
}

}  // namespace
}  // namespace brenvik
