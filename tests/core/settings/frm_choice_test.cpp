// The two dialogs that ask for a router bit: what they show and what each way out leaves behind.
#include "settings/frm_choice.h"

#include "core/settings/material_fixture.h"
#include "settings/frm_choicetherm.h"

namespace brenvik {
namespace {

class ChoiceDialogs : public MaterialTest {
  protected:
    /// Asks while the user presses these controls, one after another.
    void AskAndPress(ChoiceDialog dialog, const std::vector<std::string>& controls) {
        system.dialogs.onModal = [&](Form& form) {
            for (const std::string& control : controls) form.Get<Control>(control).Press();
            closedByUser = !form.Loaded();
        };
        AskForBit(choice, material, dialog);
    }
    static std::string Option(int number) { return "Option" + std::to_string(number); }

    const std::array<ChoiceDialog, 2> both{ChoiceDialog::Plain, ChoiceDialog::WithStandingAnswer};
    MaterialRecord material = Bits(0.5, 0.375, 0.25);
    BitChoice choice;
    bool closedByUser = false;
};

TEST_F(ChoiceDialogs, ShowTheThreeBitsWithTwoOptionsEach) {
    for (const ChoiceDialog dialog : both) {
        std::vector<std::string> texts;
        std::string caption;
        system.dialogs.onModal = [&](Form& form) {
            caption = form.caption;
            for (const char* name : {"lblStatement", "lblBit1", "lblBit2", "lblBit3", "cmdAccept", "cmdExit"})
                texts.push_back(form.Get<Control>(name).Text());
            for (int option = 1; option <= 6; ++option) {
                EXPECT_EQ(form.Get<CheckControl>(Option(option)).Text(),
                          option % 2 == 1 ? "Use this bit and route path" : "Use this bit and pocket path");
                EXPECT_EQ(form.Get<CheckControl>(Option(option)).Value(), 0);
            }
            EXPECT_EQ(form.Find("skip") != nullptr, dialog == ChoiceDialog::WithStandingAnswer);
        };
        AskForBit(choice, material, dialog);
        EXPECT_EQ(caption, "Router Bit Choices");
        EXPECT_EQ(texts,
                  (std::vector<std::string>{
                      "It is possible that one of your bits may work for this task. If you are sure that "
                      "one will work, you may select the bit and continue. Otherwise, you should skip this "
                      "part and adjust your material library.",
                      "0.5 Diameter Tool", "0.375 Diameter Tool", "0.25 Diameter Tool",
                      "Accept and use select bit", "Exit and skip this part"}));
    }
}

TEST_F(ChoiceDialogs, HaveTheseNames) {
    for (const ChoiceDialog dialog : both) AskAndPress(dialog, {});
    EXPECT_EQ(system.dialogs.shownForms, (std::vector<std::string>{"frmChoice", "frmChoicetherm"}));
}

TEST_F(ChoiceDialogs, AcceptingTakesTheBitAndThePathKind) {
    for (const ChoiceDialog dialog : both)
        for (int option = 1; option <= 6; ++option) {
            choice = {};
            AskAndPress(dialog, {Option(option), "cmdAccept"});
            const std::string number = std::to_string((option + 1) / 2);
            EXPECT_EQ(choice.ToolNumber, number);
            EXPECT_EQ(choice.ToolSpeed, "S" + number);
            EXPECT_EQ(choice.ToolFeed, "F" + number);
            EXPECT_EQ(choice.ToolDiameter,
                      material.tools[static_cast<std::size_t>((option - 1) / 2)].diameter);
            EXPECT_EQ(choice.ToolDiameterText, option < 3 ? "p5" : (option < 5 ? "p375" : "p25"));
            EXPECT_EQ(PathKindText(choice.kind), option % 2 == 1 ? "RT" : "PKC");
            EXPECT_FALSE(choice.RouteSkip);
            EXPECT_TRUE(closedByUser);
        }
    EXPECT_TRUE(system.settings.writes.empty()) << "nothing stands unless it is ticked";
}

TEST_F(ChoiceDialogs, ExitSkipsThePartAndLeavesTheTool) {
    for (const ChoiceDialog dialog : both) {
        choice = {};
        UseTool(choice, {"9", 6, "S9", "F9"});
        AskAndPress(dialog, {Option(3), "cmdExit"});
        EXPECT_TRUE(choice.RouteSkip);
        EXPECT_EQ(choice.ToolNumber, "9");
        EXPECT_EQ(choice.kind, PathKind::None);
        EXPECT_TRUE(closedByUser);
        EXPECT_TRUE(system.dialogs.messages.empty());
    }
}

TEST_F(ChoiceDialogs, ClosingTheWindowSkipsThePart) {
    for (const ChoiceDialog dialog : both) {
        choice = {};
        AskAndPress(dialog, {Option(3)});
        EXPECT_TRUE(choice.RouteSkip);
        EXPECT_EQ(choice.ToolNumber, "");
    }
}

TEST_F(ChoiceDialogs, CantBeAcceptedBeforeABitIsChosen) {
    for (const ChoiceDialog dialog : both) {
        AskAndPress(dialog, {"cmdAccept"});
        EXPECT_FALSE(closedByUser);
        EXPECT_TRUE(choice.RouteSkip);
        AskAndPress(dialog, {Option(1), Option(6), "cmdAccept"});
        EXPECT_EQ(choice.ToolNumber, "3") << "the last option counts";
    }
}

TEST_F(ChoiceDialogs, AnEmptySlotCantBeChosen) {
    material.tools[1].number = "0";
    for (const ChoiceDialog dialog : both) {
        AskAndPress(dialog, {Option(3), Option(4), "cmdAccept"});
        EXPECT_FALSE(closedByUser);
        AskAndPress(dialog, {Option(5), "cmdAccept"});
        EXPECT_EQ(choice.ToolNumber, "3");
    }
}

TEST_F(ChoiceDialogs, KeepTheDiametersAheadOfAsking) {
    system.dialogs.onModal = [&](Form&) {
        EXPECT_TRUE(choice.RouteSkip) << "raised before the dialog opens";
        EXPECT_EQ(choice.SavedToolDiameters, (std::array{0.5, 0.375, 0.25}));
    };
    AskForBit(choice, material, ChoiceDialog::Plain);
}

TEST_F(ChoiceDialogs, AStandingAnswerIsKeptWhenItIsTicked) {
    for (int option = 1; option <= 6; ++option) {
        system.settings.writes.clear();
        AskAndPress(ChoiceDialog::WithStandingAnswer, {Option(option), "skip", "cmdAccept"});
        EXPECT_EQ(system.settings.writes,
                  (std::vector<std::string>{"skipandcontinuevalue=" + std::to_string(option),
                                            "Skipandcontinue=1"}));
    }
}

TEST_F(ChoiceDialogs, ATickWithoutAcceptingIsForgotten) {
    AskAndPress(ChoiceDialog::WithStandingAnswer, {Option(2), "skip", "cmdExit"});
    EXPECT_TRUE(system.settings.writes.empty());
    AskAndPress(ChoiceDialog::WithStandingAnswer, {Option(2), "cmdAccept"});
    EXPECT_TRUE(system.settings.writes.empty()) << "the next dialog begins unticked";
}

TEST_F(ChoiceDialogs, TheTickSaysWhatItMeans) {
    EXPECT_EQ(
        frmChoicetherm().Get<Control>("skip").Text(),
        "Do not prompt me again during this feature recognition session and use this selected bit and "
        "operation for all of the remaining parts. Be careful using this setting. Only use this setting if "
        "you are 100% sure that all of your parts will still be cut correctly with this bit when the "
        "shortest line is too small.");
}

TEST_F(ChoiceDialogs, TheNextPartShowsItsOwnBits) {
    AskAndPress(ChoiceDialog::Plain, {Option(1), "cmdAccept"});
    material = Bits(12, 8, 5);
    std::string first;
    system.dialogs.onModal = [&](Form& form) {
        first = form.Get<Control>("lblBit1").Text();
        EXPECT_EQ(form.Get<CheckControl>("Option1").Value(), 0);
        EXPECT_FALSE(form.Get<Control>("cmdAccept").enabled);
    };
    AskForBit(choice, material, ChoiceDialog::Plain);
    EXPECT_EQ(first, "12 Diameter Tool");
}

}  // namespace
}  // namespace brenvik
