// Dialogs without a person: what is told, and which answers are given.
#include "console/console_dialogs.h"

#include <gtest/gtest.h>

#include <sstream>

#include "console/console_shell.h"
#include "forms/form.h"

namespace brenvik {
namespace {

TEST(ConsoleDialogs, TellsAMessageBoxInOneLine) {
    std::ostringstream errors;
    ConsoleDialogs dialogs(errors);
    EXPECT_EQ(dialogs.Show({"13\nBrenvik\nType mismatch", ""}), MessageAnswer::Ok);
    EXPECT_EQ(errors.str(), "[] 13\\nBrenvik\\nType mismatch\n");
    EXPECT_EQ(dialogs.MessagesShown(), 1);
}

TEST(ConsoleDialogs, AnswersAQuestionWithItsFirstButtonAndSaysSo) {
    struct Case {
        MessageButtons buttons;
        MessageAnswer answer;
        const char* told;
    };
    const Case cases[] = {{MessageButtons::OkCancel, MessageAnswer::Ok, "[T] Go on? -> ok (default)\n"},
                          {MessageButtons::YesNo, MessageAnswer::Yes, "[T] Go on? -> yes (default)\n"},
                          {MessageButtons::YesNoCancel, MessageAnswer::Yes, "[T] Go on? -> yes (default)\n"}};
    for (const Case& c : cases) {
        std::ostringstream errors;
        ConsoleDialogs dialogs(errors);
        EXPECT_EQ(dialogs.Show({"Go on?", "T", MessageIcon::Question, c.buttons}), c.answer);
        EXPECT_EQ(errors.str(), c.told);
    }
}

TEST(ConsoleDialogs, CancelsFileDialogs) {
    std::ostringstream errors;
    ConsoleDialogs dialogs(errors);
    FileRequest request;
    request.title = "Export Data";
    EXPECT_FALSE(dialogs.ChooseFile(request));
    EXPECT_EQ(errors.str(), "file dialog \"Export Data\": cancelled, there is nobody to choose\n");
}

class StubbornForm : public Form {
  public:
    StubbornForm() : Form("frmStubborn", "") {}
    bool refuses = false;
    int loads = 0, unloads = 0;

  protected:
    void OnLoad() override { ++loads; }
    bool OnQueryClose() override { return !refuses; }
    void OnUnload() override { ++unloads; }
};

TEST(ConsoleDialogs, LoadsAFormAndClosesItAtOnce) {
    for (const bool refuses : {false, true}) {
        std::ostringstream errors;
        ConsoleDialogs dialogs(errors);
        StubbornForm form;
        form.refuses = refuses;
        bool seenOpen = false;
        dialogs.whileOpen = [&](Form& open) { seenOpen = open.Loaded(); };
        dialogs.ShowModal(form);
        EXPECT_TRUE(seenOpen);
        EXPECT_EQ(form.loads, 1);
        EXPECT_EQ(form.unloads, 1);
        EXPECT_FALSE(form.Loaded());
    }
}

TEST(ConsoleShell, TellsTheDocumentInsteadOfOpeningIt) {
    std::ostringstream errors;
    ConsoleShell shell(errors);
    EXPECT_EQ(shell.OpenDocument("c:\\bv\\", "help.chm", 1), 33);
    EXPECT_EQ(shell.OpenDocument("", "help.chm", 1), 33);
    EXPECT_EQ(errors.str(), "document: c:\\bv\\help.chm\ndocument: help.chm\n");
}

}  // namespace
}  // namespace brenvik
