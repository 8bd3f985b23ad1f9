// Several drawings in one call: each with its name, one table or one file each, and a damaged one costs only
// itself.
#include <csignal>

#include "drawings/apart.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

class SeveralDrawings : public ProgramTest {
  protected:
    SeveralDrawings() {
        WriteSample("jobs_a.dxf");
        std::filesystem::create_directory(folder / "jobs");
        std::filesystem::copy_file(ShippedSample(), folder / "jobs/Base.dxf");
        std::filesystem::copy_file(ShippedSample(), folder / "jobs/wall.dxf");
        std::filesystem::rename(folder / "jobs_a.dxf", folder / "tall.dxf");
        Write("jobs/notes.txt", "no drawing\n");
    }
    void WriteDamaged(const std::string& name) const { Write(name, "no drawing any more\n"); }
    std::string ListOfOne() const { return Run({"list", "tall.dxf", "--quiet"}).output; }
};

TEST_F(SeveralDrawings, AreListedInATableEachBelowItsName) {
    const std::string one = ListOfOne();
    const Outcome outcome = Run({"list", "tall.dxf", "jobs", "--quiet"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "tall.dxf\n" + one + "\njobs/Base.dxf\n" + one + "\njobs/wall.dxf\n" + one);
    // A folder alone stands for the drawings in it.
    EXPECT_EQ(Run({"list", "jobs", "--quiet"}).output, "jobs/Base.dxf\n" + one + "\njobs/wall.dxf\n" + one);
}

TEST_F(SeveralDrawings, AreOneObjectInJsonAndOneTableInCsv) {
    const std::string json = Run({"list", "tall.dxf", "--format", "json", "--quiet"}).output;
    const std::string list = json.substr(0, json.size() - 1);
    EXPECT_EQ(Run({"list", "tall.dxf", "jobs/wall.dxf", "--format", "json", "--quiet"}).output,
              "{\n\"tall.dxf\": " + list + ",\n\"jobs/wall.dxf\": " + list + "\n}\n");
    const std::string csv = Run({"list", "tall.dxf", "--format", "csv", "--quiet"}).output;
    const std::string both = Run({"list", "tall.dxf", "jobs/wall.dxf", "--format", "csv", "--quiet"}).output;
    EXPECT_EQ(both.rfind("Drawing,ID,Qty,", 0), 0u) << both.substr(0, 80);
    EXPECT_EQ(both.find("Drawing,", 1), std::string::npos);
    EXPECT_NE(both.find("\r\ntall.dxf,100,1,Left Side,"), std::string::npos) << both;
    EXPECT_NE(both.find("\r\njobs/wall.dxf,100,1,Left Side,"), std::string::npos);
}

TEST_F(SeveralDrawings, ADamagedOneCostsOnlyItself) {
    WriteDamaged("jobs/cut.dxf");
    const std::string one = ListOfOne();
    const Outcome outcome = Run({"list", "jobs", "missing.dxf", "--quiet"});
    EXPECT_EQ(outcome.status, 3) << "the worst of them";
    EXPECT_EQ(outcome.output, "jobs/Base.dxf\n" + one + "\njobs/wall.dxf\n" + one);
    EXPECT_NE(outcome.errors.find("jobs/cut.dxf:\n"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find("missing.dxf:\nbrenvik: missing.dxf: expected a drawing"),
              std::string::npos)
        << outcome.errors;
    const Outcome json = Run({"list", "jobs/cut.dxf", "tall.dxf", "--format", "json", "--quiet"});
    EXPECT_EQ(json.output.rfind("{\n\"jobs/cut.dxf\": null,\n\"tall.dxf\": [", 0), 0u)
        << json.output.substr(0, 60);
}

TEST_F(SeveralDrawings, OfWhichOneIsNamedTwiceAreOneEach) {
    const std::string once = Run({"list", "jobs", "--quiet"}).output;
    EXPECT_EQ(Run({"list", "jobs", "jobs/../jobs/wall.dxf", "--quiet"}).output, once);
    EXPECT_EQ(Run({"export", "jobs", "jobs/wall.dxf", "lists", "--quiet"}).status, 0);
}

TEST_F(SeveralDrawings, OfWhichOneIsALinkToAnotherAreTwoByTheirNames) {
    std::filesystem::create_symlink("wall.dxf", folder / "jobs/island.dxf");
    EXPECT_EQ(Run({"export", "jobs/wall.dxf", "jobs/island.dxf", "lists", "--quiet"}).status, 0);
    EXPECT_TRUE(std::filesystem::exists(folder / "lists/wall.csv"));
    EXPECT_TRUE(std::filesystem::exists(folder / "lists/island.csv"));
}

TEST_F(SeveralDrawings, InFoldersBelowAFolderAreToldToBeLeftOut) {
    const std::string once = Run({"list", "jobs", "--quiet"}).output;
    std::filesystem::create_directories(folder / "jobs/old/older");
    for (const char* drawing : {"jobs/old/a.dxf", "jobs/old/older/b.STEP"}) WriteDamaged(drawing);
    const Outcome outcome = Run({"list", "jobs", "--quiet"});
    EXPECT_EQ(outcome.output, once);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors,
              "jobs: 2 drawings in the folders below it are left out; name these folders too\n");
    std::filesystem::create_directories(folder / "empty/old");
    WriteDamaged("empty/old/a.dxf");
    EXPECT_EQ(
        Run({"list", "empty"}).errors,
        "brenvik: empty: expected a drawing, found a folder without one: a name that ends in .dxf, .dwg, "
        ".step, .stp, .sat or .sab; 1 drawing in the folders below it is left out; name these folders too\n");
}

TEST_F(SeveralDrawings, AFoldersDrawingsThatCannotBeOpenedAreReported) {
    std::filesystem::create_symlink("on/a/server/that/is/away.dxf", folder / "jobs/dead.dxf");
    std::filesystem::create_directory(folder / "jobs/folder.step");
    const Outcome outcome = Run({"list", "jobs", "--quiet"});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_NE(outcome.errors.find("jobs/dead.dxf: expected a drawing, found no file"), std::string::npos)
        << outcome.errors;
    EXPECT_NE(outcome.errors.find("jobs/folder.step: expected a drawing, found a folder"), std::string::npos)
        << outcome.errors;
}

TEST_F(SeveralDrawings, AreExportedIntoAFileEach) {
    ASSERT_EQ(Run({"export", "tall.dxf", "one.csv"}).status, 0);
    WriteDamaged("jobs/cut.dxf");
    const Outcome outcome = Run({"export", "tall.dxf", "jobs", "lists", "--quiet"});
    EXPECT_EQ(outcome.status, 3);
    const std::string list = Read("one.csv");
    EXPECT_EQ(FilesBelow("lists"), (Files{{"Base.csv", list}, {"tall.csv", list}, {"wall.csv", list}}))
        << outcome.errors;
}

TEST_F(SeveralDrawings, AreConvertedIntoAFileEach) {
    const Outcome outcome = Run({"convert", "jobs", "steps", "--to", "step", "--quiet"});
    EXPECT_EQ(outcome.status, 1);
    for (const char* name : {"steps/Base.step", "steps/wall.step"})
        EXPECT_EQ(Read(name).rfind("ISO-10303-21", 0), 0u) << outcome.errors;
    // Part data have no place there, which is reported for each.
    EXPECT_NE(outcome.errors.find("jobs/wall.dxf:\nsteps/wall.step: part data of"), std::string::npos)
        << outcome.errors;
    EXPECT_EQ(Run({"convert", "jobs", "steps2"}).status, 2) << "nothing says into what";
}

TEST_F(SeveralDrawings, AreProvedEachByTheFolderOfItsName) {
    for (const std::string name : {"Base", "wall"})
        Run({"cnc", "jobs/" + name + ".dxf", "--target", "C2C", "--out", "runs/" + name, "--select",
             "100,120"});
    const Outcome outcome = Run({"prove", "jobs", "runs", "--quiet"});
    EXPECT_NE(outcome.output.find("parts come out of runs/Base as they are drawn\n"), std::string::npos)
        << outcome.output << outcome.errors;
    EXPECT_NE(outcome.output.find("parts come out of runs/wall as they are drawn\n"), std::string::npos);
}

TEST_F(SeveralDrawings, WhoseOutputsWouldBeOneFileAreLeftOut) {
    std::filesystem::create_directory(folder / "more");
    std::filesystem::copy_file(ShippedSample(), folder / "more/WALL.dxf");
    const Outcome outcome = Run({"export", "jobs", "more", "lists"});
    EXPECT_EQ(outcome.status, 1);
    for (const char* drawing : {"jobs/wall.dxf", "more/WALL.dxf"})
        EXPECT_NE(
            outcome.errors.find(std::string(drawing) +
                                ":\nbrenvik: the output of jobs/wall.dxf and of more/WALL.dxf would both "
                                "be lists/WALL.csv: expected drawings of different names; this one was "
                                "left out\n"),
            std::string::npos)
            << outcome.errors;
    EXPECT_TRUE(Exists("lists/Base.csv"));
    EXPECT_FALSE(Exists("lists/wall.csv") || Exists("lists/WALL.csv"));
    const Outcome proved = Run({"prove", "jobs", "more", "lists"});
    EXPECT_NE(proved.errors.find("the folder of files of jobs/wall.dxf and of more/WALL.dxf would both be "),
              std::string::npos)
        << proved.errors;
    const Outcome neither = Run({"export", "jobs/wall.dxf", "more/WALL.dxf", "none"});
    EXPECT_EQ(neither.status, 2);
    EXPECT_FALSE(Exists("none"));
}

TEST_F(SeveralDrawings, TakeNoOptionThatMeansOneDrawing) {
    for (const std::vector<std::string>& words : {std::vector<std::string>{"list", "jobs", "--save", "x.dxf"},
                                                  {"list", "jobs", "--select", "100"},
                                                  {"export", "jobs", "lists", "--select", "100"}}) {
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 2) << words[2] << outcome.errors;
        EXPECT_NE(outcome.errors.find("expected one drawing with this option"), std::string::npos);
    }
    Write("lists", "a file");
    EXPECT_EQ(Run({"export", "jobs", "lists"}).status, 2);
    EXPECT_EQ(Read("lists"), "a file");
    EXPECT_EQ(Run({"export", "tall.dxf", "jobs/wall.dxf", "both.csv"}).status, 2);
    EXPECT_FALSE(Exists("both.csv"));
    std::filesystem::create_directory(folder / "empty");
    EXPECT_EQ(Run({"list", "empty"}).status, 3);
}

TEST(WorkApart, ThatASignalEndsIsReportedByNameAndCostsOnlyItself) {
    const app::WorkApart broken = app::RunApart("kitchen.dxf", [] {
        std::raise(SIGKILL);
        return app::ExitStatus::Done;
    });
    EXPECT_EQ(broken.status, app::ExitStatus::Incomplete);
    EXPECT_EQ(broken.output, "");
    EXPECT_EQ(broken.errors,
              "kitchen.dxf: the program broke off over this drawing (signal 9), and its output is missing\n");
    const app::WorkApart refused = app::RunApart("kitchen.dxf", []() -> app::ExitStatus {
        throw app::CommandError(app::ExitStatus::Unreadable, "kitchen.dxf: expected a drawing");
    });
    EXPECT_EQ(refused.status, app::ExitStatus::Unreadable);
    EXPECT_EQ(refused.errors, "brenvik: kitchen.dxf: expected a drawing\n");
}

}  // namespace
}  // namespace brenvik::cli_test
