// What a run does before and after its parts: folders, messages, host variables, and where its parts come
// from.
#include <algorithm>

#include "cnc/run_template_fixture.h"
#include "settings/standing_answer.h"

namespace brenvik {
namespace {

using RunSetUp = RunTemplateTest;

TEST_F(RunSetUp, WarnsFirstAndTellsItsEndLast) {
    Boards({"Side"});
    RunA();
    EXPECT_EQ(Messages(), (Texts{std::string(RunWarning), "-- Export Complete! --"}));
    EXPECT_TRUE(
        RunWarning.starts_with("This utility will set your ucsfollow and ucsortho system variables to 0, "
                               "set your plinetype to 2, osnapcoord to 2, and turn off backup copies. "
                               "You will may need to manually"));
    EXPECT_TRUE(LastRunReport().complete);
    EXPECT_EQ(LastRunReport().parts, 1);
}

TEST_F(RunSetUp, OfASelectionWithoutSolidsOpensNothingAndTellsItsEnd) {
    Choose({document.ModelSpace().AddLine({0, 0, 0}, {1, 0, 0})});
    RunA();
    EXPECT_TRUE(MessagesBetween().empty());
    EXPECT_EQ(passes, 0);
    EXPECT_TRUE(FilesIn(OutputFolder).empty());
    EXPECT_EQ(host.Documents().Count(), 1);
    EXPECT_TRUE(LastRunReport().complete);
}

TEST_F(RunSetUp, MakesBothFoldersAndClearsTheListsOfTheTarget) {
    RunA(Target::BW);
    EXPECT_TRUE(files.FolderExists(OutputFolder));
    EXPECT_TRUE(files.FolderExists(SecondSideFolder));
    EXPECT_EQ(cleared, std::vector<Target>{Target::BW});
}

TEST_F(RunSetUp, EmptiesBothFoldersBeforeTheFirstPart) {
    for (const std::string_view folder : {OutputFolder, SecondSideFolder}) files.MakeFolder(folder);
    for (const std::string_view folder : {OutputFolder, SecondSideFolder})
        for (const char* name : {"Part_7.dwg", "old.dxf", "notes.txt", "plain"})
            files.WriteFile(std::string(folder) + name, "old");
    Boards({"Side"});
    Texts first, second;
    firstStep = [&](RunState&) {
        first = FilesIn(OutputFolder);
        second = FilesIn(SecondSideFolder);
        return PassOutcome::GoOn;
    };
    RunA();
    EXPECT_EQ(first, Texts{"Part_0.dwg"});
    EXPECT_EQ(second, Texts{"BPart_0.dwg"});
}

/// One file can't be removed, as where another program holds it.
class HeldFile : public FileRoots {
  public:
    using FileRoots::FileRoots;
    void RemoveFile(std::string_view path) override {
        if (path.ends_with("Part_7_held.dxf")) throw Failure(70, "test", "Permission denied");
        FileRoots::RemoveFile(path);
    }
};

TEST_F(RunSetUp, ToldIsAFileThatCannotBeRemoved) {
    HeldFile held(files.InstallFolder());
    for (const std::string_view folder : {OutputFolder, SecondSideFolder}) held.MakeFolder(folder);
    for (const char* name : {"Part_6_old.dxf", "Part_7_held.dxf"})
        held.WriteFile(std::string(OutputFolder) + name, "old");
    UnloadSystem();
    Platform platform;
    platform.dialogs = &dialogs;
    platform.settings = &settings;
    platform.database = &database;
    platform.files = &held;
    platform.measuring = &host;
    LoadSystem(platform);
    EXPECT_EQ(EmptyOutputFolders(), Texts{held.PlaceOf(std::string(OutputFolder) + "Part_7_held.dxf") +
                                          ": this file of before the run could not be removed."});
    EXPECT_EQ(held.ListFiles(OutputFolder, "*.*"), Texts{"Part_7_held.dxf"});
}

TEST_F(RunSetUp, TypesTheHostsVariablesInOrderAndNoUnknownCommand) {
    Boards({"Side"});
    Set("ExportScaleSetting", "3");
    RunA();
    Texts asked;
    for (const std::string& line : transcript)
        for (const char* command : {"_ucs", "plinetype", "ucsfollow", "ucsortho", "isavebak", "OSNAPCOORD"})
            if (line == std::string("Command: ") + command) asked.emplace_back(command);
    EXPECT_EQ(asked,
              (Texts{"_ucs", "plinetype", "ucsfollow", "ucsortho", "isavebak", "OSNAPCOORD", "plinetype"}));
    for (const std::string& line : transcript) EXPECT_EQ(line.find("Unknown"), std::string::npos) << line;
}

TEST_F(RunSetUp, WorksInWorldCoordinates) {
    Boards({"Side"});
    document.SetActiveUcs({10, 20, 30}, {0, 1, 0}, {-1, 0, 0});
    Point3 corner;
    firstStep = [&](RunState& run) {
        corner = LastSolid(*run.part.drawing).GetBoundingBox().min;
        return PassOutcome::GoOn;
    };
    RunA();
    EXPECT_EQ(corner, Point3{});
    EXPECT_EQ(document.ActiveUCS()[0], Point3{});
}

TEST_F(RunSetUp, SavesTheDrawingWhenItIsToldTo) {
    document.SaveAs((home.Path() / "job.dwg").string(), SaveAsKind::Native);
    files.WriteFile("c:\\x.txt", "");
    std::filesystem::remove(home.Path() / "job.dwg");
    RunA();
    EXPECT_FALSE(std::filesystem::exists(home.Path() / "job.dwg")) << "CNCSave is 1";
    Set("CNCSave", "0");
    RunA();
    EXPECT_TRUE(std::filesystem::exists(home.Path() / "job.dwg"));
}

TEST_F(RunSetUp, TellsThatADrawingCannotBeSavedAndGoesOn) {
    Boards({"Side"});
    Set("CNCSave", "0");
    RunA();
    ASSERT_EQ(MessagesBetween().size(), 1U);
    EXPECT_NE(MessagesBetween()[0].find("the drawing has no name yet"), std::string::npos)
        << MessagesBetween()[0];
    EXPECT_EQ(passes, 1);
}

TEST_F(RunSetUp, MinimizesTheWindowForTheRunAlone) {
    Boards({"Side"});
    host.SetWindowState(WindowStateKind::Normal);
    WindowStateKind during = WindowStateKind::Normal;
    firstStep = [&](RunState& run) {
        during = run.app->WindowState();
        return PassOutcome::GoOn;
    };
    RunA();
    EXPECT_EQ(during, WindowStateKind::Normal);
    EXPECT_EQ(host.WindowState(), WindowStateKind::Normal);
    Set("MyWindowState", "1");
    RunA();
    EXPECT_EQ(during, WindowStateKind::Minimized);
    EXPECT_EQ(host.WindowState(), WindowStateKind::Maximized);
}

TEST_F(RunSetUp, ForgetsTheStandingAnswersAtItsEnd) {
    Set("Skipandcontinue", "1");
    Set("skipandcontinuevalue", "4");
    RunA();
    EXPECT_EQ(GetSettingText(setting::Skipandcontinue), "0");
    EXPECT_EQ(GetSettingText(setting::skipandcontinuevalue), "0");
}

TEST_F(RunSetUp, TakesAStandingAnswerOnceSoThatOtherRunsDoNotWipeIt) {
    Boards({"Side"});
    Set("Skipandcontinue", "1");
    Set("skipandcontinuevalue", "4");
    bool asked = false;
    firstStep = [&](RunState&) {
        asked = true;
        Set("Skipandcontinue", "0");
        Set("skipandcontinuevalue", "0");
        BitChoice choice;
        MaterialRecord material;
        for (MaterialTool& tool : material.tools) tool = {"5", 12, "18000", "9000"};
        EXPECT_TRUE(ChooseInsideRouteBit(choice, material, "KEY", 0.1, ChoiceDialog::WithStandingAnswer));
        EXPECT_EQ(choice.kind, PathKind::PKC);
        return PassOutcome::GoOn;
    };
    RunA();
    EXPECT_TRUE(asked);
}

TEST_F(RunSetUp, WritesAStandingAnswerWhereItIsAlone) {
    Boards({"Side"});
    firstStep = [](RunState&) {
        KeepStandingAnswer(4);
        EXPECT_EQ(GetSettingText(setting::Skipandcontinue), "1");
        EXPECT_EQ(GetSettingText(setting::skipandcontinuevalue), "4");
        return PassOutcome::GoOn;
    };
    RunA();
    EXPECT_EQ(GetSettingText(setting::Skipandcontinue), "0");
    EXPECT_EQ(GetSettingText(setting::skipandcontinuevalue), "0");
}

TEST_F(RunSetUp, KeepsAStandingAnswerFromTheRunsOfOtherPrograms) {
    Boards({"Side"});
    const std::filesystem::path shared = files.Resolve(files.InstallFolder() + "\\_db");
    WorkFolder another(shared), own(shared);
    another.Own();
    files.SetWorkFolder(own);
    firstStep = [](RunState&) {
        KeepStandingAnswer(4);
        EXPECT_EQ(GetSettingText(setting::Skipandcontinue), "0");
        EXPECT_EQ(GetSettingText(setting::skipandcontinuevalue), "0");
        BitChoice choice;
        MaterialRecord material;
        for (MaterialTool& tool : material.tools) tool = {"5", 12, "18000", "9000"};
        EXPECT_TRUE(ChooseInsideRouteBit(choice, material, "KEY", 0.1, ChoiceDialog::WithStandingAnswer));
        EXPECT_EQ(choice.kind, PathKind::PKC);
        return PassOutcome::GoOn;
    };
    RunA();
    EXPECT_EQ(passes, 1);
    EXPECT_EQ(MessagesBetween(), Texts{});
}

TEST_F(RunSetUp, IsRefusedWhereAnotherProgramsRunIsGoingOn) {
    Boards({"Side"});
    for (const std::string_view folder : {OutputFolder, SecondSideFolder}) {
        files.MakeFolder(folder);
        const auto another = files.ClaimFolder(folder);
        RunA();
        EXPECT_EQ(passes, 0);
        EXPECT_EQ(cleared, std::vector<Target>{}) << "nothing is touched";
        EXPECT_EQ(Messages().back(), "Nothing was done: a run is going on in " + files.PlaceOf(folder) +
                                         ". Wait for its end, or choose another folder.");
        EXPECT_FALSE(LastRunReport().complete);
    }
    RunA();
    EXPECT_EQ(passes, 1);
    EXPECT_EQ(finished, std::vector<Target>{Target::C2C});
}

TEST_F(RunSetUp, TakesTheSpoilByTheLenientRule) {
    Boards({"Side"});
    double spoil = -1;
    firstStep = [&](RunState& run) {
        spoil = run.SpoilAmount;
        return PassOutcome::GoOn;
    };
    for (const auto& [text, amount] : {std::pair{".25", 0.25}, {"", 0.0}, {"much", 0.0}, {"2 mm", 2.0}}) {
        Set("BiesseWorksSpoil", text);
        RunA();
        EXPECT_EQ(spoil, amount) << text;
    }
}

TEST_F(RunSetUp, DoesNothingToAGridThatIsNotOpen) {
    Board(600, 400, 18).Solid();
    ChooseAllSolids();
    RunA();
    EXPECT_TRUE(MessagesBetween().empty());
    EXPECT_TRUE(database.statements.empty());
}

TEST_F(RunSetUp, DoesNotApplyTheListOfAnEarlierExport) {
    Boards({"Side"});
    Set("CNCApplyClose", "0");
    TheSession().ExportTarget = static_cast<int>(Target::RCIM);
    RunA(Target::RCIM);
    EXPECT_TRUE(MessagesBetween().empty());
    EXPECT_TRUE(database.statements.empty());
    EXPECT_TRUE(database.connectionStrings.empty());
    EXPECT_EQ(passes, 1);
}

TEST_F(RunSetUp, PassesSetsOfAnEarlierRunOver) {
    Boards({"Side"});
    for (const char* name : {"prev", "EXPORTSET", "explode"}) document.SelectionSets().Add(name);
    RunA();
    EXPECT_TRUE(MessagesBetween().empty());
    EXPECT_EQ(passes, 1);
}

TEST_F(RunSetUp, TellsAFolderThatCannotBeMade) {
    files.WriteFile("c:\\BV-DXF", "a file");
    const auto solids = Boards({"Side"});
    WriteList(solids[0]->Handle() + ",4\n");
    RunB();
    ASSERT_EQ(Messages().size(), 2U);
    EXPECT_NE(Messages()[1].find("BV-DXF"), std::string::npos) << Messages()[1];
    EXPECT_FALSE(LastRunReport().complete);
    EXPECT_EQ(Quantity(*solids[0]), "1");
    EXPECT_EQ(files.ReadFile("c:\\BV-DXF"), "a file");
}

class RunList : public RunTemplateTest {
  protected:
    /// The quantity that each part file carries.
    Texts QuantitiesOfParts() {
        Texts quantities;
        firstStep = [&](RunState& run) {
            TheSession().AcadDoc = run.part.drawing;
            quantities.push_back(Quantity(LastSolid(*run.part.drawing)));
            return PassOutcome::GoOn;
        };
        RunB();
        return quantities;
    }
};

TEST_F(RunList, GivesTheQuantitiesToThePartFilesAlone) {
    const auto solids = Boards({"Side", "Shelf", "Back"});
    WriteList(solids[2]->Handle() + ",10\n" + solids[0]->Handle() + ",2\n");
    EXPECT_EQ(QuantitiesOfParts(), (Texts{"10", "2"}));
    for (const Acad3DSolid* solid : solids) EXPECT_EQ(Quantity(*solid), "1");
    EXPECT_TRUE(MessagesBetween().empty());
    EXPECT_TRUE(LastRunReport().passedOver.empty());
}

TEST_F(RunList, TellsOfAQuantityThatCannotBeGivenBack) {
    const auto solids = Boards({"Side", "Shelf"});
    RunReport report;
    {
        LentQuantities quantities(report);
        EXPECT_TRUE(quantities.Lend(document, *solids[0], 4));
        EXPECT_TRUE(quantities.Lend(document, *solids[1], 3));
        quantities.GiveBack(*solids[1]);
        EXPECT_TRUE(report.passedOver.empty());
        document.Layers().Item(solids[0]->Layer())->SetLock(true);
    }
    EXPECT_EQ(report.passedOver,
              Texts{"The part " + solids[0]->Handle() +
                    " keeps the quantity 4 that the run has lent it; expected 1, as after every run from the "
                    "list."});
    EXPECT_EQ(Quantity(*solids[1]), "1");
}

TEST_F(RunList, PassesOverLinesThatNameNoPart) {
    const auto solids = Boards({"Side", "Shelf"});
    WriteList("\r\n  \nno comma\nFFFFF,2\n,3\nzz,1\n" + solids[0]->Handle() + ",many\n" +
              solids[1]->Handle() + ",3\n\n");
    EXPECT_EQ(QuantitiesOfParts(), Texts{"3"});
    EXPECT_TRUE(MessagesBetween().empty());
    EXPECT_EQ(
        LastRunReport().passedOver,
        (Texts{"CNCExportList2.txt, line 3: expected a handle, a comma and a quantity, found \"no comma\"",
               "CNCExportList2.txt, line 4: the drawing has no part FFFFF",
               "CNCExportList2.txt, line 5: the drawing has no part ",
               "CNCExportList2.txt, line 6: the drawing has no part zz",
               "CNCExportList2.txt, line 7: expected a handle, a comma and a quantity, found \"" +
                   solids[0]->Handle() + ",many\""}));
}

TEST_F(RunList, PassesOverASolidThatIsGone) {
    const auto solids = Boards({"Side", "Shelf"});
    WriteList(solids[0]->Handle() + ",2\n" + solids[1]->Handle() + ",3\n");
    solids[0]->Delete();
    EXPECT_EQ(QuantitiesOfParts(), Texts{"3"});
    EXPECT_EQ(LastRunReport().passedOver.size(), 1U);
}

TEST_F(RunList, ReachesPartsOnLockedLayers) {
    const auto solids = Boards({"Side"});
    WriteList(solids[0]->Handle() + ",5\n");
    LockAllLayers(document);
    EXPECT_EQ(QuantitiesOfParts(), Texts{"5"});
    EXPECT_EQ(Quantity(*solids[0]), "1");
}

TEST_F(RunList, ThatIsMissingEndsTheRunWithItsMessage) {
    Boards({"Side"});
    RunB();
    EXPECT_EQ(
        Messages(),
        (Texts{
            std::string(RunWarning),
            "There has been some sort of error reading the file CNCExportList2.txt. It may not have been "
            "created due to user error or another problem. Please contact support. Now skipping export."}));
    EXPECT_EQ(passes, 0);
    EXPECT_FALSE(LastRunReport().complete);
}

TEST_F(RunList, ThatIsGarbageTellsItsEnd) {
    const auto solids = Boards({"Side"});
    std::string garbage;
    unsigned state = 7;
    for (int byte = 0; byte < 20000; ++byte) {
        state = state * 1664525U + 1013904223U;
        garbage += static_cast<char>(state >> 24);
    }
    WriteList(garbage + "\n" + std::string(100000, ',') + "\n" + solids[0]->Handle() +
              ",99999999999999999999\n" + solids[0]->Handle() + ",2\n");
    EXPECT_EQ(QuantitiesOfParts(), Texts{"2"});
    EXPECT_TRUE(MessagesBetween().empty());
    EXPECT_EQ(Quantity(*solids[0]), "1");
}

TEST_F(RunList, ThatNamesAPartTwiceTakesItOnce) {
    const auto solids = Boards({"Side"});
    WriteList(solids[0]->Handle() + ",2\n" + solids[0]->Handle() + ",3\n");
    EXPECT_EQ(QuantitiesOfParts(), Texts{"3"});
    EXPECT_EQ(Quantity(*solids[0]), "1");
}

TEST_F(RunList, ThatIsEmptyTellsItsEnd) {
    Boards({"Side"});
    WriteList("");
    RunB();
    EXPECT_TRUE(MessagesBetween().empty());
    EXPECT_EQ(passes, 0);
}

TEST_F(RunList, WithEntitiesThatAreNoSolidsTakesTheSolids) {
    const auto solids = Boards({"Side"});
    AcadLine* line = document.ModelSpace().AddLine({0, 0, 0}, {1, 0, 0});
    WriteList(line->Handle() + ",2\n" + solids[0]->Handle() + ",3\n");
    EXPECT_EQ(QuantitiesOfParts(), Texts{"3"});
    EXPECT_EQ(Quantity(*line), "1");
}

}  // namespace
}  // namespace brenvik
