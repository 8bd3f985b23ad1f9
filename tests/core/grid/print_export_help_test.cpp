// Printing, the guard ahead of an export, and the help file.
#include "core/grid/grid_fixture.h"
#include "grid/grid_print.h"
#include "grid/help.h"

namespace brenvik {
namespace {

class Printing : public GridTest {};

TEST_F(Printing, HandsTheGridOverWithItsSettings) {
    LoadThree();
    Main().tbMain.PressKey("PRINT");
    ASSERT_EQ(system.printer.jobs.size(), 1u);
    const PrintJob& job = system.printer.jobs[0];
    EXPECT_EQ(job.abortMessage, "Printing - Click Cancel to quit");
    EXPECT_EQ(job.jobName, "Brenvik");
    EXPECT_EQ(job.header, "Brenvik 4.9 by Orvane, Inc.");
    EXPECT_TRUE(job.columnHeaders);
    EXPECT_FALSE(job.rowHeaders);
    EXPECT_TRUE(job.gridLines);
    EXPECT_FALSE(job.colour);
    EXPECT_EQ(job.orientation, PrintOrientation::Landscape);
    EXPECT_EQ(job.margins.left, 720);
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(Printing, DoesNothingWhileRowsAreWritten) {
    LoadThree();
    TheSession().ApplyBusy = true;
    PrintTheGrid(Main());
    TheSession().ApplyBusy = false;
    EXPECT_TRUE(system.printer.jobs.empty());
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(Printing, SaysWhenThereIsNoPrinter) {
    LoadThree();
    ThePlatform().print = nullptr;
    Main().tbMain.PressKey("PRINT");
    EXPECT_EQ(system.Messages(), Texts{"Print is not available in this build."});
}

TEST_F(Printing, ShowsTheFailureOfThePrinter) {
    LoadThree();
    system.printer.failOnPrint = Failure(482, "Printer", "Printer error");
    Main().tbMain.PressKey("PRINT");
    EXPECT_EQ(system.Messages(), Texts{"482\r\nPrinter\r\nPrinter error"});
}

class ExportGuard : public GridTest {
  protected:
    ExportGuard() { system.files.contents["C:\\Brenvik\\No Adjustments.txt"] = ""; }
    Texts ExportDialogs() const {
        Texts shown;
        for (const std::string& form : system.dialogs.shownForms)
            if (form == "frmExport") shown.push_back(form);
        return shown;
    }
};

TEST_F(ExportGuard, AsksWhenLettersAreMissing) {
    LoadThree();
    system.dialogs.answers = {MessageAnswer::No};
    bool looked = false;
    system.dialogs.onMessage = [&] {
        looked = true;
        EXPECT_TRUE(TheSession().ApplyBusy);
        EXPECT_FALSE(Main().tbMain.enabled);
        EXPECT_FALSE(Grid().enabled);
    };
    Main().tbMain.PressKey("EXPORT");
    EXPECT_TRUE(looked);
    ASSERT_EQ(system.dialogs.messages.size(), 1u);
    EXPECT_EQ(system.dialogs.messages[0].text,
              "You are missing ORIE data on one or more rows. Do you wish to export anyway?");
    EXPECT_EQ(system.dialogs.messages[0].title, "Exporting Data");
    EXPECT_EQ(system.dialogs.messages[0].buttons, MessageButtons::YesNo);
    EXPECT_FALSE(TheSession().ApplyBusy);
    EXPECT_TRUE(Main().tbMain.enabled);
    EXPECT_TRUE(Grid().enabled);
}

TEST_F(ExportGuard, GoesOnWhenTheUserSaysSo) {
    LoadThree();
    system.dialogs.answers = {MessageAnswer::Yes};
    Main().Get<Control>("mnuExport").Press();
    EXPECT_EQ(system.dialogs.messages.size(), 1u);
    EXPECT_EQ(ExportDialogs(), Texts{"frmExport"});
    EXPECT_TRUE(Main().Loaded());
}

TEST_F(ExportGuard, AsksForOneRowAmongMany) {
    LoadThree();
    Grid().UserEdit(9, 1, "LWT");
    Grid().UserEdit(9, 2, "LWT");
    system.dialogs.answers = {MessageAnswer::No};
    Main().tbMain.PressKey("EXPORT");
    EXPECT_EQ(system.dialogs.messages.size(), 1u);
    EXPECT_EQ(system.dialogs.messages[0].title, "Exporting Data");
    EXPECT_TRUE(ExportDialogs().empty());
}

TEST_F(ExportGuard, AsksNothingWhenEachRowHasItsLetters) {
    LoadThree();
    for (int row = 1; row <= 3; ++row) Grid().UserEdit(9, row, "LWT");
    Main().tbMain.PressKey("EXPORT");
    EXPECT_TRUE(system.Messages().empty());
    EXPECT_EQ(ExportDialogs(), Texts{"frmExport"});
}

TEST_F(ExportGuard, ClosesTheGridOnceATargetIsChosen) {
    for (const int exportTarget : {0, 13, 1, 12}) {
        LoadThree();
        for (int row = 1; row <= Grid().MaxRows(); ++row) Grid().UserEdit(9, row, "LWT");
        system.dialogs.onModal = [exportTarget](Form&) { TheSession().ExportTarget = exportTarget; };
        Main().tbMain.PressKey("EXPORT");
        const bool isTarget = exportTarget == 1 || exportTarget == 12;
        EXPECT_EQ(Main().Loaded(), !isTarget) << exportTarget;
        Main().Unload();
    }
}

class Help : public GridTest {};

TEST_F(Help, OpensTheFileInTheInstallFolder) {
    Main().Load();
    Main().tbMain.PressKey("HELP");
    Main().Get<Control>("mnuHelp").Press();
    const char* document = "C:\\Brenvik\\|Brenvik495.chm|1";
    EXPECT_EQ(system.shell.documents, (Texts{document, document}));
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(Help, TellsEachFailureInItsWords) {
    const std::pair<int, const char*> failures[] = {{0, "Error: Out of Memory/Resources. Couldn't Execute!"},
                                                    {2, "Error: File not found.  Couldn't Execute!"},
                                                    {3, "Error: Path not found. Couldn't Execute!"},
                                                    {11, "Error:  Bad File Format. Couldn't Execute!"},
                                                    {5, "Error: Couldn't Execute!"},
                                                    {32, "Error: Couldn't Execute!"}};
    for (const auto& [result, words] : failures) {
        system.shell.result = result;
        system.dialogs.messages.clear();
        OpenFileWithShell("C:\\Docs\\", "list.txt", 1);
        EXPECT_EQ(system.Messages(), Texts{words}) << result;
    }
    EXPECT_TRUE(system.shell.programs.empty());
}

TEST_F(Help, LetsTheUserChooseAProgramWhereNoneIsRegistered) {
    system.shell.result = 31;
    OpenFileWithShell("C:\\Docs\\", "list.txt", 1);
    EXPECT_EQ(system.shell.programs, Texts{"rundll32.exe shell32.dll,OpenAs_RunDLL list.txt"});
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(Help, SucceedsFromThirtyThreeOn) {
    for (const int result : {33, 42, 1000}) {
        system.shell.result = result;
        OpenFileWithShell("C:\\Docs\\", "list.txt", 1);
    }
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(Help, SaysWhenThereIsNoShell) {
    ThePlatform().shell = nullptr;
    Main().Load();
    Main().tbMain.PressKey("HELP");
    EXPECT_EQ(system.Messages(), Texts{"Opening documents is not available in this build."});
}

}  // namespace
}  // namespace brenvik
