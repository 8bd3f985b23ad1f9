// A panel for cam fittings: the bolt's bore in the edge runs into the blind hole of the housing, so that the
// two holes meet in a curve that is neither line nor circle. Half of all cabinets are held together by it.
#include <algorithm>
#include <array>
#include <cmath>

#include "cnc/checker.h"
#include "session/library/cnc_commands.h"
#include "support/ezdxf_audit.h"

namespace brenvik {
namespace {

class CamFitting : public CheckedRunTest {
  protected:
    /// A side of 16 with two fittings along its left edge: the bolt's bore crosses the housing, whose middle
    /// lies so far from the edge, and ends 34 deep.
    app::Workpiece Side(double toHousing = 24) {
        app::Workpiece board = Board(600, 400, 16);
        for (const double y : {50.0, 350.0}) {
            board.Drill({toHousing, y, 16}, app::Axis::Z, -12.5, 15);
            board.Drill({0, y, 8}, app::Axis::X, 34, 8);
        }
        return board;
    }
    std::string SavedName() { return files.InstallFolder() + "\\side.dxf"; }
    void ExpectBothBores() {
        const auto first = FirstSide();
        ASSERT_TRUE(first);
        const std::vector<Drawn> housings = OnLayers(*first, "VD_Z12p5_T_D15");
        EXPECT_EQ(housings.size(), 2U);
        for (const Drawn& housing : housings) EXPECT_EQ(housing.thickness, -12.5);
        const std::vector<Drawn> bolts = OnLayers(*first, "HL_T");
        EXPECT_EQ(bolts.size(), 2U);
        for (const Drawn& bolt : bolts) {
            EXPECT_NEAR(bolt.diameter, 8, 1e-9);
            EXPECT_NEAR(bolt.thickness, -34, 1e-6);
        }
        EXPECT_TRUE(FilesIn(SecondSideFolder).empty());
    }
};

TEST_F(CamFitting, GivesTheHousingAndTheBoltTheirOperations) {
    app::Workpiece side = Side();
    RunAll();
    EXPECT_EQ(Faults(side.Solid()), std::vector<std::string>{});
    ExpectBothBores();
}

TEST_F(CamFitting, GivesThemWhereverThePartLies) {
    const std::array<Point3, 3> turns{Point3{90, 0, 0}, {31, -17, 123}, {180, 5, -77}};
    for (const Point3& turn : turns) {
        app::Workpiece side = Side();
        Lay(side.Solid(), turn.x, turn.y, turn.z, {1234.5, -678.25, 91});
        RunAll();
        EXPECT_EQ(Faults(side.Solid()), std::vector<std::string>{}) << turn.x;
        side.Solid().Delete();
    }
}

TEST_F(CamFitting, BoresABoltThatEndsInTheHousingAsFarAsItsWallGoes) {
    app::Workpiece side = Side(34);
    RunAll();
    EXPECT_EQ(Faults(side.Solid()), std::vector<std::string>{});
    const auto first = FirstSide();
    ASSERT_TRUE(first);
    EXPECT_EQ(OnLayers(*first, "VD_Z12p5_T_D15").size(), 2U);
    const std::vector<Drawn> bolts = OnLayers(*first, "HL_T");
    ASSERT_EQ(bolts.size(), 2U);
    // The wall of the bolt's bore, 4 from its axis, meets the housing's, 7.5 from its own.
    for (const Drawn& bolt : bolts) EXPECT_NEAR(bolt.thickness, -(34 - std::sqrt(7.5 * 7.5 - 4 * 4)), 1e-4);
    EXPECT_EQ(Messages().size(), 2U);
}

TEST_F(CamFitting, BoltsFromBothEndsInOneLineStayApart) {
    // Bottom and shelves have a fitting at each end; what lies nearest behind one rim is the other rim.
    for (const double thickness : {16.0, 18.0}) {
        app::Workpiece shelf = Board(600, 400, thickness);
        for (const double x : {34.0, 566.0}) shelf.Drill({x, 50, thickness}, app::Axis::Z, -12.5, 15);
        shelf.Drill({0, 50, thickness / 2}, app::Axis::X, 34, 8);
        shelf.Drill({600, 50, thickness / 2}, app::Axis::X, -34, 8);
        dialogs.messages.clear();
        RunAll();
        EXPECT_EQ(Faults(shelf.Solid()), std::vector<std::string>{}) << thickness;
        const auto first = FirstSide();
        ASSERT_TRUE(first);
        for (const std::string_view layer : {"HL_T", "HR_T"}) {
            const std::vector<Drawn> bolts = OnLayers(*first, layer);
            ASSERT_EQ(bolts.size(), 1U) << layer << ", " << thickness;
            EXPECT_LT(bolts[0].thickness, -20) << layer;
            EXPECT_GT(bolts[0].thickness, -35) << layer;
        }
        shelf.Solid().Delete();
    }
}

TEST_F(CamFitting, ABoltInTheLineOfABlindBoreEndsInItsHousing) {
    app::Workpiece shelf = Board(600, 400, 18);
    shelf.Drill({34, 50, 18}, app::Axis::Z, -12.5, 15);
    shelf.Drill({0, 50, 9}, app::Axis::X, 34, 8);
    shelf.Drill({600, 50, 9}, app::Axis::X, -30, 8);
    RunAll();
    EXPECT_EQ(Faults(shelf.Solid()), std::vector<std::string>{});
    const auto first = FirstSide();
    ASSERT_TRUE(first);
    const std::vector<Drawn> left = OnLayers(*first, "HL_T"), right = OnLayers(*first, "HR_T");
    ASSERT_EQ(left.size(), 1U);
    ASSERT_EQ(right.size(), 1U);
    EXPECT_GT(left[0].thickness, -35);
    EXPECT_NEAR(right[0].thickness, -30, 1e-6);
}

TEST_F(CamFitting, ABoreRightThroughThatCrossesAHoleGoesRightThrough) {
    app::Workpiece shelf = Board(600, 400, 18);
    shelf.Drill({300, 50, 18}, app::Axis::Z, -18, 15);
    shelf.Drill({0, 50, 9}, app::Axis::X, 600, 8);
    RunAll();
    const auto first = FirstSide();
    ASSERT_TRUE(first);
    const std::vector<Drawn> left = OnLayers(*first, "HL_T");
    ASSERT_EQ(left.size(), 1U);
    EXPECT_NEAR(left[0].thickness, -600, 1e-6);
}

TEST_F(CamFitting, AFloorThatTheBoltRunsThroughIsTheHousingsFloorAllTheSame) {
    // In a board of 18 the bolt lies lower than the housing is deep.
    for (const double toHousing : {24.0, 34.0}) {
        for (const Point3& turn : {Point3{0, 0, 0}, Point3{31, -17, 123}, Point3{180, 5, -77}}) {
            app::Workpiece side = Board(600, 400, 18);
            for (const double y : {50.0, 350.0}) {
                side.Drill({toHousing, y, 18}, app::Axis::Z, -12.5, 15);
                side.Drill({0, y, 9}, app::Axis::X, 34, 8);
            }
            Lay(side.Solid(), turn.x, turn.y, turn.z, {1234.5, -678.25, 91});
            dialogs.messages.clear();
            RunAll();
            EXPECT_EQ(Faults(side.Solid()), std::vector<std::string>{}) << toHousing << ", " << turn.x;
            ExpectBothBores();
            EXPECT_EQ(FirstSide()->size(), 6U);
            EXPECT_EQ(Messages().size(), 2U) << Messages()[1];
            side.Solid().Delete();
        }
    }
}

TEST_F(CamFitting, ComesBackWholeFromAFile) {
    app::Workpiece side = Side();
    Lay(side.Solid(), 31, -17, 123, {1234.5, -678.25, 91});
    const double volume = side.Solid().Volume();
    const Box3 box = side.Solid().GetBoundingBox();
    document.SaveAs(SavedName(), SaveAsKind::Dxf2000);
    if (test::HasEzdxf()) {
        EXPECT_EQ(test::AuditWithEzdxf(files.Resolve(SavedName())), std::nullopt);
    }
    HostDocument& again = host.OpenNamed(SavedName());
    EXPECT_TRUE(again.Notes().empty());
    const std::vector<Acad3DSolid*> solids = All<Acad3DSolid>(again);
    ASSERT_EQ(solids.size(), 1U);
    EXPECT_NEAR(solids[0]->Volume(), volume, 1e-9 * volume);
    const Box3 found = solids[0]->GetBoundingBox();
    EXPECT_LT(std::abs(found.min.x - box.min.x) + std::abs(found.min.y - box.min.y), 1e-6);
    EXPECT_LT(std::abs(found.max.x - box.max.x) + std::abs(found.max.z - box.max.z), 1e-6);
    again.Close(false);
}

TEST_F(CamFitting, RunsFromADrawingThatWasSavedAndOpened) {
    Side();
    document.SaveAs(SavedName(), SaveAsKind::Dxf2000);
    HostDocument& again = host.OpenNamed(SavedName());
    const std::vector<Acad3DSolid*> solids = All<Acad3DSolid>(again);
    ASSERT_EQ(solids.size(), 1U);
    TheSession().AcadDoc = &again;
    const std::array<HostEntity*, 1> chosen{dynamic_cast<HostEntity*>(solids[0])};
    again.SetPreviousSelection(chosen);
    RunOnSelection(host, Target::C2C, GridBeforeRuns());
    ExpectBothBores();
}

}  // namespace
}  // namespace brenvik
