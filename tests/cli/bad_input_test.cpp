// Drawings that can't be read, or not wholly: what is told, and that nothing crashes.
#include <algorithm>

#include "program.h"
#include "support/sample_files.h"

namespace brenvik::cli_test {
namespace {

/// What is told of the sample's left side with the name "O'Brien".
const std::string DroppedOBrien =
    "the part 100 \"O'Brien\" is missing in the list: a single quote stands in its Part Name \"O'Brien\", "
    "and "
    "the list can't take one; take the quote out\n";

class BadInput : public ProgramTest {
  protected:
    void ExpectUnreadable(const std::string& name, const std::string& told) {
        for (const std::vector<std::string>& words :
             {std::vector<std::string>{"list", name}, {"convert", name, "out.dxf"}}) {
            const Outcome outcome = Run(words);
            EXPECT_EQ(outcome.status, 3) << name << ": " << outcome.errors;
            EXPECT_EQ(outcome.output, "") << name;
            EXPECT_EQ(outcome.errors.rfind("brenvik: ", 0), 0u) << outcome.errors;
            EXPECT_NE(outcome.errors.find(name), std::string::npos) << outcome.errors;
            EXPECT_NE(outcome.errors.find(told), std::string::npos) << outcome.errors;
            EXPECT_FALSE(Exists("out.dxf"));
        }
    }
    std::string Sample() const { return ReadFile(ShippedSample()); }
    /// The sample with the left side's name replaced.
    std::string SampleWithName(const std::string& name) const {
        std::string sample = Sample();
        const std::string present = "Left Side";
        const std::size_t at = sample.find(present);
        EXPECT_NE(at, std::string::npos);
        return at == std::string::npos ? sample : sample.replace(at, present.size(), name);
    }
};

TEST_F(BadInput, AMissingDrawingIsTold) {
    ExpectUnreadable("none.dxf", "expected a drawing, found no file of this name");
}

TEST_F(BadInput, ACurrentFolderThatIsGoneIsTold) {
    WriteSample("job.dxf");
    const std::string home = "BRENVIK_HOME=" + Path("home"), gone = "mkdir gone; cd gone; rmdir ../gone; ";
    for (const char* target : {"C2C", "ABC"}) {
        const Outcome outcome =
            RunBare(gone + home, {"cnc", Path("job.dxf"), "--target", target, "--out", "out"});
        EXPECT_EQ(outcome.status, 1) << outcome.errors;
        EXPECT_NE(outcome.errors.find("the current folder"), std::string::npos) << outcome.errors;
    }
    const Outcome outcome = RunBare(gone + "BRENVIK_HOME=home", {"list", Path("job.dxf")});
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find("the current folder"), std::string::npos) << outcome.errors;
}

TEST_F(BadInput, AFolderIsNoDrawing) {
    std::filesystem::create_directory(folder / "job.dxf");
    ExpectUnreadable("job.dxf", "expected a drawing, found a folder");
}

TEST_F(BadInput, AnEmptyFileIsToldWhateverItsName) {
    for (const char* name : {"empty.dxf", "empty.step", "empty.sat", "empty.dwg", "empty"}) {
        Write(name, "");
        ExpectUnreadable(name, "expected");
    }
}

TEST_F(BadInput, GarbageIsToldWhateverItsName) {
    std::string garbage;
    for (int i = 0; i < 5000; ++i) garbage += static_cast<char>((i * 7919 + i / 13) % 256);
    for (const char* name : {"garbage.dxf", "garbage.step", "garbage.sat", "garbage"}) {
        Write(name, garbage);
        ExpectUnreadable(name, "expected");
    }
}

TEST_F(BadInput, AJournalsSaveOfFreeFacesLeavesNothingOut) {
    if (!test::HasSamples()) GTEST_SKIP() << "the sample drawings are not here";
    // One of its two solids has faces that are nothing but splines.
    const std::string drawing = (test::SampleFolder() / "step/cgma__cub_model.step").string();
    Write("save.journal", "save \"saved.dxf\"\n");
    const Outcome outcome = Run({"run", drawing, "--journal", "save.journal"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.errors.find("left out"), std::string::npos) << outcome.errors;
    ASSERT_TRUE(Exists("saved.dxf"));
    EXPECT_EQ(Run({"list", "saved.dxf"}).errors.find("left out"), std::string::npos);
}

TEST_F(BadInput, ProseIsNoDrawing) {
    Write("letter.dxf", "Dear customer,\n\nthe cabinet is ready.\n");
    ExpectUnreadable("letter.dxf", "expected");
}

TEST_F(BadInput, TheContentDecidesAndNotTheName) {
    Write("sample.step", Sample());
    const Outcome outcome = Run({"list", "sample.step"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, Run({"list", ShippedSample().string()}).output);
}

TEST_F(BadInput, ADrawingCutOffAnywhereNeitherCrashesNorPassesForWhole) {
    const std::string sample = Sample();
    ASSERT_GT(sample.size(), 1000u);
    for (int part = 1; part < 8; ++part) {
        Write("cut.dxf", sample.substr(0, sample.size() * static_cast<std::size_t>(part) / 8));
        const Outcome outcome = Run({"list", "cut.dxf"});
        EXPECT_TRUE(outcome.status == 1 || outcome.status == 3) << part << " of 8: " << outcome.status;
        EXPECT_NE(outcome.errors.find("cut.dxf"), std::string::npos) << outcome.errors;
    }
}

TEST_F(BadInput, ABodyThatBreaksOffIsToldAndTheOthersArrive) {
    // The first body's text loses its second half; entity and file stay whole. A line of a body is a group 1.
    std::string sample = Sample();
    const std::size_t body = sample.find("AcDbModelerGeometry");
    const std::size_t end = sample.find("\n1001", body);
    ASSERT_NE(end, std::string::npos);
    const std::size_t cut = sample.find("\n  1", body + (end - body) / 2);
    ASSERT_LT(cut, end);
    sample.erase(cut, end - cut);
    Write("broken.dxf", sample);
    const Outcome outcome = Run({"list", "broken.dxf", "--format", "csv"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors.rfind("broken.dxf:", 0), 0u) << outcome.errors;
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 16);
}

TEST_F(BadInput, AStepFileWithoutSolidsIsUnreadable) {
    Write("plate.step",
          "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('','2026-01-01T00:00:00',(''),(''"
          "),'','','');\n"
          "FILE_SCHEMA(('AUTOMOTIVE_DESIGN { 1 0 10303 214 1 1 1 1 }'));\nENDSEC;\nDATA;\n"
          "#1=APPLICATION_CONTEXT('automotive design');\nENDSEC;\nEND-ISO-10303-21;\n");
    ExpectUnreadable("plate.step", "expected");
}

TEST_F(BadInput, AStepFileThatBreaksOffIsUnreadable) {
    WriteSample("sample.step");
    const std::string whole = Read("sample.step");
    Write("cut.step", whole.substr(0, whole.size() / 2));
    const Outcome outcome = Run({"list", "cut.step"});
    EXPECT_TRUE(outcome.status == 1 || outcome.status == 3) << outcome.status;
    EXPECT_NE(outcome.errors.find("cut.step"), std::string::npos) << outcome.errors;
}

TEST_F(BadInput, AQuoteInPartDataLosesThatRowAndIsTold) {
    Write("quote.dxf", SampleWithName("O'Brien"));
    const Outcome outcome = Run({"list", "quote.dxf", "--format", "csv"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 16) << outcome.output;
    EXPECT_EQ(outcome.output.find("Brien"), std::string::npos);
    EXPECT_NE(outcome.output.find("Right Side"), std::string::npos);
    EXPECT_EQ(outcome.errors.rfind("[] ", 0), 0u) << outcome.errors;
    EXPECT_TRUE(outcome.errors.ends_with(DroppedOBrien)) << outcome.errors;
}

TEST_F(BadInput, APartThatDropsOutIsToldByHandleAndNameOnceByEveryCommandThatScans) {
    Write("quote.dxf", SampleWithName("O'Brien"));
    Write("two_scans.journal", "command Show\n  expect rows fpSpread1 15\n  close\ncommand Show\n  close\n");
    const std::vector<std::vector<std::string>> commands{
        {"export", "quote.dxf", "out.csv"},
        {"cnc", "quote.dxf", "--target", "C2C", "--from-grid", "--out", "out"},
        {"run", "quote.dxf", "--journal", "two_scans.journal"}};
    for (const std::vector<std::string>& words : commands) {
        const Outcome outcome = Run(words);
        const std::size_t at = outcome.errors.find(DroppedOBrien);
        ASSERT_NE(at, std::string::npos) << words[0] << ": " << outcome.errors;
        EXPECT_EQ(outcome.errors.find("is missing in the list", at + DroppedOBrien.size()),
                  std::string::npos);
        EXPECT_EQ(outcome.errors.find("is missing in the list"), at + DroppedOBrien.find("is missing"));
    }
}

TEST_F(BadInput, AnyQuoteInPartDataLosesTheRow) {
    for (const char* name : {"O''Brien", "''", "'", "a' || 'b", "a', 'b"}) {
        Write("quote.dxf", SampleWithName(name));
        const Outcome outcome = Run({"list", "quote.dxf", "--format", "csv"});
        EXPECT_EQ(outcome.status, 1) << name;
        EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 16) << outcome.output;
        EXPECT_NE(outcome.errors.find("the part 100 \"" + std::string(name) + "\" is missing in the list: "),
                  std::string::npos)
            << outcome.errors;
    }
}

TEST_F(BadInput, APartTableThatCannotBeUsedIsToldOnce) {
    ASSERT_EQ(Run({"settings", "set", "MDBPath", "C:\\none\\job.mdb"}).status, 0);
    const Outcome outcome = Run({"list", ShippedSample().string()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 2) << outcome.errors;
    EXPECT_NE(outcome.errors.find("job.mdb can't be found\n"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find("\n16 parts are missing in the list, since the part table can't be used\n"),
              std::string::npos)
        << outcome.errors;
}

TEST_F(BadInput, AFailureOfAFileNamesIt) {
    ASSERT_EQ(Run({"init"}).status, 0);
    std::filesystem::remove(folder / "home/_db/bv-back04.mdb");
    const Outcome outcome = Run({"list", ShippedSample().string()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("bv-back04.mdb, the blank database; \"brenvik init\" brings it back"),
              std::string::npos)
        << outcome.errors;
}

TEST_F(BadInput, CommasAndDoubleQuotesInPartDataAreKept) {
    Write("comma.dxf", SampleWithName("Side, 3/4\" left"));
    const Outcome csv = Run({"list", "comma.dxf", "--format", "csv"});
    EXPECT_EQ(csv.status, 0) << csv.errors;
    EXPECT_NE(csv.output.find(",\"Side, 3/4\"\" left\",Carcass,"), std::string::npos) << csv.output;
    const Outcome json = Run({"list", "comma.dxf", "--format", "json"});
    EXPECT_NE(json.output.find("\"bv_partname\": \"Side, 3/4\\\" left\""), std::string::npos) << json.output;
}

TEST_F(BadInput, LettersOfAnyScriptInPartDataAreKept) {
    Write("script.dxf", SampleWithName("T\\U+00FCrseite \\U+5074\\U+677F"));
    const Outcome outcome = Run({"list", "script.dxf", "--format", "csv"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_NE(outcome.output.find(",Türseite 側板,"), std::string::npos) << outcome.output;
}

TEST_F(BadInput, ANameOfAStepFileThatIsTooLongIsCutAndTold) {
    WriteSample("job.step");
    std::string text = Read("job.step");
    const std::string old = "Left Side";
    ASSERT_NE(text.find("'" + old + "'"), std::string::npos);
    for (std::size_t at = text.find("'" + old + "'"); at != std::string::npos;
         at = text.find("'" + old + "'", at))
        text.replace(at + 1, old.size(), std::string(300, 'W'));
    Write("job.step", text);
    const Outcome outcome = Run({"list", "job.step"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("WWW...\": a text of 300 characters was cut to the 255"), std::string::npos)
        << outcome.errors;
}

TEST_F(BadInput, AnOutputThatCantBeWrittenIsTold) {
    const Outcome full = RunInto("/dev/full", {"list", ShippedSample().string()});
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.errors, "brenvik: standard output can't be written\n");
}

TEST_F(BadInput, ADrawingThatCantBeWrittenIsTold) {
    Write("file", "");
    for (const char* name : {"file/out.dxf", "nowhere/out.dxf"}) {
        const Outcome outcome = Run({"convert", ShippedSample().string(), name});
        EXPECT_EQ(outcome.status, 1) << name;
        EXPECT_NE(outcome.errors.find("out.dxf"), std::string::npos) << outcome.errors;
    }
}

TEST_F(BadInput, AJournalThatCantBeReadIsTold) {
    const Outcome missing = Run({"run", ShippedSample().string(), "--journal", "none.journal"});
    EXPECT_EQ(missing.status, 3);
    EXPECT_EQ(missing.errors, "brenvik: none.journal: expected a journal, found no file that can be read\n");
    Write("bad.journal", "select all\npress\n");
    const Outcome bad = Run({"run", ShippedSample().string(), "--journal", "bad.journal"});
    EXPECT_EQ(bad.status, 3);
    EXPECT_EQ(bad.errors,
              "brenvik: bad.journal:2:6: expected the name of a control, found the end of the line\n");
}

}  // namespace
}  // namespace brenvik::cli_test
