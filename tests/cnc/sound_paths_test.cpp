// Features that meet in a wall, a rim or a corner, run to their files: no path cuts wood that stays, turns
// back upon itself or cuts what another one cuts, and holes are drilled that something else has bitten.
#include <functional>

#include "base/text.h"
#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

/// A board of 400 by 250 by 18.
struct Meeting {
    std::string_view name;
    std::function<void(MadePart&)> make;
    /// The kinds of the operations of both sides.
    std::string_view first, second;

    friend void PrintTo(const Meeting& meeting, std::ostream* out) { *out << meeting.name; }
};

const std::vector<Meeting>& Meetings() {
    static const std::vector<Meeting> meetings{
        // The slot's path clears the round as well.
        {"KeyholeBesideRecess",
         [](MadePart& part) {
             part.Hole(150, 57, 14, 6);
             part.Pocket(Rectangle(146.5, 57, 153.5, 80), 12);
             part.Pocket(Rectangle(157, 50, 210, 80), 8);
         },
         "OT 1 PKC 2 PL 1", "no file"},
        // In the part's sections the hole is a part of the outside.
        {"HoleThatTouchesANotch",
         [](MadePart& part) {
             part.Window(Rectangle(300, -1, 401, 60));
             part.Hole(296, 30, 8);
         },
         "OT 1 PL 1 VD 1", "no file"},
        {"HoleThatTouchesTheEdge", [](MadePart& part) { part.Hole(200, 4, 8); }, "OT 1 PL 1 VD 1", "no file"},
        // The rim of the one's floor lies on the other one's.
        {"HolesThatBiteEachOtherFromBothSides",
         [](MadePart& part) {
             part.Hole(100, 100, 5, 10);
             part.HoleBelow(111.5, 100, 23, 12);
         },
         "OT 1 PL 1 VD 1", "OT 1 PL 1 VD 1"},
        // Where they cross, floor and ceiling meet in four corners.
        {"DadoesOfBothSidesAtOneHeight",
         [](MadePart& part) {
             part.Pocket(Rectangle(160, -1, 174, 251), 12);
             part.PocketBelow(Rectangle(-1, 110, 401, 123), 12);
             part.Pocket(Rectangle(40, 90, 160, 150), 10);
         },
         "OT 1 PL 1 RT 3", "OT 1 PKC 2 PL 1 RT 2"},
        // A rounded corner runs out beside the recess's wall.
        {"RingBesideRecess",
         [](MadePart& part) {
             part.Pocket(Rounded(60, 60, 340, 100, 6.5), 10);
             part.Pocket(Rounded(60, 150, 340, 190, 6.5), 10);
             part.Pocket(Rounded(60, 60, 100, 190, 6.5), 10);
             part.Pocket(Rounded(300, 60, 340, 190, 6.5), 10);
             part.Pocket(Rectangle(340, 60, 370, 190), 6);
         },
         "OT 1 PKC 3 PL 1", "no file"},
    };
    return meetings;
}

class MeetingFeatures : public WholePartTest, public ::testing::WithParamInterface<Meeting> {
  protected:
    void SetUp() override {
        WholePartTest::SetUp();
        Set("ClearCores", "1");
    }
};

TEST_P(MeetingFeatures, AreCutOnceAndWholeInEveryPose) {
    for (std::size_t pose = 0; pose < 3; ++pose) {
        MadePart part = Made();
        part.Board(400, 250, 18);
        GetParam().make(part);
        PutDown(part, {"Millimetres", 2}, pose);
        RunAll();
        EXPECT_EQ(LastRunReport().unexplained, std::vector<std::string>{});
        EXPECT_EQ(Kinds(FirstSide()), GetParam().first);
        EXPECT_EQ(Kinds(SecondSide()), GetParam().second);
        part.Solid().Delete();
    }
}

INSTANTIATE_TEST_SUITE_P(All, MeetingFeatures, ::testing::ValuesIn(Meetings()),
                         [](const auto& one) { return std::string(one.param.name); });

}  // namespace
}  // namespace brenvik
