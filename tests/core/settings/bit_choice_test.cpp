// Router bits for through contours, for routes that stop inside the part, and for circles: every order of
// three diameters against shorter, equal and longer measures, and what is told where no bit fits.
#include "settings/bit_choice.h"
#include "settings/standing_answer.h"

#include <optional>
#include <vector>

#include "base/numbers.h"
#include "core/settings/material_fixture.h"

namespace brenvik {
namespace {

using Tool = std::optional<std::size_t>;

const std::vector<double>& Diameters() {
    static const std::vector<double> diameters{0.25, 0.375, 0.5, 0.75};
    return diameters;
}

/// Below, at and above each diameter, its half and its double.
std::vector<double> Measures() {
    std::vector<double> measures{0, 0.001, 5};
    for (const double diameter : Diameters())
        for (const double factor : {0.5, 1.0, 2.0})
            for (const double off : {-0.00001, 0.0, 0.00001}) measures.push_back(diameter * factor + off);
    return measures;
}

template <class Check>
void ForEveryOrder(const Check& check) {
    for (const double first : Diameters())
        for (const double second : Diameters())
            for (const double third : Diameters())
                for (const double measure : Measures()) {
                    SCOPED_TRACE(testing::Message()
                                 << first << " " << second << " " << third << " against " << measure);
                    check(Bits(first, second, third), measure);
                }
}

/// The tools in the order in which they are tried, by number from 1; the first that passes.
template <class Passes>
Tool FirstInOrder(const std::vector<int>& order, const Passes& passes) {
    for (const int number : order)
        if (passes(number)) return static_cast<std::size_t>(number - 1);
    return std::nullopt;
}

TEST(ThroughContours, TryTheFirstToolAndThenTheSmallerOfTheOthers) {
    ForEveryOrder([](const MaterialRecord& material, double side) {
        const auto d = [&](int number) {
            return material.tools[static_cast<std::size_t>(number - 1)].diameter;
        };
        std::vector<int> order{1};
        if (d(2) < d(3)) order = {1, 2, 3};
        if (d(3) < d(2)) order = {1, 3, 2};
        const auto fits = [&](int number) { return d(number) <= side; };
        const ThroughContourBit bit = BitForThroughContour(material, side);
        EXPECT_EQ(bit.tool, FirstInOrder(order, fits));
        EXPECT_EQ(bit.anyFits, fits(1) || fits(2) || fits(3));
    });
}

struct ThroughCase {
    double first, second, third, side;
    Tool tool;
    bool anyFits;
};

TEST(ThroughContours, HaveTheseBits) {
    const ThroughCase cases[] = {
        {0.5, 0.375, 0.25, 0.5, 0, true},
        {0.5, 0.375, 0.25, 0.4, 2, true},
        {0.5, 0.25, 0.375, 0.4, 1, true},
        {0.5, 0.375, 0.25, 0.25, 2, true},
        {0.5, 0.375, 0.25, 0.2, std::nullopt, false},
        {0.5, 0.25, 0.25, 0.4, std::nullopt, true},
        {0.5, 0.25, 0.25, 0.2, std::nullopt, false},
        {0.5, 0.25, 0.25, 0.5, 0, true},
    };
    for (const ThroughCase& c : cases) {
        const ThroughContourBit bit = BitForThroughContour(Bits(c.first, c.second, c.third), c.side);
        EXPECT_EQ(bit.tool, c.tool) << c.second << " " << c.third << " " << c.side;
        EXPECT_EQ(bit.anyFits, c.anyFits);
    }
}

TEST(InsideRoutes, FollowTheLineWithABitThatClearsElseArePocketed) {
    ForEveryOrder([](const MaterialRecord& material, double measure) {
        const double side = RoundHalfEven(measure, 5);
        const auto d = [&](int number) {
            return material.tools[static_cast<std::size_t>(number - 1)].diameter;
        };
        const auto fits = [&](int number) { return d(number) <= side; };
        const auto clears = [&](int number) { return fits(number) && d(number) * 1.999999 > side; };
        std::vector<int> order{1};
        if (d(1) * 1.999999 < side && d(2) > d(3)) order.insert(order.end(), {2, 3});
        if (d(1) * 1.999999 < side && d(3) > d(2)) order.insert(order.end(), {3, 2});
        order.insert(order.end(), {2, 3});
        Tool expected = FirstInOrder(order, clears);
        PathKind kind = expected ? PathKind::RT : PathKind::PKC;
        if (!fits(1) && !fits(2) && !fits(3)) kind = PathKind::None;
        if (kind == PathKind::PKC) {
            if (fits(1)) expected = 0;
            if (fits(2) && (!expected || d(2) > d(1))) expected = 1;
            if (fits(3) && (!expected || d(3) > d(2))) expected = 2;
        }
        const InsideRouteBit bit = BitForInsideRoute(material, measure);
        EXPECT_EQ(bit.tool, expected);
        EXPECT_EQ(PathKindText(bit.kind), PathKindText(kind));
    });
}

struct InsideCase {
    const char* rule;
    double first, second, third, side;
    Tool tool;
    PathKind kind;
};

TEST(InsideRoutes, HaveTheseBits) {
    const InsideCase cases[] = {
        {"a bit exactly as wide as the side fits", 0.5, 0.25, 0.375, 0.5, 0, PathKind::RT},
        {"a bit of exactly half the side doesn't clear", 0.5, 0.25, 0.25, 1, 0, PathKind::PKC},
        {"a bit a little wider than half does", 0.50001, 0.25, 0.25, 1, 0, PathKind::RT},
        {"the last test looks at tool 2, not at the bit in hand", 0.5, 0.25, 0.375, 2, 2, PathKind::PKC},
        {"the same the other way round", 0.5, 0.375, 0.25, 2, 0, PathKind::PKC},
        {"a small first tool gives way to the wider of the others", 0.25, 0.75, 0.5, 0.8, 1, PathKind::RT},
        {"the same for the third", 0.25, 0.5, 0.75, 0.8, 2, PathKind::RT},
        {"a wide first tool gives way to the second", 0.75, 0.375, 0.5, 0.6, 1, PathKind::RT},
        {"the wider one that doesn't fit is passed over", 0.25, 1, 0.5, 0.8, 2, PathKind::RT},
        {"none fits", 0.5, 0.25, 0.375, 0.2, std::nullopt, PathKind::None},
        {"sides are rounded to 5 decimals", 0.5, 1, 1, 0.4999951, 0, PathKind::RT},
        {"and not more", 0.5, 1, 1, 0.49999, std::nullopt, PathKind::None},
    };
    for (const InsideCase& c : cases) {
        const InsideRouteBit bit = BitForInsideRoute(Bits(c.first, c.second, c.third), c.side);
        EXPECT_EQ(bit.tool, c.tool) << c.rule;
        EXPECT_EQ(PathKindText(bit.kind), PathKindText(c.kind)) << c.rule;
    }
}

TEST(ThroughCircles, TryTheFirstToolAndThenTheSmallerOnesInOrder) {
    ForEveryOrder([](const MaterialRecord& material, double measure) {
        const double circle = RoundHalfEven(measure, 5);
        const auto d = [&](int number) {
            return material.tools[static_cast<std::size_t>(number - 1)].diameter;
        };
        Tool expected;
        if (circle >= d(1))
            expected = 0;
        else if (d(2) < d(1) && circle >= d(2))
            expected = 1;
        else if (d(3) < d(1) && circle >= d(3))
            expected = 2;
        EXPECT_EQ(BitForThroughCircle(material, measure), expected);
    });
}

TEST(ThroughCircles, OneExactlyAsWideAsTheFirstToolIsCutWithIt) {
    EXPECT_EQ(BitForThroughCircle(Bits(0.5, 0.25, 0.375), 0.5), Tool(0));
    EXPECT_EQ(BitForThroughCircle(Bits(0.5, 0.25, 0.375), 0.4999951), Tool(0)) << "rounded to 5 decimals";
    EXPECT_EQ(BitForThroughCircle(Bits(0.5000049, 0.25, 0.375), 0.5), Tool(0)) << "the bit too";
}

TEST(CirclePockets, TakeTheSmallestBitThatIsSmaller) {
    ForEveryOrder([](const MaterialRecord& material, double measure) {
        const Tool tool = BitForCirclePocket(material, measure);
        const double circle = RoundHalfEven(measure, 5);
        for (const MaterialTool& other : material.tools) {
            if (other.diameter >= circle) continue;
            ASSERT_TRUE(tool.has_value());
            EXPECT_LE(material.tools[*tool].diameter, other.diameter);
        }
        if (tool.has_value()) {
            EXPECT_LT(material.tools[*tool].diameter, circle);
        }
    });
    EXPECT_EQ(BitForCirclePocket(Bits(0.5, 0.25, 0.25), 1), Tool(1));
    EXPECT_EQ(BitForCirclePocket(Bits(0.5, 0.25, 0.375), 0.25), std::nullopt) << "smaller, not as wide";
}

TEST(EmptySlots, AreNeverChosen) {
    for (const double measure : Measures())
        for (std::size_t empty = 0; empty < MaterialToolCount; ++empty) {
            MaterialRecord material = Bits(0.5, 0.375, 0.25);
            material.tools[empty] = {"0", 0, "0", "0"};
            const Tool chosen[] = {
                BitForThroughContour(material, measure).tool, BitForInsideRoute(material, measure).tool,
                BitForThroughCircle(material, measure), BitForCirclePocket(material, measure)};
            for (const Tool& tool : chosen) EXPECT_NE(tool, Tool(empty)) << measure;
            if (measure >= 0.5) {
                EXPECT_TRUE(chosen[0].has_value()) << measure;
                EXPECT_TRUE(chosen[2].has_value()) << measure;
            }
        }
    MaterialRecord one = Bits(0.5, 0, 0);
    one.tools[1].number = one.tools[2].number = "0";
    EXPECT_EQ(BitForThroughCircle(one, 0.4), std::nullopt);
    EXPECT_FALSE(BitForThroughContour(one, 0.4).anyFits);
    EXPECT_EQ(BitForInsideRoute(one, 0.4).kind, PathKind::None);
}

TEST(EmptySlots, ADiameterThatIsBlankCountsAsZero) {
    EXPECT_EQ(BitForThroughContour(Bits(0.5, 0, 0.25), 0.4).tool, Tool(1));
}

TEST(SelectedTool, TakesAllFiveValues) {
    BitChoice choice;
    UseTool(choice, {"T7", 0.375, "18000", "300"});
    EXPECT_EQ(choice.ToolDiameter, 0.375);
    EXPECT_EQ(choice.ToolDiameterText, "p375");
    EXPECT_EQ(choice.ToolNumber, "T7");
    EXPECT_EQ(choice.ToolSpeed, "18000");
    EXPECT_EQ(choice.ToolFeed, "300");
    const std::pair<double, const char*> texts[] = {{12.7, "12p7"}, {12, "12"}, {9.53, "9p53"}, {0, "0"}};
    for (const auto& [diameter, text] : texts) {
        UseTool(choice, {"1", diameter, "", ""});
        EXPECT_EQ(choice.ToolDiameterText, text);
    }
}

class BitOperations : public MaterialTest {
  protected:
    std::vector<std::string> Shown() const { return system.dialogs.shownForms; }
    BitChoice choice;
};

TEST_F(BitOperations, ABitThatFitsIsTakenWithoutAWord) {
    EXPECT_TRUE(ChooseThroughContourBit(choice, Bits(0.5, 0.375, 0.25), "KEY", 0.3));
    EXPECT_EQ(choice.ToolNumber, "3");
    EXPECT_TRUE(ChooseInsideRouteBit(choice, Bits(0.5, 0.375, 0.25), "KEY", 0.5, ChoiceDialog::Plain));
    EXPECT_EQ(choice.ToolNumber, "1");
    EXPECT_EQ(choice.kind, PathKind::RT);
    EXPECT_TRUE(ChooseThroughCircleBit(choice, Bits(0.5, 0.375, 0.25), "KEY", 0.4));
    EXPECT_EQ(choice.ToolNumber, "2");
    EXPECT_TRUE(ChooseCirclePocketBit(choice, Bits(0.5, 0.375, 0.25), "KEY", 0.4));
    EXPECT_EQ(choice.ToolNumber, "3");
    EXPECT_EQ(PathKindText(choice.kind), "PKS");
    EXPECT_TRUE(system.dialogs.messages.empty());
    EXPECT_TRUE(Shown().empty());
    EXPECT_FALSE(choice.RouteSkip);
}

TEST_F(BitOperations, WithTwoLikeBitsTheSelectedToolStays) {
    UseTool(choice, {"9", 6, "S9", "F9"});
    EXPECT_TRUE(ChooseThroughContourBit(choice, Bits(0.5, 0.25, 0.25), "KEY", 0.3));
    EXPECT_EQ(choice.ToolNumber, "9");
    EXPECT_TRUE(system.dialogs.messages.empty());
}

TEST_F(BitOperations, AThroughContourTooTightIsToldAndAskedAbout) {
    EXPECT_FALSE(ChooseThroughContourBit(choice, Bits(0.5, 0.375, 0.25), ".75 OAK", 0.125));
    EXPECT_EQ(system.Messages(),
              (std::vector<std::string>{"Your router bits appears too big, for your material .75 OAK, with a "
                                        "route path who's shortest line is 0.125 long, so you need to make a "
                                        "choice."}));
    EXPECT_EQ(Shown(), std::vector<std::string>{"frmChoice"});
    EXPECT_TRUE(choice.RouteSkip);
    EXPECT_EQ(choice.SavedToolDiameters, (std::array{0.5, 0.375, 0.25}));
}

TEST_F(BitOperations, AnInsideRouteTooTightIsToldAndAskedAbout) {
    for (const auto& [dialog, form] : {std::pair{ChoiceDialog::Plain, "frmChoice"},
                                       {ChoiceDialog::WithStandingAnswer, "frmChoicetherm"}}) {
        system.dialogs.messages.clear();
        system.dialogs.shownForms.clear();
        choice = {};
        EXPECT_FALSE(ChooseInsideRouteBit(choice, Bits(0.5, 0.375, 0.25), ".75 OAK", 0.1250001, dialog));
        EXPECT_EQ(
            system.Messages(),
            (std::vector<std::string>{"You do not have a small enough router bit for your material .75 OAK "
                                      "with route path who's shortest line is 0.125 long, so you need to "
                                      "make a choice."}))
            << "no second message";
        EXPECT_EQ(Shown(), std::vector<std::string>{form});
        EXPECT_TRUE(choice.RouteSkip);
        EXPECT_EQ(PathKindText(choice.kind), "none");
    }
}

TEST_F(BitOperations, ACircleTooSmallSkipsThePart) {
    EXPECT_FALSE(ChooseThroughCircleBit(choice, Bits(0.5, 0.375, 0.25), ".75 OAK", 0.125));
    EXPECT_EQ(
        system.Messages(),
        (std::vector<std::string>{
            "Your default router bit is not small enough to cut this circular through route path with a "
            "diameter of 0.125. You need to either change the value  for the largest circle to be drilled "
            "in the Brenvik settings (BSET) or you need provide a router bit small enough for your "
            "circular through route in the  material database (BVMAT) for you material .75 OAK. This part "
            "will now be skipped."}));
    EXPECT_TRUE(choice.RouteSkip);
    EXPECT_TRUE(Shown().empty());
}

TEST_F(BitOperations, ACircleTooSmallForAPocketSkipsThePart) {
    EXPECT_FALSE(ChooseCirclePocketBit(choice, Bits(0.5, 0.375, 0.25), ".75 OAK", 0.25));
    EXPECT_EQ(
        system.Messages(),
        (std::vector<std::string>{
            "You do not have a router bit small enough to pocket this circular non-through route path with "
            "a diameter of 0.25. You need to either change the value  for the largest circle to be drilled "
            "in the Brenvik settings (BSET) or you need provide a router bit small enough for your "
            "circular route in the  material database (BVMAT) for you material .75 OAK, in any of the "
            "slots. This part will now be skipped."}));
    EXPECT_TRUE(choice.RouteSkip);
}

TEST_F(BitOperations, AStandingAnswerIsTakenWithoutAsking) {
    system.settings.Set("Skipandcontinue", "1");
    for (int option = 1; option <= 6; ++option) {
        system.settings.Set("skipandcontinuevalue", std::to_string(option));
        choice = {};
        EXPECT_TRUE(ChooseInsideRouteBit(choice, Bits(0.5, 0.375, 0.25), "KEY", 0.1,
                                         ChoiceDialog::WithStandingAnswer));
        EXPECT_EQ(choice.ToolNumber, std::to_string((option + 1) / 2));
        EXPECT_EQ(PathKindText(choice.kind), option % 2 == 1 ? "RT" : "PKC");
        EXPECT_FALSE(choice.RouteSkip);
    }
    EXPECT_TRUE(system.dialogs.messages.empty());
    EXPECT_TRUE(Shown().empty());
}

TEST_F(BitOperations, AStandingAnswerYieldsToABitThatFits) {
    system.settings.Set("Skipandcontinue", "1");
    system.settings.Set("skipandcontinuevalue", "2");
    EXPECT_TRUE(
        ChooseInsideRouteBit(choice, Bits(0.5, 0.375, 0.25), "KEY", 0.3, ChoiceDialog::WithStandingAnswer));
    EXPECT_EQ(choice.ToolNumber, "3");
    EXPECT_EQ(choice.kind, PathKind::RT);
}

TEST_F(BitOperations, TheOtherTargetsAndThroughContoursAskInSpiteOfIt) {
    system.settings.Set("Skipandcontinue", "1");
    system.settings.Set("skipandcontinuevalue", "1");
    EXPECT_FALSE(ChooseInsideRouteBit(choice, Bits(0.5, 0.375, 0.25), "KEY", 0.1, ChoiceDialog::Plain));
    EXPECT_FALSE(ChooseThroughContourBit(choice, Bits(0.5, 0.375, 0.25), "KEY", 0.1));
    EXPECT_EQ(Shown(), (std::vector<std::string>{"frmChoice", "frmChoice"}));
}

TEST_F(BitOperations, AStandingAnswerThatYieldsNothingSkipsThePart) {
    system.settings.Set("Skipandcontinue", "1");
    MaterialRecord material = Bits(0.5, 0.375, 0.25);
    material.tools[2].number = "0";
    for (const char* value : {"0", "", "7", "1.5", "-1", "many", "5"}) {
        system.settings.Set("skipandcontinuevalue", value);
        system.dialogs.messages.clear();
        choice = {};
        EXPECT_FALSE(ChooseInsideRouteBit(choice, material, "KEY", 0.1, ChoiceDialog::WithStandingAnswer));
        EXPECT_TRUE(choice.RouteSkip) << value;
        ASSERT_EQ(system.Messages().size(), 1u) << value;
        const std::string message = system.Messages().front();
        EXPECT_EQ(
            message.rfind("There is some sort of problem with finding a router bit for this part. Please "
                          "zip this dwg up and email it to ",
                          0),
            0u);
        EXPECT_TRUE(message.ends_with(" with you material.txt file. This part will now be skipped."));
    }
}

TEST_F(BitOperations, OnlyExactlyOneTurnsTheStandingAnswerOn) {
    system.settings.Set("skipandcontinuevalue", "1");
    for (const char* off : {"0", "", "2", "yes"}) {
        system.settings.Set("Skipandcontinue", off);
        system.dialogs.shownForms.clear();
        ChooseInsideRouteBit(choice, Bits(0.5, 0.375, 0.25), "KEY", 0.1, ChoiceDialog::WithStandingAnswer);
        EXPECT_EQ(Shown().size(), 1u) << off;
    }
}

TEST_F(BitOperations, TheStandingAnswerIsKeptAndForgotten) {
    KeepStandingAnswer(4);
    ForgetStandingAnswer();
    EXPECT_EQ(system.settings.writes,
              (std::vector<std::string>{"skipandcontinuevalue=4", "Skipandcontinue=1",
                                        "skipandcontinuevalue=0", "Skipandcontinue=0"}));
}

}  // namespace
}  // namespace brenvik
