// The ground that the other tests stand on.
#include "cnc/cnc_fixture.h"

namespace brenvik {
namespace {

TEST_F(CncTest, MaterialsOfTheShopAreFoundByThicknessAndName) {
    MaterialRecord record;
    LookupMaterial(MaterialKey(18, "OAK", 2), record);
    ASSERT_TRUE(record.Found());
    EXPECT_EQ(record.tools[0].diameter, 12);
    UseImperial();
    LookupMaterial(MaterialKey(0.75, "OAK", 1), record);
    EXPECT_EQ(record.tools[1].diameter, 0.25);
}

TEST_F(CncTest, PartsOfADrawingAreChosenAndMeasured) {
    app::Workpiece board = Board(600, 400, 18);
    board.Drill({100, 100, 18}, app::Axis::Z, -10, 8);
    ChooseAllSolids();
    EXPECT_EQ(document.PreviousSelection().size(), 1U);
    EXPECT_NEAR(board.Solid().Volume(), 600.0 * 400 * 18 - std::numbers::pi * 16 * 10, 1e-6);
    const std::vector<Drawn> drawn = DrawnIn(document);
    ASSERT_EQ(drawn.size(), 1U);
    EXPECT_EQ(drawn[0].kind, "AcDb3dSolid");
}

}  // namespace
}  // namespace brenvik
