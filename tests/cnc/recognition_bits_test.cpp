// The choice of router bits seen from whole runs: what the layers of the files say of it.
#include <ostream>

#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

struct BitCase {
    std::string_view name;
    std::array<double, 3> bits;
    /// The shortest side of a recess 9 deep or of a window.
    double side;
    std::string_view recess, window;

    friend void PrintTo(const BitCase& each, std::ostream* out) { *out << each.name; }
};

class RecognitionBits : public WholePartTest, public ::testing::WithParamInterface<BitCase> {
  protected:
    /// A long shape whose shortest side decides.
    void RunWith(bool through) {
        WriteMaterials({"18"}, GetParam().bits);
        MadePart part = Made();
        part.Board(600, 400, 18);
        const Shape shape = Rectangle(100, 100, 300, 100 + GetParam().side);
        if (through)
            part.Window(shape);
        else
            part.Pocket(shape, 9);
        PutDown(part);
        dialogs.messages.clear();
        RunAll();
        ExpectQuiet();
        EXPECT_EQ(Faults(part.Solid()), std::vector<std::string>{});
        part.Solid().Delete();
    }
    /// Kind, tool and diameter of the only path.
    std::string Chosen() {
        for (const Drawn& drawn : FirstSide().value_or(std::vector<Drawn>{})) {
            if (!drawn.layer.starts_with("RT_") && !drawn.layer.starts_with("PKC_")) continue;
            const std::size_t tool = drawn.layer.find("_T"), speed = drawn.layer.find("_S");
            return drawn.layer.substr(0, drawn.layer.find('_')) + drawn.layer.substr(tool, speed - tool);
        }
        return "none";
    }
};

TEST_P(RecognitionBits, IsThatOfTheShortestSide) {
    RunWith(false);
    EXPECT_EQ(Chosen(), GetParam().recess);
    RunWith(true);
    EXPECT_EQ(Chosen(), GetParam().window);
}

INSTANTIATE_TEST_SUITE_P(
    Choice, RecognitionBits,
    ::testing::Values(
        BitCase{"AsWideAsTheSide", {12, 6, 3}, 12, "RT_T1_D12", "RT_T1_D12"},
        BitCase{"HalfTheSideDoesNotClear", {12, 6, 3}, 24, "PKC_T1_D12", "RT_T1_D12"},
        BitCase{"JustMoreThanHalfClears", {12, 6, 3}, 23.9, "RT_T1_D12", "RT_T1_D12"},
        BitCase{"TheWiderOfTheOthersFirst", {3, 12, 10}, 15, "RT_T2_D12", "RT_T1_D3"},
        BitCase{"TheThirdWhereItIsTheWider", {3, 10, 12}, 15, "RT_T3_D12", "RT_T1_D3"},
        BitCase{"TheOtherWhereTheWiderIsTooWide", {3, 10, 16}, 15, "RT_T2_D10", "RT_T1_D3"},
        BitCase{"TheFirstIsTooWide", {12, 6, 3}, 8, "RT_T2_D6", "RT_T3_D3"},
        BitCase{"TheSecondIsTooWideAsWell", {12, 6, 3}, 4, "RT_T3_D3", "RT_T3_D3"},
        BitCase{"ThroughTheSmallerOfTheOthers", {12, 3, 6}, 8, "RT_T3_D6", "RT_T2_D3"},
        BitCase{"PocketsTakeTheThirdWhereItBeatsTheSecond", {12, 6, 9}, 60, "PKC_T3_D9", "RT_T1_D12"},
        BitCase{"PocketsTakeTheWidest", {6, 12, 3}, 60, "PKC_T2_D12", "RT_T1_D6"}),
    [](const auto& one) { return std::string(one.param.name); });

class RecognitionBitDialogs : public WholePartTest {
  protected:
    MadePart NarrowRecess(std::string_view name = "Panel") {
        MadePart part = Made();
        part.Board(600, 400, 18);
        part.Pocket(Rectangle(100, 100, 300, 102), 9);
        PutDown(part);
        GivePartData(part.Solid(), name);
        return part;
    }
    void Answer(const char* option, bool forAll = false) {
        dialogs.onModal = [option, forAll](Form& form) {
            form.Get<CheckControl>(option).SetValue(1);
            if (forAll) form.Get<CheckControl>("skip").SetValue(1);
            form.Get<Control>("cmdAccept").onClick();
        };
    }
};

TEST_F(RecognitionBitDialogs, AnAcceptedBitCutsThePath) {
    NarrowRecess();
    Answer("Option5");
    RunAll();
    EXPECT_EQ(Only(FirstSide(), "RT_").layer, "RT_Z9_T3_D3_S18000_F300_R_C0_1");
    // The question, and that the bit doesn't come in.
    ASSERT_EQ(Between().size(), 2U);
    EXPECT_NE(Between().back().find("is too narrow for its bit of 3 (one of 2 would get in, and the"),
              std::string::npos)
        << Between().back();
}

TEST_F(RecognitionBitDialogs, LeavingSkipsThePartWithoutASecondMessage) {
    NarrowRecess();
    dialogs.onModal = [](Form& form) { form.Get<Control>("cmdExit").onClick(); };
    RunAll();
    EXPECT_FALSE(FirstSide());
    EXPECT_EQ(Between().size(), 1U);
}

TEST_F(RecognitionBitDialogs, AnAnswerForAllAsksOnce) {
    NarrowRecess("One");
    NarrowRecess("Two");
    Answer("Option6", true);
    RunAll();
    EXPECT_EQ(dialogs.shownForms.size(), 1U);
    for (const int index : {0, 1})
        EXPECT_EQ(Only(FirstSide(index), "PKC_").layer, "PKC_Z9_T3_D3_S18000_F300_R_C0_1");
}

TEST_F(RecognitionBitDialogs, ANarrowWindowIsAskedAboutToo) {
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Window(Rectangle(100, 100, 300, 102));
    PutDown(part);
    Answer("Option3");
    RunAll();
    EXPECT_EQ(Only(FirstSide(), "RT_").layer, "RT_Z18p3_T2_D6_S18000_F300_R_C0_1");
}

TEST_F(RecognitionBitDialogs, ACircleNarrowerThanEveryBitSkipsThePart) {
    WriteMaterials({"18"}, {70, 80, 90});
    for (const bool blind : {false, true}) {
        MadePart part = Made();
        part.Board(600, 400, 18);
        part.Hole(200, 200, 60, blind ? 8 : 0);
        PutDown(part);
        dialogs.messages.clear();
        RunAll();
        EXPECT_FALSE(FirstSide());
        ASSERT_EQ(Between().size(), 1U);
        EXPECT_NE(Between()[0].find("with a diameter of 60"), std::string::npos) << Between()[0];
        part.Solid().Delete();
    }
}

}  // namespace
}  // namespace brenvik
