// Floors that a vertical bit can make, whatever overlaps them: each such part comes out whole and nothing is
// told.
#include <functional>

#include "base/text.h"
#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

/// A part of millimetres, made by `make`. The operations of a C2C run are `kinds`, both sides with a stroke
/// between.
struct Sample {
    std::string_view name;
    std::function<void(MadePart&)> make;
    std::string_view kinds;
    /// By the part's own shape, two operations may cut the same air.
    std::vector<std::string> twice = {};

    friend void PrintTo(const Sample& sample, std::ostream* out) { *out << sample.name; }
};

const std::vector<Sample>& Samples() {
    static const std::vector<Sample> samples{
        {"OnePieceDoor",
         [](MadePart& part) {
             part.Board(600, 400, 20);
             part.Pocket(Rectangle(50, 50, 550, 350), 14);
         },
         "OT 1 PKC 1 PL 1"},
        {"OnePieceDoorWithRoundedRecess",
         [](MadePart& part) {
             part.Board(600, 400, 20);
             part.Pocket(Rounded(50, 50, 550, 350, 20), 14);
         },
         "OT 1 PKC 1 PL 1"},
        {"FiveWideDados",
         [](MadePart& part) {
             part.Board(1000, 300, 18);
             for (int dado = 0; dado < 5; ++dado)
                 part.Pocket(Rectangle(60 + 190 * dado, -1, 180 + 190 * dado, 301), 10);
         },
         "OT 1 PKC 5 PL 1"},
        {"HalfLap",
         [](MadePart& part) {
             part.Board(600, 100, 40);
             part.Pocket(Rectangle(-1, -1, 301, 101), 20);
         },
         "OT 1 PKC 1 PL 1"},
        {"CrossLap",
         [](MadePart& part) {
             part.Board(600, 100, 40);
             part.Pocket(Rectangle(-1, -1, 251, 101), 20);
             part.Pocket(Rectangle(350, -1, 601, 101), 20);
         },
         "OT 1 PKC 2 PL 1"},
        {"LargerOfTwoRabbets",
         [](MadePart& part) {
             part.Board(600, 300, 18);
             part.Pocket(Rectangle(-1, -1, 601, 140), 12);
             part.Pocket(Rectangle(-1, 240, 601, 301), 10);
         },
         "OT 1 PKC 2 PL 1"},
        {"RabbetsOnFourEdges",
         [](MadePart& part) {
             part.Board(600, 400, 18);
             part.Cut(Rectangle(-1, -1, 601, 20), 10, 19);
             part.Cut(Rectangle(-1, 380, 601, 401), 10, 19);
             part.Cut(Rectangle(-1, -1, 20, 401), 10, 19);
             part.Cut(Rectangle(580, -1, 601, 401), 10, 19);
         },
         "OT 1 PKC 2 PL 1",
         {"PKC_"}},
        {"RabbetsOfDifferentDepth",
         [](MadePart& part) {
             part.Board(600, 400, 18);
             part.Pocket(Rectangle(-1, -1, 601, 30), 6);
             part.Pocket(Rectangle(-1, -1, 30, 401), 11);
         },
         "OT 1 PKC 2 PL 1",
         {"PKC_"}},
        {"GrooveOverADowelBore",
         [](MadePart& part) {
             part.Board(600, 300, 18);
             part.Pocket(Rectangle(-1, 140, 601, 150), 8);
             part.Drill({100, 300, 9}, {0, -1, 0}, 200, 8);
         },
         "HB 1 OT 1 PL 1 RT 1"},
        {"StoppedGrooveOverADowelBore",
         [](MadePart& part) {
             part.Board(600, 300, 18);
             part.Pocket(Rectangle(50, 140, 550, 150), 8);
             part.Drill({100, 300, 9}, {0, -1, 0}, 200, 8);
         },
         "HB 1 OT 1 PL 1 RT 1"},
        {"WireBoreIntoAPocket",
         [](MadePart& part) {
             part.Board(600, 300, 18);
             part.Pocket(Rectangle(200, 100, 300, 200), 8);
             part.Drill({0, 150, 9}, {1, 0, 0}, 220, 8);
         },
         "HL 1 OT 1 PKC 1 PL 1"},
        {"HoleFromBelowThroughAGroovesFloor",
         [](MadePart& part) {
             part.Board(600, 300, 18);
             part.Pocket(Rectangle(-1, 140, 601, 160), 8);
             part.HoleBelow(300, 142, 8, 12);
         },
         "OT 1 PL 1 RT 1 | OT 1 PL 1 VD 1"},
        {"HingeCupWithScrewHolesOnItsRim",
         [](MadePart& part) {
             part.Board(600, 300, 18);
             part.Hole(100, 100, 35, 12);
             part.Hole(117.5, 100, 5, 15);
             part.Hole(82.5, 100, 5, 6);
         },
         "OT 1 PL 1 VD 3"},
        {"TwoOverlappingHolesOfDifferentDepth",
         [](MadePart& part) {
             part.Board(600, 300, 18);
             part.Hole(100, 100, 20, 12);
             part.Hole(112, 100, 15, 6);
         },
         "OT 1 PL 1 VD 2"},
        {"RoundRecessWithAThroughHoleOnItsBorder",
         [](MadePart& part) {
             part.Board(600, 300, 18);
             part.Hole(200, 150, 100, 8);
             part.Hole(250, 150, 12);
         },
         "OT 1 PKS 1 PL 1 VD 1"},
        {"Keyhole",
         [](MadePart& part) {
             part.Board(600, 300, 18);
             part.Hole(200, 150, 16, 10);
             part.Pocket(Rectangle(200, 146, 240, 154), 12);
         },
         "OT 1 PKC 1 PL 1 VD 1"},
        {"FieldRaisedInARecess",
         [](MadePart& part) {
             part.Board(600, 400, 20);
             Acad3DSolid* tool = part.Body(Rectangle(50, 50, 550, 350), 12, 21);
             tool->Boolean(BooleanKind::Subtraction, *part.Body(Rectangle(100, 100, 500, 300), 0, 30));
             part.Subtract(*tool);
         },
         "OT 1 PKC 2 PL 1",
         {"PKC_"}},
        {"TwoIslandsInAPocket",
         [](MadePart& part) {
             part.Board(600, 400, 20);
             Acad3DSolid* tool = part.Body(Rectangle(100, 100, 500, 300), 12, 21);
             tool->Boolean(BooleanKind::Subtraction, *part.Body(Rectangle(150, 150, 200, 220), 0, 30));
             tool->Boolean(BooleanKind::Subtraction, *part.Body(Rounded(350, 150, 420, 250, 10), 0, 30));
             part.Subtract(*tool);
         },
         "OT 1 PKC 3 PL 1",
         {"PKC_"}},
        {"HingeCupCrossedByADado",
         [](MadePart& part) {
             part.Board(600, 300, 18);
             part.Hole(100, 100, 35, 12);
             part.Pocket(Rectangle(94, -1, 106, 301), 12);
         },
         "OT 1 PL 1 RT 2 VD 1"},
        {"HoleTangentToAnother",
         [](MadePart& part) {
             part.Board(600, 300, 18);
             part.Hole(100, 100, 20, 12);
             part.Hole(120, 100, 20, 8);
             part.Hole(300, 100, 20, 12);
             part.Hole(306, 100, 8, 15);
         },
         "OT 1 PL 1 VD 4"},
        {"HoleOnTheWallOfADado",
         [](MadePart& part) {
             part.Board(600, 300, 18);
             part.Pocket(Rectangle(200, -1, 220, 301), 10);
             part.Hole(200, 100, 8, 13);
             part.Hole(220, 200, 8);
         },
         "OT 1 PKC 1 PL 1 VD 2"},
        {"HoleOnTheWallOfARabbet",
         [](MadePart& part) {
             part.Board(600, 300, 18);
             part.Pocket(Rectangle(-1, -1, 601, 20), 10);
             part.Hole(200, 20, 8, 13);
             part.Hole(300, 20, 8, 5);
         },
         "OT 1 PKC 1 PL 1 VD 2"},
        {"WindowThatARecessBelowOverlapsCornerToCorner",
         [](MadePart& part) {
             part.Board(600, 400, 18);
             part.Window(Rectangle(200, 100, 300, 200));
             part.PocketBelow(Rectangle(300, 200, 400, 300), 6);
         },
         "OT 1 PKC 1 PL 1 RT 1"},
        {"WindowThatARecessBelowOverlapsAtACorner",
         [](MadePart& part) {
             part.Board(600, 400, 18);
             part.Window(Rectangle(200, 100, 300, 200));
             part.PocketBelow(Rectangle(260, 160, 400, 300), 6);
         },
         "OT 1 PKC 1 PL 1 RT 1"},
        {"DoorWithAnUnderside",
         [](MadePart& part) {
             part.Board(600, 400, 20);
             part.Pocket(Rectangle(50, 50, 550, 350), 14);
             part.PocketBelow(Rectangle(60, 60, 540, 340), 4);
         },
         "OT 1 PKC 1 PL 1 | OT 1 PKC 1 PL 1"},
    };
    return samples;
}

