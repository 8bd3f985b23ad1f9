// What a journal does to forms, and what its checks say, on a form made for the purpose.
#include "journal/journal_player.h"

#include <gtest/gtest.h>

#include <sstream>

#include "base/failure.h"
#include "forms/grid_control.h"
#include "journal/journal_failure.h"
#include "journal/journal_parser.h"
#include "session/message_text.h"
#include "session/ports/files_port.h"
#include "session/ports/settings_port.h"

namespace brenvik {
namespace {

/// A form with a control of each kind.
class SampleForm : public Form {
  public:
    explicit SampleForm(std::string given = "frmSample") : Form(std::move(given), "Sample") {
        button = &Add<Control>(ControlKind::Button, "btnOK", "OK");
        Add<Control>(ControlKind::Button, "btnOff", "Off").enabled = false;
        Add<Control>(ControlKind::Button, "btnGone", "Gone").visible = false;
        Add<Control>(ControlKind::TextBox, "Text1");
        Add<CheckControl>(ControlKind::CheckBox, "Check1(3)", "Third");
        Add<CheckControl>(ControlKind::OptionButton, "Option1", "One", "g");
        Add<CheckControl>(ControlKind::OptionButton, "Option2", "Two", "g");
        auto& list = Add<ListControl>(ControlKind::ListBox, "lstNames");
        for (const char* item : {"Side", "Back", "#1"}) list.AddItem(item);
        auto& many = Add<ListControl>(ControlKind::ListBox, "lstMany", true);
        for (const char* item : {"a", "b", "c"}) many.AddItem(item);
        Add<ListControl>(ControlKind::ComboBox, "cboCol(0)");
        Add<TabStripControl>("TabStrip1", std::vector<std::string>{"General", "CNC"});
        auto& bar = Add<ToolbarControl>("tbMain", std::vector<ToolbarControl::Key>{{"SORT", "Sort"}});
        bar.onKey = [this](std::string_view key) { pressed += "[" + std::string(key) + "]"; };
        auto& status = Add<StatusBarControl>("sbMain", 2);
        status.panels = {"first", "second"};
        auto& view = Add<ListViewControl>("lvMap");
        view.rows = {{"row 1", "k1", "", {}}, {"row 2", "k2", "", {}}};
        Add<GridControl>("grid", std::vector<GridColumn>{{"bv_a", "A", 8}, {"bv_b", "Bee", 8, true}});
        button->onClick = [this] { pressed += "[OK]"; };
        list.onDoubleClick = [this] { pressed += "[double]"; };
    }
    std::string pressed;
    bool refuses = false;
    Control* button;

  protected:
    bool OnQueryClose() override { return !refuses; }
};

class NoSettings : public SettingsPort {
  public:
    std::string GetSetting(SettingsRoot, std::string_view path, std::string_view name) override {
        return std::string(path) + "|" + std::string(name);
    }
    void SaveSetting(SettingsRoot, std::string_view, std::string_view, std::string_view) override {}
    void DeleteSetting(SettingsRoot, std::string_view, std::string_view) override {}
    std::vector<std::pair<std::string, std::string>> EnumerateSettings(SettingsRoot,
                                                                       std::string_view) override {
        return {};
    }
};

class OneFile : public FilesPort {
  public:
    std::string InstallFolder() override { return "c:\\bv\\"; }
    bool FileExists(std::string_view path) override { return path == "c:\\list.csv"; }
    bool FolderExists(std::string_view) override { return true; }
    void RemoveFile(std::string_view) override {}
    void CopyFileOver(std::string_view, std::string_view) override {}
    void MakeFolder(std::string_view) override {}
    std::vector<std::string> ListFiles(std::string_view, std::string_view) override { return {}; }
    std::string ReadFile(std::string_view) override { return "head\r\nbody, text\r\n"; }
    void WriteFile(std::string_view, std::string_view) override {}
};

char AnswerLetter(MessageAnswer answer) { return AnswerName(answer).front(); }

/// Plays journals on one form.
class JournalPlayerTest : public ::testing::Test {
  protected:
    /// The message of the failure, or "held".
    std::string Play(std::string_view text) {
        JournalWorld world;
        world.settings = &settings;
        world.files = &files;
        world.output = &output;
        world.transcript = &transcript;
        JournalPlayer player(ParseJournal(text, "t.journal"), dialogs, world);
        try {
            if (formFirst) player.PlayForm(form);
            player.Play();
        } catch (const JournalFailure& failure) {
            return failure.what();
        }
        looseEnds = player.LooseEnds();
        return "held";
    }

