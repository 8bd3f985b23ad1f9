// A part is laid along its longest edge; one that runs aslant makes another blank of it than the list has.
#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

class LaidSizes : public WholePartTest {
  protected:
    /// A corner cut off, so that the cut is the longest edge of the face.
    MadePart Gusset() {
        MadePart part = Made();
        part.Board(300, 200, 18);
        part.Window({{0, 200, 0}, {300, 0, 0}, {310, 210, 0}});
        return part;
    }
    std::vector<std::string> ReportedAt(MadePart& part, std::size_t pose,
                                        const Shop& shop = {"Millimetres", 2}) {
        UseShop(shop);
        PutDown(part, shop, pose);
        RunAll();
        return LastRunReport().unexplained;
    }
};

TEST_F(LaidSizes, APartThatLiesAlongASlantedEdgeIsReportedWithBothSizes) {
    MadePart part = Gusset();
    const std::vector<std::string> reported = ReportedAt(part, 0);
    ASSERT_EQ(reported.size(), 1U);
    EXPECT_NE(
        reported[0].find("lies along its longest edge, which runs aslant: it takes 360.555 by 166.41 there "
                         "and measures 300 by 200, and its grain is turned by as much."),
        std::string::npos)
        << reported[0];
}

TEST_F(LaidSizes, APartThatIsMeasuredAlongTheSlantedEdgeIsNot) {
    MadePart part = Gusset();
    EXPECT_EQ(ReportedAt(part, 1), std::vector<std::string>{});
}

TEST_F(LaidSizes, ACutOffCornerThatIsNoLongestEdgeIsNot) {
    MadePart part = Made();
    part.Board(300, 200, 18);
    part.Window({{150, 200, 0}, {300, 100, 0}, {310, 210, 0}});
    EXPECT_EQ(ReportedAt(part, 0), std::vector<std::string>{});
}

TEST_F(LaidSizes, APartInInchesIsReportedByItsOwnUnit) {
    MadePart part = Gusset();
    const std::vector<std::string> reported = ReportedAt(part, 0, {"Inches", 1});
    ASSERT_EQ(reported.size(), 1U);
    EXPECT_NE(reported[0].find("it takes 14.195 by 6.552 there and measures 11.811 by 7.874"),
              std::string::npos)
        << reported[0];
}

}  // namespace
}  // namespace brenvik
