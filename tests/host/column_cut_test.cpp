// Upright columns taken away from a solid: the volume is known at once, and the shape when it is looked at.
#include <array>

#include "host/host_fixture.h"

namespace brenvik {
namespace {

class ColumnCutTest : public HostTest {
  protected:
    Acad3DSolid& Board() { return *Model().AddBox({100, 50, 9}, 200, 100, 18); }
    Acad3DSolid& Column(const Point3& center, double radius) {
        AcadEntity* circle = Model().AddCircle(center, radius);
        AcadRegion& region = *Model().AddRegion(std::span(&circle, 1)).front();
        Acad3DSolid& column = *Model().AddExtrudedSolid(region, region.Normal().z * 1000, 0);
        region.Delete();
        circle->Delete();
        return column;
    }
};

TEST_F(ColumnCutTest, ACutIsInTheShapeWhenItIsLookedAt) {
    Acad3DSolid& board = Board();
    board.Boolean(BooleanKind::Subtraction, Column({50, 50, 6}, 10));
    const double left = 200.0 * 100 * 18 - std::numbers::pi * 100 * 12;
    EXPECT_NEAR(board.Volume(), left, 1e-6);
    const AcadRegion& section = *board.SectionSolid({0, 0, 10}, {1, 0, 10}, {0, 1, 10});
    EXPECT_NEAR(section.Area(), 200.0 * 100 - std::numbers::pi * 100, 1e-6);
    EXPECT_NEAR(board.Volume(), left, 1e-6);
    ExpectBox(board.GetBoundingBox(), {0, 0, 0}, {200, 100, 18});
}

TEST_F(ColumnCutTest, CutsFollowEachOther) {
    Acad3DSolid& board = Board();
    board.Boolean(BooleanKind::Subtraction, Column({50, 50, 6}, 10));
    board.Boolean(BooleanKind::Subtraction, Column({100, 50, 0}, 10));
    board.Boolean(BooleanKind::Subtraction, Column({50, 50, 3}, 5));
    EXPECT_NEAR(board.Volume(), 200.0 * 100 * 18 - std::numbers::pi * (100 * 12 + 100 * 18 + 25 * 3), 1e-6);
}

TEST_F(ColumnCutTest, CopiesAndMovesCarryTheCut) {
    Acad3DSolid& board = Board();
    board.Boolean(BooleanKind::Subtraction, Column({0, 0, 0}, 30));
    board.Boolean(BooleanKind::Subtraction, Column({100, 50, 0}, 10));
    auto& copy = dynamic_cast<Acad3DSolid&>(*board.Copy());
    EXPECT_EQ(copy.Volume(), board.Volume());
    const double before = board.Volume();
    board.Move({0, 0, 0}, {0, 0, 5});
    EXPECT_NEAR(board.Volume(), before, 1e-6);
    ExpectBox(board.GetBoundingBox(), {0, 0, 5}, {200, 100, 23});
}

TEST_F(ColumnCutTest, AColumnInTheOpenLeavesTheSolidUntouched) {
    Acad3DSolid& board = Board();
    const double before = board.Volume();
    Acad3DSolid& column = Column({50, 50, 18}, 10);
    board.Boolean(BooleanKind::Subtraction, column);
    EXPECT_EQ(board.Volume(), before);
    EXPECT_THROW(column.Volume(), Failure);
}

TEST_F(ColumnCutTest, AMovedColumnCutsWhereItStands) {
    Acad3DSolid& board = Board();
    Acad3DSolid& column = Column({50, 50, 6}, 10);
    column.Move({0, 0, 0}, {0, 0, 6});
    board.Boolean(BooleanKind::Subtraction, column);
    EXPECT_NEAR(board.Volume(), 200.0 * 100 * 18 - std::numbers::pi * 100 * 6, 1e-6);
}

TEST_F(ColumnCutTest, AColumnOverAllOfASolidErasesIt) {
    Acad3DSolid& board = Board();
    board.Boolean(BooleanKind::Subtraction, Column({100, 50, 0}, 300));
    EXPECT_THROW(board.Volume(), Failure);
}

}  // namespace
}  // namespace brenvik
