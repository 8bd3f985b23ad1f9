// CNC runs from the shell: files, exit statuses, output folders, and the road through the grid.
#include <algorithm>

#include "boards.h"
#include "cnc/run/run_set_up.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

const std::string warning = "[] " + std::string(RunWarning) + "\n";
const std::string complete = "[] -- Export Complete! --\n";

class Cnc : public ProgramTest {
  protected:
    /// A drawing of boards, each with a hole, all of one size and these names; with a pocket from below they
    /// have a second side.
    void WriteBoards(const std::string& file, const std::vector<std::string>& names,
                     const std::string& material = "White Melamine", bool pocketBelow = false) const {
        WriteBoardsTo(folder / file, {names, material, pocketBelow});
    }
    std::vector<std::string> FilesOf(const std::string& where) const {
        std::vector<std::string> names;
        if (!std::filesystem::is_directory(folder / where)) return names;
        for (const auto& entry : std::filesystem::directory_iterator(folder / where))
            if (entry.is_regular_file()) names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    using Names = std::vector<std::string>;
};

TEST_F(Cnc, WritesAFileForEachPartAndAList) {
    WriteBoards("job.dxf", {"Side", "Shelf"});
    const Outcome outcome = Run({"cnc", "job.dxf", "--target", "C2C"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors, warning + complete);
    EXPECT_EQ(FilesOf("home/drive_c/BV-DXF"),
              (Names{"Part_0_Side_7.dxf", "Part_1_Shelf_7.dxf", "WORKLIST.TXT"}));
    EXPECT_EQ(FilesOf("home/drive_c/BV-DXF/2-sided"), Names{});
}

TEST_F(Cnc, TakesTheTargetInAnyCase) {
    WriteBoards("job.dxf", {"Side"});
    for (const char* target : {"rcim", "RCIM", "eNroute"}) {
        const Outcome outcome = Run({"cnc", "job.dxf", "--target", target});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_EQ(FilesOf("home/drive_c/BV-DXF"), (Names{"CNCList.txt", "Part_0_Side_7.dxf"})) << target;
    }
}

TEST_F(Cnc, PutsTheOutputFolderElsewhere) {
    WriteBoards("job.dxf", {"Side"});
    EXPECT_EQ(Run({"cnc", "job.dxf", "--target", "ABC", "--out", "cut/here"}).status, 0);
    EXPECT_EQ(FilesOf("cut/here"), (Names{"CNCList.csv", "Part_0_Side_7.dxf"}));
    EXPECT_EQ(FilesOf("home/drive_c/BV-DXF"), Names{});
    EXPECT_NE(Read("cut/here/CNCList.csv").find("C:\\BV-DXF\\"), std::string::npos)
        << "paths in lists stay as the system writes them";
    EXPECT_EQ(Run({"cnc", "job.dxf", "--target", "ABC", "--out", "cut/here"}).status, 0)
        << "the folder of an earlier run is fine";
}

TEST_F(Cnc, RefusesAFolderThatHoldsOtherFiles) {
    WriteBoards("job.dxf", {"Side"});
    std::filesystem::create_directory(folder / "keep");
    Write("keep/notes.txt", "mine");
    const Outcome outcome = Run({"cnc", "job.dxf", "--target", "C2C", "--out", "keep"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(
        outcome.errors,
        "brenvik: --out: a run empties its output folder, and keep holds notes.txt, which is from no run; "
        "choose another folder\n");
    EXPECT_EQ(Read("keep/notes.txt"), "mine");
    EXPECT_EQ(Run({"cnc", "job.dxf", "--target", "C2C", "--out", "."}).status, 2);
    EXPECT_TRUE(Exists("job.dxf"));
}

TEST_F(Cnc, RefusesOtherFilesAmongSecondSidesInWhateverCaseTheFolderIsWritten) {
    WriteBoards("job.dxf", {"Side"});
    for (const char* name : {"2-sided", "2-Sided"}) {
        std::filesystem::create_directories(folder / "keep" / name);
        Write(std::string("keep/") + name + "/notes.txt", "mine");
        const Outcome outcome = Run({"cnc", "job.dxf", "--target", "C2C", "--out", "keep"});
        EXPECT_EQ(outcome.status, 2);
        EXPECT_NE(outcome.errors.find(std::string("keep/") + name + " holds notes.txt"), std::string::npos)
            << outcome.errors;
        EXPECT_TRUE(Exists(std::string("keep/") + name + "/notes.txt"));
        std::filesystem::remove_all(folder / "keep");
    }
}

TEST_F(Cnc, RefusesAFileInPlaceOfTheFolder) {
    WriteBoards("job.dxf", {"Side"});
    Write("out", "a file");
    const Outcome outcome = Run({"cnc", "job.dxf", "--target", "C2C", "--out", "out"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.errors, "brenvik: --out: expected a folder, found the file out\n");
}

TEST_F(Cnc, RefusesTheFolderOfTheDrawingItself) {
    std::filesystem::create_directory(folder / "cut");
    WriteBoards("cut/Part_0_Side_7.dxf", {"Side"});
    const Outcome outcome = Run({"cnc", "cut/Part_0_Side_7.dxf", "--target", "C2C", "--out", "cut"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(Exists("cut/Part_0_Side_7.dxf"));
}

TEST_F(Cnc, RefusesToEmptyTheDefaultFolderWhenItHoldsTheDrawing) {
    EXPECT_EQ(Run({"init"}).status, 0);
    for (const std::string where : {"home/drive_c/BV-DXF", "home/drive_c/BV-DXF/2-sided"}) {
        std::filesystem::create_directories(folder / where);
        WriteBoards(where + "/job.dxf", {"Side"});
        std::filesystem::create_symlink(folder / where / "job.dxf", folder / "link.dxf");
        for (const std::string& drawing : {where + "/job.dxf", std::string("link.dxf")}) {
            const Outcome outcome = Run({"cnc", drawing, "--target", "C2C"});
            EXPECT_EQ(outcome.status, 2);
            EXPECT_EQ(outcome.errors, "brenvik: a run empties its output folder, and " + Path(where) +
                                          " holds the drawing itself; choose another folder with --out, or "
                                          "move the drawing\n");
            EXPECT_TRUE(Exists(where + "/job.dxf"));
        }
        std::filesystem::remove(folder / "link.dxf");
    }
    EXPECT_EQ(Run({"cnc", "home/drive_c/BV-DXF/job.dxf", "--target", "C2C", "--out", "cut"}).status, 0);
}

TEST_F(Cnc, OfAJournalRefusesToEmptyTheFolderOfItsDrawing) {
    EXPECT_EQ(Run({"init"}).status, 0);
    std::filesystem::create_directories(folder / "home/drive_c/BV-DXF");
    WriteBoards("home/drive_c/BV-DXF/job.dxf", {"Side"});
    Write("run.journal",
          "select all\ncommand BVC2C\nexpect message \"Nothing was done: a run empties its output "
          "folder, and " +
              Path("home/drive_c/BV-DXF") + " holds the drawing itself.\"\nexpect no message\n");
    const Outcome outcome = Run({"run", "home/drive_c/BV-DXF/job.dxf", "--journal", "run.journal"});
    EXPECT_EQ(outcome.errors.find("expected"), std::string::npos) << outcome.errors;
    EXPECT_EQ(FilesOf("home/drive_c/BV-DXF"), Names{"job.dxf"});
}

TEST_F(Cnc, TellsAFolderThatCannotBeMade) {
    WriteBoards("job.dxf", {"Side"});
    Write("cut", "a file");
    const Outcome outcome = Run({"cnc", "job.dxf", "--target", "C2C", "--out", "cut/here"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("cut/here"), std::string::npos) << outcome.errors;
    EXPECT_EQ(outcome.errors.find(complete), std::string::npos);
    EXPECT_EQ(Read("cut"), "a file");
}

TEST_F(Cnc, FromTheGridMakesIdenticalPartsOneFileAndAQuantity) {
    WriteBoards("job.dxf", {"Shelf", "Side", "Shelf", "Shelf"});
    const Outcome outcome = Run({"cnc", "job.dxf", "--target", "C2C", "--from-grid"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, warning + complete);
    EXPECT_EQ(FilesOf("home/drive_c/BV-DXF"),
              (Names{"Part_0_Shelf_7.dxf", "Part_1_Side_7.dxf", "WORKLIST.TXT"}));
    const std::string list = Read("home/drive_c/BV-DXF/WORKLIST.TXT");
    EXPECT_NE(list.find("Part_0_Shelf_7.dxf,18 WHITE MELAMINE,0,3,Shelf"), std::string::npos) << list;
    EXPECT_NE(list.find("Part_1_Side_7.dxf,18 WHITE MELAMINE,0,1,Side"), std::string::npos) << list;
}

TEST_F(Cnc, FromTheGridCountsBothSidesOfIdenticalParts) {
    WriteBoards("job.dxf", {"Tür", "Tür"}, "White Melamine", true);
    for (const std::string target :
         {"C2C", "ATP", "ROV", "CNI", "ASP", "WOP4", "WOP5", "THERM", "BW", "Enroute", "ABC", "RCIM"}) {
        const Outcome outcome =
            Run({"cnc", "job.dxf", "--target", target, "--from-grid", "--out", "cut/" + target});
        EXPECT_EQ(outcome.status, 0) << target;
        EXPECT_EQ(outcome.errors, warning + complete) << target;
        const std::string part = target == "THERM" ? "Part_0_Tür_7_.dxf" : "Part_0_Tür_7.dxf";
        for (const std::string& name : {"cut/" + target + "/" + part, "cut/" + target + "/2-sided/B" + part})
            EXPECT_TRUE(Exists(name)) << name;
        EXPECT_EQ(FilesOf("cut/" + target).size(), 2U) << target;
        EXPECT_EQ(FilesOf("cut/" + target + "/2-sided").size(), 2U) << target;
    }
    for (const std::string side : {"cut/C2C/", "cut/C2C/2-sided/"})
        EXPECT_NE(Read(side + "WORKLIST.TXT").find(",18 WHITE MELAMINE,0,2,Tür,"), std::string::npos);
    EXPECT_TRUE(Read("cut/THERM/2-sided/Sheet1.csv").starts_with("2,BPart_0_Tür_7_.dxf,"));
    EXPECT_NE(Read("cut/BW/2-sided/WorkList.txt").find("BPart_0_Tür_7.dxf\t600\t400\t2\t"),
              std::string::npos);
}

TEST_F(Cnc, FromTheGridOfADrawingWithoutSolidsTellsItsEnd) {
    WriteBoards("job.dxf", {});
    const Outcome outcome = Run({"cnc", "job.dxf", "--target", "C2C", "--from-grid"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.errors, "job.dxf: the drawing holds no solids\n" + warning + complete);
}

TEST_F(Cnc, WithoutAMaterialLibraryTellsItOnceAndEndsWithStatus1) {
    WriteBoards("job.dxf", {"Side", "Shelf"});
    EXPECT_EQ(Run({"init"}).status, 0);
    std::filesystem::remove(folder / "home/materials.txt");
    const Outcome outcome = Run({"cnc", "job.dxf", "--target", "C2C"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("materials.txt"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find("; 1 more part has not been worked on."), std::string::npos)
        << outcome.errors;
    EXPECT_EQ(outcome.errors.find(complete), std::string::npos);
    EXPECT_EQ(FilesOf("home/drive_c/BV-DXF"), Names{});
    EXPECT_EQ(FilesOf("home/drive_c/BV-DXF/2-sided"), Names{});
}

TEST_F(Cnc, TellsEachPartWhoseTextsMoveTheColumnsOfTheWorkList) {
    WriteBoards("job.dxf", {"Side, left", "Shelf"});
    const Outcome outcome = Run({"cnc", "job.dxf", "--target", "C2C", "--out", "out"});
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find("moves the columns of the work list, by the comma in: Side, left"),
              std::string::npos)
        << outcome.errors;
    EXPECT_EQ(outcome.errors.find("Shelf"), std::string::npos) << outcome.errors;
    const Names files = FilesOf("out");
    ASSERT_EQ(std::ranges::count(files, "Part_0_Side  left_7.dxf"), 1);
    EXPECT_TRUE(Read("out/WORKLIST.TXT")
                    .starts_with("c:\\BV-DXF\\Part_0_Side  left_7.dxf,18 WHITE MELAMINE,0,1,Side, left,"));
}

TEST_F(Cnc, TakesTheSelectedPartsAlone) {
    WriteBoards("job.dxf", {"Shelf", "Side"});
    const Outcome list = Run({"list", "job.dxf", "--format", "csv"});
    const std::size_t line = list.output.find('\n') + 1;
    const std::string handle = list.output.substr(line, list.output.find(',', line) - line);
    EXPECT_EQ(Run({"cnc", "job.dxf", "--target", "C2C", "--select", handle}).status, 0) << handle;
    EXPECT_EQ(FilesOf("home/drive_c/BV-DXF"), (Names{"Part_0_Shelf_7.dxf", "WORKLIST.TXT"}));
}

TEST_F(Cnc, EndsWithStatus1WhereAPartIsSkipped) {
    WriteBoards("job.dxf", {"Side"}, "Unobtainium");
    const Outcome outcome = Run({"cnc", "job.dxf", "--target", "C2C"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("UNOBTAINIUM"), std::string::npos) << outcome.errors;
    EXPECT_TRUE(outcome.errors.ends_with(
        "The part \"Side\" (100) was skipped.\n"
        "to add the board as a copy of the nearest: brenvik --home " +
        Path("home") + " materials add \"18 UNOBTAINIUM\" --like \"18 white melamine\"\n"))
        << outcome.errors;
    EXPECT_EQ(FilesOf("home/drive_c/BV-DXF"), Names{});
}

TEST_F(Cnc, OfADrawingWithoutSolidsTellsItsEnd) {
    WriteBoards("job.dxf", {});
    const Outcome outcome = Run({"cnc", "job.dxf", "--target", "THERM"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "job.dxf: the drawing holds no solids\n" + warning + complete);
}

TEST_F(Cnc, OfAFileThatIsNoDrawingEndsWithStatus3) {
    Write("job.dxf", "no drawing");
    const Outcome outcome = Run({"cnc", "job.dxf", "--target", "C2C"});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_NE(outcome.errors.find("job.dxf"), std::string::npos);
}

}  // namespace
}  // namespace brenvik::cli_test