    std::ostringstream output, transcript;
    JournalDialogs dialogs{transcript};
    SampleForm form;
    NoSettings settings;
    OneFile files;
    bool formFirst = true;
    int looseEnds = 0;
};

TEST_F(JournalPlayerTest, PressesButtonsAndToolbarKeys) {
    EXPECT_EQ(Play("press btnOK\npress TBMAIN.sort\nclose"), "held");
    EXPECT_EQ(form.pressed, "[OK][SORT]");
    EXPECT_EQ(transcript.str(), "");
    EXPECT_EQ(looseEnds, 0);
}

TEST_F(JournalPlayerTest, UnpicksFromAListOfSeveralAlone) {
    EXPECT_EQ(Play("pick lstMany a\npick lstMany b\nunpick lstMany a\nclose"), "held");
    EXPECT_FALSE(form.Get<ListControl>("lstMany").Selected(0));
    EXPECT_TRUE(form.Get<ListControl>("lstMany").Selected(1));
    EXPECT_EQ(Play("unpick lstNames Side"),
              "line 1: unpick lstNames Side: expected a list of which several items can be picked, found the "
              "list \"lstNames\"");
}

TEST_F(JournalPlayerTest, GoesOnBehindAFailureThatIsAccepted) {
    form.button->onClick = [] { throw Failure(70, "test", "Permission denied"); };
    EXPECT_EQ(Play("accept failure\npress btnOK\npress tbMain.SORT\nclose"), "held");
    EXPECT_EQ(form.pressed, "[SORT]");
    EXPECT_EQ(transcript.str(), "line 2: press btnOK: 70 Permission denied\n");
    EXPECT_NE(Play("accept failure\npress btnOK\npress btnOK"), "held");
}

TEST_F(JournalPlayerTest, AFailureThatIsAcceptedAndDoesntComeIsALooseEnd) {
    EXPECT_EQ(Play("accept failure\npress btnOK\nclose"), "held");
    EXPECT_EQ(transcript.str(), "line 1: the failure to accept did not come\n");
    EXPECT_EQ(looseEnds, 1);
}

TEST_F(JournalPlayerTest, CancelsAPromptThatIsAnsweredSo) {
    dialogs.Queue({AnswerKind::Point, std::nullopt, 1});
    EXPECT_EQ(dialogs.AnswerPrompt(AnswerKind::Point, "From point: "), std::nullopt);
    EXPECT_EQ(transcript.str(), "");
}

TEST_F(JournalPlayerTest, EndsWorkOfTheNameAheadOfTheStep) {
    form.button->onClick = [this] {
        for (const char* what : {"Reading", "CNC run", "CNC run"}) {
            const ProgressTask task{what, 3, true};
            dialogs.work.Begin(task);
            int step = 1;
            while (step <= 3 && dialogs.work.Step(step, "")) ++step;
            dialogs.work.End();
            form.pressed += std::to_string(step - 1);
        }
    };
    EXPECT_EQ(Play("cancel work \"CNC run\" 2\npress btnOK\nclose"), "held");
    EXPECT_EQ(form.pressed, "313");
    EXPECT_EQ(looseEnds, 0);
    EXPECT_EQ(Play("cancel work Export 2\nclose"), "held");
    EXPECT_EQ(looseEnds, 1);
}

TEST_F(JournalPlayerTest, TicksAndUnticks) {
    EXPECT_EQ(Play("check Check1(3)\ncheck Check1(3)\nexpect checked Check1(3)\nuncheck Check1(3)\n"
                   "expect unchecked Check1(3)\ntoggle Check1(3)\nexpect checked Check1(3)\n"
                   "check Option1\ncheck Option2\nexpect unchecked Option1\nclose"),
              "held");
}

TEST_F(JournalPlayerTest, AnOptionButtonCantBeUnchecked) {
    EXPECT_EQ(
        Play("check Option1\nuncheck Option1"),
        "line 2: uncheck Option1: expected a tick box, found an option button, which goes off only when "
        "another goes on");
}

TEST_F(JournalPlayerTest, TypesAndPicks) {
    EXPECT_EQ(
        Play("type Text1 \"a b\"\nexpect text Text1 \"a b\"\n"
             "pick lstNames Back\nexpect text lstNames Back\npick lstNames #0\nexpect text lstNames Side\n"
             "pick lstMany a\npick lstMany c\npick TabStrip1 CNC\ndoubleclick lstNames Back\nclose"),
        "held");
    EXPECT_TRUE(form.Get<ListControl>("lstMany").Selected(0));
    EXPECT_FALSE(form.Get<ListControl>("lstMany").Selected(1));
    EXPECT_TRUE(form.Get<ListControl>("lstMany").Selected(2));
    EXPECT_EQ(form.Get<TabStripControl>("TabStrip1").SelectedTab(), 1);
    EXPECT_EQ(form.pressed, "[double]");
}

TEST_F(JournalPlayerTest, AnItemsTextGoesBeforeItsIndex) {
    EXPECT_EQ(Play("pick lstNames #1\nclose"), "held");
    EXPECT_EQ(form.Get<ListControl>("lstNames").ListIndex(), 2);
}

TEST_F(JournalPlayerTest, TellsWhatAControlLacks) {
    struct Case {
        const char* step;
        const char* message;
    };
    const Case cases[] = {
        {"press btnNone", "expected a control \"btnNone\" on frmSample, found none of that name"},
        {"press btnOff", "expected the button \"btnOff\" to be enabled, found it disabled"},
        {"press btnGone", "expected the button \"btnGone\" to be visible, found it hidden"},
        {"press Text1",
         "expected a button, a menu entry, a toolbar key or a tick box, found the text box \"Text1\""},
        {"press tbMain.FIND", "expected a toolbar key \"FIND\" of tbMain, found none of that name"},
        {"type btnOK x", "expected a text box or a combo box, found the button \"btnOK\""},
        {"check btnOK", "expected a tick box or an option button, found the button \"btnOK\""},
        {"pick lstNames Top", "expected an item \"Top\" in lstNames, found \"Side\", \"Back\", \"#1\""},
        {"pick lstNames #3", "expected an item \"#3\" in lstNames, found \"Side\", \"Back\", \"#1\""},
        {"pick cboCol(0) x", "expected an item \"x\" in cboCol(0), found none"},
        {"goto grid 1 A", "expected a row from 1 to the last of grid, found 0 rows"},
        {"width grid Zed 5", "expected a column \"Zed\" in grid, found \"A\", \"Bee\""},
        {"width grid Bee 5", "expected a column that is shown, found a hidden one"},
        {"width grid A 0", "expected a width above 0, of 1000 characters at most, found 0"},
        {"width grid A 1e9", "expected a width above 0, of 1000 characters at most, found 1e9"},
        {"expect rows grid 2", "expected 2 rows, found 0"},
        {"expect hidden column grid A", "expected the column hidden, found it shown"},
        {"expect cell grid 0 Zed x", "expected a column \"Zed\" in grid, found \"A\", \"Bee\""},
        {"expect text Text1 a", "expected \"a\", found \"\""},
        {"expect checked Check1(3)", "expected it checked, found it unchecked"},
        {"expect enabled btnOff", "expected it enabled, found it disabled"},
        {"expect visible btnGone", "expected it visible, found it hidden"},
        {"expect hidden btnOK", "expected it hidden, found it visible"},
        {"expect items lstNames Side", "expected \"Side\", found \"Side\" \"Back\" \"#1\""},
        {"expect items lstNames", "expected no items, found \"Side\" \"Back\" \"#1\""},
        {"expect form frmMain", "expected the form frmMain, found the form frmSample"},
        {"expect no form", "expected no form, found the form frmSample"},
        {"select all", "expected no open form, found the form frmSample"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Play(std::string("# first\n") + c.step),
                  std::string("line 2: ") + c.step + ": " + c.message);
        form.Unload();
    }
}

TEST_F(JournalPlayerTest, ChecksWhatIsShown) {
    EXPECT_EQ(Play("expect text sbMain first\nexpect text sbMain.2 second\nexpect text frmSample Sample\n"
                   "expect items TabStrip1 General CNC\nexpect items lvMap \"row 1\" \"row 2\"\n"
                   "expect hidden column grid Bee\nexpect cell grid 0 2 Bee\nexpect disabled btnOff\n"
                   "expect hidden btnGone\nexpect form FRMSAMPLE\nclose\nexpect no form"),
              "held");
}

TEST_F(JournalPlayerTest, PrintsToTheOutput) {
    EXPECT_EQ(
        Play("print btnOK\nprint sbMain.2\nprint Check1(3)\nprint cell grid 0 1\nprint grid grid\nclose"),
        "held");
    EXPECT_EQ(output.str(), "OK\nsecond\n0\nA\nA\n");
}

TEST_F(JournalPlayerTest, AFormStepOutsideAFormFails) {
    formFirst = false;
    EXPECT_EQ(Play("press btnOK"), "line 1: press btnOK: expected an open form, found none");
    EXPECT_EQ(Play("close"), "line 1: close: expected an open form, found none");
}

TEST_F(JournalPlayerTest, AFormOpenedFromAnotherTakesTheNextSteps) {
    SampleForm inner("frmInner");
    form.button->onClick = [&] { dialogs.ShowModal(inner); };
    EXPECT_EQ(
        Play("press btnOK\nexpect form frmInner\npress tbMain.SORT\nclose\nexpect form frmSample\nclose"),
        "held");
    EXPECT_EQ(inner.pressed, "[SORT]");
}

TEST_F(JournalPlayerTest, AJournalThatEndsInAFormClosesItAndSaysSo) {
    EXPECT_EQ(Play("press btnOK"), "held");
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(transcript.str(), "the journal ended while frmSample was open; closing it\n");
    EXPECT_EQ(looseEnds, 1);
}

TEST_F(JournalPlayerTest, AFormThatRefusesToCloseStaysOpenUntilTheJournalEnds) {
    form.refuses = true;
    EXPECT_EQ(Play("close\nexpect form frmSample"), "held");
    EXPECT_FALSE(form.Loaded());
}

TEST_F(JournalPlayerTest, QueuedAnswersAreTakenInOrder) {
    std::string given;
    form.button->onClick = [&] {
        given += AnswerLetter(dialogs.Show({"Sure?", "Ask", MessageIcon::Question, MessageButtons::YesNo}));
    };
    EXPECT_EQ(Play("answer no\nanswer yes\npress btnOK\npress btnOK\npress btnOK\nclose"), "held");
    EXPECT_EQ(given, "nyy");
    EXPECT_EQ(transcript.str(), "[Ask] Sure? -> no\n[Ask] Sure? -> yes\n[Ask] Sure? -> yes (default)\n");
}

TEST_F(JournalPlayerTest, AMessageThatAsksNothingTakesNoAnswer) {
    form.button->onClick = [&] { dialogs.Show({"Done", "Info"}); };
    EXPECT_EQ(Play("answer no\npress btnOK\nclose"), "held");
    EXPECT_EQ(transcript.str(), "[Info] Done\nline 1: the answer \"no\" was not asked for\n");
    EXPECT_EQ(looseEnds, 1);
}

TEST_F(JournalPlayerTest, AnAnswerThatIsNoButtonFails) {
    form.button->onClick = [&] {
        dialogs.Show({"Sure?", "Ask", MessageIcon::Question, MessageButtons::YesNo});
    };
    EXPECT_EQ(Play("answer ok\npress btnOK"),
              "line 1: answer ok: expected yes or no for [Ask] Sure?, found ok");
}

TEST_F(JournalPlayerTest, MessagesAreLookedAtInOrder) {
    form.button->onClick = [&] {
        dialogs.Show({"one\ntwo", "First"});
        dialogs.Show({"three", "Second"});
    };
    EXPECT_EQ(Play("expect no message\npress btnOK\nexpect title First\nexpect message \"one\\ntwo\"\n"
                   "expect title Second\nexpect message three\nexpect no message\nclose"),
              "held");
    EXPECT_EQ(Play("press btnOK\nexpect message three"),
              "line 2: expect message three: expected \"three\", found \"one\\ntwo\"");
    form.Unload();
    dialogs.Messages().clear();
    EXPECT_EQ(Play("expect message x"), "line 1: expect message x: expected \"x\", found no message");
}

TEST_F(JournalPlayerTest, FileDialogsTakeTheNextFileAnswer) {
    std::vector<std::optional<std::string>> chosen;
    form.button->onClick = [&] { chosen.push_back(dialogs.ChooseFile({})); };
    EXPECT_EQ(
        Play("file \"c:\\\\a b.csv\"\nfile cancel\nfile x\npress btnOK\npress btnOK\npress btnOK\nclose"),
        "held");
    EXPECT_EQ(chosen, (std::vector<std::optional<std::string>>{"c:\\a b.csv", std::nullopt, "x"}));
}

TEST_F(JournalPlayerTest, PromptsTakeTheAnswersOfTheirKind) {
    EXPECT_EQ(Play("point 1,2,3\nreal 4\nkeyword Yes\nclose"), "held");
    EXPECT_EQ(dialogs.AnswerPrompt(AnswerKind::Real, "Height:"), "4");
    EXPECT_EQ(dialogs.AnswerPrompt(AnswerKind::Point, "Base:"), "1,2,3");
    transcript.str("");
    EXPECT_EQ(dialogs.AnswerPrompt(AnswerKind::Point, "Base: "), std::nullopt);
    EXPECT_EQ(transcript.str(), "prompt \"Base:\": no answer queued, left empty\n");
}

TEST_F(JournalPlayerTest, AFailureThatAHandlerLetsThroughFailsTheJournal) {
    form.button->onClick = [] { throw TypeMismatch("\"x\""); };
    EXPECT_EQ(Play("press btnOK").substr(0, 67),
              "line 1: press btnOK: expected the step to go through, found 13 Type");
}

TEST_F(JournalPlayerTest, ChecksSettingsAndFiles) {
    formFirst = false;
    EXPECT_EQ(Play("expect setting CircleSize \"SOFTWARE\\\\Orvane, Inc.\\\\Brenvik04|CircleSize\"\n"
                   "expect setting CSV_SAVE\\CVS_COL_COUNT \"SOFTWARE\\\\Orvane, "
                   "Inc.\\\\Brenvik04\\\\CSV_SAVE|CVS_COL_COUNT\"\n"
                   "expect file c:\\list.csv\nexpect no file c:\\other.csv\n"
                   "expect file c:\\list.csv line 2 \"body, text\""),
              "held");
    EXPECT_EQ(Play("expect setting CirclSize x"),
              "line 1: expect setting CirclSize x: expected the name of a setting, found \"CirclSize\"");
    EXPECT_EQ(Play("expect setting CVS_COL_COUNT x"),
              "line 1: expect setting CVS_COL_COUNT x: expected CSV_SAVE\\CVS_COL_COUNT, found "
              "\"CVS_COL_COUNT\"");
    EXPECT_EQ(Play("expect setting ACCESS_SAVE\\CircleSize x"),
              "line 1: expect setting ACCESS_SAVE\\CircleSize x: expected CircleSize, found "
              "\"ACCESS_SAVE\\CircleSize\"");
    EXPECT_EQ(Play("expect file c:\\list.csv line 3 x"),
              "line 1: expect file c:\\list.csv line 3 x: expected a line 3, found a file of 2 lines");
    EXPECT_EQ(
        Play("expect no file c:\\list.csv"),
        "line 1: expect no file c:\\list.csv: expected no file \"c:\\list.csv\", found one of that name");
    EXPECT_EQ(Play("expect file c:\\none"),
              "line 1: expect file c:\\none: expected the file \"c:\\none\", found none of that name");
}

}  // namespace
}  // namespace brenvik