class ClearedFloors : public WholePartTest, public ::testing::WithParamInterface<Sample> {
  protected:
    MadePart Sampled() {
        // Wide floors have short sides too, and bits that are chosen by these leave their middle.
        Set("ClearCores", "1");
        MadePart part = Made();
        GetParam().make(part);
        return part;
    }
    std::string BothKinds() {
        const std::string first = Kinds(FirstSide());
        return SecondSide() ? first + " | " + Kinds(SecondSide()) : first;
    }
};

TEST_P(ClearedFloors, ComeOutWholeInMillimetres) {
    MadePart part = Sampled();
    PutDown(part, {"Millimetres", 2}, 0);
    RunAll();
    EXPECT_EQ(Faults(part.Solid(), 0, {0, GetParam().twice}), std::vector<std::string>{});
    ExpectQuiet();
    EXPECT_EQ(BothKinds(), GetParam().kinds);
}

TEST_P(ClearedFloors, ComeOutWholeTurnedAndInInches) {
    const Shop shop{"Inches", 1};
    UseShop(shop);
    WriteMaterials({".70866", ".7874", "1.5748"}, {0.5, 0.25, 0.125});
    MadePart part = Sampled();
    PutDown(part, shop, 1);
    RunAll(Target::RCIM);
    EXPECT_EQ(Faults(part.Solid(), 0, {0, {"RT_", "PKC_"}}), std::vector<std::string>{});
    ExpectQuiet();
}

TEST_P(ClearedFloors, ComeOutWholeForTheSecondFamily) {
    for (const Target target : {Target::CNI, Target::BW, Target::THERM, Target::ASP}) {
        MadePart part = Sampled();
        PutDown(part, {"Millimetres", 2}, 2);
        dialogs.messages.clear();
        RunAll(target);
        SCOPED_TRACE(static_cast<int>(target));
        ExpectQuiet();
        part.Solid().Delete();
    }
}

INSTANTIATE_TEST_SUITE_P(All, ClearedFloors, ::testing::ValuesIn(Samples()),
                         [](const auto& one) { return std::string(one.param.name); });

}  // namespace
}  // namespace brenvik
