// What a drawing holds and no list or run can take as it is: each is told by part, place and what was
// expected, and nothing that was guessed ends with status 0.
#include <algorithm>

#include "program.h"

namespace brenvik::cli_test {
namespace {

class ToldParts : public ProgramTest {
  protected:
    /// The sample with other data on its first solid, the left side with the handle 100: the groups behind
    /// the key are replaced by `groups`; without any, the key goes too.
    static std::string WithData(const std::string& key, const std::string& groups,
                                std::string text = Sample(), const std::string& handle = "100") {
        const std::size_t solid = text.find("\n3DSOLID\n  5\n" + handle + "\n");
        const std::string head = "1001\n" + key + "\n";
        const std::size_t at = text.find(head, solid);
        const std::size_t end = std::min(text.find("1001\n", at + 1), text.find("  0\n", at));
        return text.replace(at, end - at, groups.empty() ? std::string() : head + groups);
    }
    static std::string WithText(const std::string& key, const std::string& value, std::string text = Sample(),
                                const std::string& handle = "100") {
        return WithData(key, "1000\n" + value + "\n", std::move(text), handle);
    }
    static std::string Sample() {
        std::string text = ReadFile(ShippedSample());
        std::erase(text, '\r');
        return text;
    }
    Outcome List(const std::string& drawing, const std::vector<std::string>& more = {}) const {
        Write("job.dxf", drawing);
        std::vector<std::string> words{"list", "job.dxf", "--format", "csv"};
        words.insert(words.end(), more.begin(), more.end());
        return Run(words);
    }
    Outcome Cnc(const std::string& drawing, const std::vector<std::string>& more = {}) const {
        Write("job.dxf", drawing);
        std::vector<std::string> words{"cnc", "job.dxf", "--target", "C2C", "--out", "out"};
        words.insert(words.end(), more.begin(), more.end());
        return Run(words);
    }
    std::size_t FilesOf(const std::string& name) const {
        std::size_t files = 0;
        for (const auto& entry : std::filesystem::directory_iterator(folder / "out"))
            files += entry.path().filename().string().find(name) != std::string::npos ? 1 : 0;
        return files;
    }
};

void ExpectTold(const Outcome& outcome, const std::string& text) {
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find(text), std::string::npos) << "expected: " << text << '\n' << outcome.errors;
}

TEST_F(ToldParts, AnUntouchedSampleHasNothingToTell) {
    const Outcome outcome = List(Sample());
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
}

TEST_F(ToldParts, LettersThatNameNoSizesAreToldAndNoRunCutsByThem) {
    for (const std::string groups : {"1000\nLWW\n", "1000\nLW\n", "1000\nXYZ\n", "1070\n5\n"}) {
        const std::string drawing = WithData("ORIE", groups);
        const std::string fault = "its letters (ORIE) are \"" + groups.substr(5, groups.size() - 6) +
                                  "\", expected L, W and T in some order";
        ExpectTold(List(drawing), "the part \"Left Side\" (100): " + fault);
        ExpectTold(Cnc(drawing, {"--select", "100,120"}), "The part \"Left Side\" is skipped: " + fault);
        EXPECT_EQ(FilesOf("Left"), 0u);
        EXPECT_EQ(FilesOf("Right"), 1u);
    }
    const std::string drawing = WithText("ORIE", "LWW");
    ExpectTold(Cnc(drawing, {"--from-grid", "--select", "100,120"}),
               "The part \"Left Side\" (100) is skipped: ");
    EXPECT_EQ(FilesOf("Left"), 0u);
    ExpectTold(Run({"parts", "job.dxf", "--out", "drawings", "--select", "100,120"}),
               "the part \"Left Side\" (100): it has no drawing");
}

TEST_F(ToldParts, LettersNeedTheExtentsThatWereSavedWithThem) {
    const std::string told =
        "the part \"Left Side\" (100): of the extents saved with its letters OLDVALUE2 is ";
    ExpectTold(List(WithData("OLDVALUE2", "")), told + "missing, expected a number above 0");
    ExpectTold(List(WithText("OLDVALUE2", "nan")), told + "\"nan\", expected");
    ExpectTold(List(WithText("OLDVALUE2", "560.0.0")), told + "\"560.0.0\", expected");
    ExpectTold(List(WithText("OLDVALUE2", "-1")), told + "\"-1\", expected");
    // The letters that the list makes of it are a guess.
    ExpectTold(
        Cnc(WithText("OLDVALUE2", "nan"), {"--from-grid", "--select", "100,120"}),
        "The part \"Left Side\" (100) is skipped: its letters LTW were made out of data that can't be right");
    EXPECT_EQ(FilesOf("Left"), 0u);
}

TEST_F(ToldParts, LettersThatAreDroppedAreTold) {
    const std::string drawing = WithText("OLDVALUE2", "500", WithText("OLDVALUE3", "700"));
    ExpectTold(List(drawing),
               "its letters LWT are dropped, since its extents were 18 x 500 x 700 when they were "
               "saved and are 18 x 560 x 720 now");
    ExpectTold(
        Cnc(drawing, {"--select", "100"}),
        "The part \"Left Side\" (100): it was worked on by its letters LWT, but its sizes have changed");
    // One that moved with its size.
    ExpectTold(Cnc(WithText("OLDVALUE2", "800"), {"--select", "100"}), "and WLT would be right now");
}

TEST_F(ToldParts, QuantitiesThatCountNothingAreTold) {
    for (const std::string quantity : {"abc", "0", "-3", "2.5", " ", "1e9", "1e3", "&HA", "1d1"}) {
        const std::string told =
            "its quantity is \"" + quantity + "\", expected a whole number from 1 to 1000000";
        ExpectTold(List(WithText("QUANTITY", quantity)), "the part \"Left Side\" (100): " + told);
        ExpectTold(Cnc(WithText("QUANTITY", quantity), {"--select", "100"}), "\"Left Side\" (100): " + told);
    }
    for (const std::string quantity : {"1", "4", "12", "2.0"})
        EXPECT_EQ(List(WithText("QUANTITY", quantity)).status, 0) << quantity;
    EXPECT_EQ(List(WithData("QUANTITY", "1070\n4\n")).status, 0);
}

TEST_F(ToldParts, QuantitiesThatGroupingLosesAreTold) {
    const std::string drawing = WithText("QUANTITY", "4");
    const std::string told = "the part \"Left Side\" (100): ";
    ExpectTold(List(drawing, {"--group", "Part Name"}),
               told + "its group counts 1 row; the quantities of these rows add up to 4");
    ExpectTold(Run({"export", "job.dxf", "grouped.csv", "--group", "Part Name, Material"}),
               told + "its group counts 1 row; the quantities of these rows add up to 4");
    ExpectTold(Cnc(drawing, {"--from-grid", "--select", "100"}),
               told +
                   "the run makes 1 of it, one for each row of the list; the quantities of these rows add up "
                   "to 4");
    // The other way it gets there.
    EXPECT_EQ(Cnc(drawing, {"--select", "100"}).status, 0);
    EXPECT_NE(Read("out/WORKLIST.TXT").find(",4,Left Side,"), std::string::npos) << Read("out/WORKLIST.TXT");
}

TEST_F(ToldParts, DifferentSolidsWithOneLineInTheListAreTold) {
    std::string drawing = Sample();
    for (const std::string handle : {"100", "120"})
        for (const std::string key : {"PARTNAME", "PN"}) drawing = WithText(key, "Side", drawing, handle);
    ExpectTold(
        Cnc(drawing, {"--from-grid", "--select", "100,120"}),
        "the part \"Side\" (100): its files are made 2 times, for all parts with the same line in the list, "
        "but of these the solids of \"Side\" (120) differ from it; expected a part number (PN)");
}

TEST_F(ToldParts, TextsThatMoveTheColumnsOfAnExportAreTold) {
    for (const std::string text : {"Side, left", "6\" side"}) {
        Write("job.dxf", WithText("PARTNAME", text));
        ExpectTold(
            Run({"export", "job.dxf", "list.csv"}),
            "it moves the columns of the file, where nothing is quoted: a text without commas, quotes and "
            "line breaks was expected under Part Name, found \"" +
                text + "\"");
        EXPECT_NE(Read("list.csv").find(",1," + text + ",Carcass,"), std::string::npos) << Read("list.csv");
    }
}

TEST_F(ToldParts, DataThatTheListReadsInPartAreTold) {
    ExpectTold(
        List(WithData("QUANTITY", "1000\n2\n1000\n3\n")),
        "3DSOLID (handle 100), extended data of \"QUANTITY\": one value was expected, found 2; the first "
        "one counts, \"2\"");
    ExpectTold(List(WithData("PN", "1000\n7\n1001\nPN\n1000\n8\n")),
               "\"PN\": one value was expected, found 2");
    ExpectTold(
        List(WithData("PN", "1000\n7\n1050\n8\n")),
        "extended data of \"PN\": an item was passed over, group 1050 stands where a code of extended data "
        "was expected");
    ExpectTold(List(WithData("MATERIAL", "1010\n1\n1020\n2\n1030\n3\n")),
               "the part \"Left Side\" (100): a text was expected under MATERIAL");
}

TEST_F(ToldParts, AHandleThatStandsTwiceIsTold) {
    std::string drawing = Sample();
    const std::string second = "\n3DSOLID\n  5\n120\n";
    drawing.replace(drawing.find(second), second.size(), "\n3DSOLID\n  5\n100\n");
    ExpectTold(List(drawing), "handle used twice: 100; the second entity gets a new one");
}

TEST_F(ToldParts, ADrawingThatChangedSinceItWasReadIsNotWrittenOver) {
    Write("job.dxf", Sample());
    // The export stands for the other program.
    Write("over.journal",
          "select all\ncommand Show\nanswer yes\npress tbMain.EXPORT\ntype txtSaveCSVFile \"out.dxf\"\n"
          "press cmdGo\nclose\n");
    ExpectTold(Run({"run", "job.dxf", "--journal", "over.journal", "--save", "out.dxf"}),
               "out.dxf was made by another program since it was read; nothing was written over it");
    EXPECT_TRUE(Read("out.dxf").starts_with("PN,QTY,"));
    Write("twice.journal", "save \"job.dxf\"\nsave \"job.dxf\"\n");
    EXPECT_EQ(Run({"run", "job.dxf", "--journal", "twice.journal", "--save", "job.dxf"}).status, 0);
}

TEST_F(ToldParts, AnApplyThatALayerRefusesNamesThePart) {
    Write("job.dxf", Sample());
    Write("locked.journal",
          "host \"-layer lock CARCASS  \"\nselect 100\ncommand Show\npress tbMain.APPLY_DRAWING\nclose\n");
    ExpectTold(
        Run({"run", "job.dxf", "--journal", "locked.journal"}),
        "the part \"Left Side\" (100): its row of the list could not be written to the drawing as a whole");
}

TEST_F(ToldParts, AnEditThatACellCannotTakeNamesTheCell) {
    Write("job.dxf", Sample());
    Write("edit.journal", "select 100\ncommand Show\ncell fpSpread1 1 Length \"long\"\nclose\n");
    ExpectTold(Run({"run", "job.dxf", "--journal", "edit.journal"}),
               "row 1, column \"Length\": expected a number, found \"long\"");
}

TEST_F(ToldParts, AnOutputFolderThatIsALinkToNothingIsRefusedAsThat) {
    std::filesystem::create_directory_symlink("nowhere", folder / "link");
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"cnc", "job.dxf", "--target", "C2C"}, {"parts", "job.dxf"}}) {
        Write("job.dxf", Sample());
        std::vector<std::string> all = words;
        all.insert(all.end(), {"--out", "link"});
        const Outcome outcome = Run(all);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_NE(
            outcome.errors.find("--out: expected a folder, found link, a link to nowhere, which isn't there"),
            std::string::npos)
            << outcome.errors;
    }
}

TEST_F(ToldParts, ADefaultOutputFolderThatIsALinkToNothingIsRefusedAsThat) {
    ASSERT_EQ(Run({"init"}).status, 0);
    Write("job.dxf", Sample());
    std::filesystem::create_directories(folder / "home/drive_c");
    for (const char* name : {"BV-DXF", "BV-DWG"})
        std::filesystem::create_directory_symlink("nowhere", folder / "home/drive_c" / name);
    ExpectTold(
        Run({"cnc", "job.dxf", "--target", "C2C"}),
        "expected a folder for the files, found " + Path("home/drive_c/BV-DXF") +
            ", a link to nowhere, which isn't there; remove it, or choose another folder with --out\n");
    ExpectTold(Run({"parts", "job.dxf"}), "BV-DWG, a link to nowhere, which isn't there");
}

TEST_F(ToldParts, AFolderForDrawingsThatCannotBeMadeIsNamed) {
    Write("job.dxf", Sample());
    Write("file", "");
    const Outcome outcome = Run({"parts", "job.dxf", "--out", "file/out", "--select", "100"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("file/out"), std::string::npos) << outcome.errors;
}

TEST_F(ToldParts, FilesOfOthersThatGoWithADefaultFolderAreCounted) {
    ASSERT_EQ(Run({"init"}).status, 0);
    Write("job.dxf", Sample());
    for (const char* name : {"BV-DXF/2-sided", "BV-DWG"})
        std::filesystem::create_directories(folder / "home/drive_c" / name);
    Write("home/drive_c/BV-DXF/notes.txt", "mine");
    Write("home/drive_c/BV-DXF/b.dxf", "mine");
    Write("home/drive_c/BV-DXF/Part_0_Side_.dxf", "of a run");
    Write("home/drive_c/BV-DWG/list.csv", "mine");
    const Outcome run = Run({"cnc", "job.dxf", "--target", "C2C", "--select", "100", "--quiet"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_NE(run.errors.find("2 files of others went as " + Path("home/drive_c/BV-DXF") +
                              " was emptied: b.dxf, notes.txt\n"),
              std::string::npos)
        << run.errors;
    EXPECT_EQ(run.errors.find("2-sided was emptied"), std::string::npos);
    const Outcome parts = Run({"parts", "job.dxf", "--select", "100"});
    EXPECT_EQ(parts.status, 0) << parts.errors;
    EXPECT_NE(parts.errors.find("1 file of others went as " + Path("home/drive_c/BV-DWG") +
                                " was emptied: list.csv\n"),
              std::string::npos)
        << parts.errors;
}

TEST_F(ToldParts, PartsWhoseLettersARunTakesByDefaultAreNamed) {
    const std::string told =
        "the part \"Adjustable Shelf\" (170): it has no letters (ORIE) and is taken for LWT";
    const Outcome run = Cnc(Sample(), {"--select", "170,100", "--material", "White Melamine", "--quiet"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_NE(run.errors.find(told), std::string::npos) << run.errors;
    EXPECT_EQ(run.errors.find("(100): it has no"), std::string::npos) << run.errors;
    const Outcome parts = Run({"parts", "job.dxf", "--out", "drawings", "--select", "170,100"});
    EXPECT_EQ(parts.status, 0) << parts.errors;
    EXPECT_NE(parts.errors.find(told), std::string::npos) << parts.errors;
    Write("run.journal", "select 170\ncommand BVExportDWG\n");
    const Outcome journal = Run({"run", "job.dxf", "--journal", "run.journal"});
    EXPECT_EQ(journal.status, 0) << journal.errors;
    EXPECT_NE(journal.errors.find(told), std::string::npos) << journal.errors;
}

TEST_F(ToldParts, DamagedSavedExtentsAreToldByEveryCommandThatUsesThem) {
    const std::string drawing = WithText("OLDVALUE2", "nan");
    const std::string told =
        "it was worked on by its letters LWT, but of the extents saved with its letters OLDVALUE2 is "
        "\"nan\", "
        "expected a number above 0, so nobody can tell whether they still name its sizes";
    ExpectTold(Cnc(drawing, {"--select", "100"}), "The part \"Left Side\" (100): " + told);
    ExpectTold(Run({"parts", "job.dxf", "--out", "drawings", "--select", "100"}),
               "the part \"Left Side\" (100): " + told);
    ExpectTold(Run({"export", "job.dxf", "list.csv"}),
               "of the extents saved with its letters OLDVALUE2 is \"nan\"");
    // Letters that came without any have nothing to be held against.
    std::string bare = Sample();
    for (const char* key : {"OLDVALUE1", "OLDVALUE2", "OLDVALUE3"}) bare = WithData(key, "", bare);
    EXPECT_EQ(Cnc(bare, {"--select", "100"}).status, 0);
    Write("job.dxf", WithText("OLDVALUE2", "800"));
    ExpectTold(Run({"parts", "job.dxf", "--out", "drawings", "--select", "100"}),
               "and WLT would be right now");
}

TEST_F(ToldParts, LettersForADrawingThatKeepsItsOwnAreTold) {
    Write("job.dxf", Sample());
    for (const char* letters : {"WLT", "none"})
        ExpectTold(Run({"list", "job.dxf", "--letters", letters}), "job.dxf: --letters was passed over");
    ASSERT_EQ(Run({"sample", "job.step"}).status, 0);
    EXPECT_EQ(Run({"list", "job.step", "--letters", "WLT"}).status, 0);
}

TEST_F(ToldParts, ARowOfNothingIsTold) {
    ASSERT_EQ(Run({"init"}).status, 0);
    ASSERT_EQ(Run({"settings", "set", "NoMeasure", "1"}).status, 0);
    std::string bare = WithText("ORIE", "");
    for (const std::string key : {"OLDVALUE1", "OLDVALUE2", "OLDVALUE3"}) bare = WithData(key, "", bare);
    const std::string told =
        "the part \"Left Side\" (100): its extents are 0 x 0 x 0: NoMeasure is on, and no extents ";
    const Outcome list = List(bare, {"--select", "100"});
    ExpectTold(list, told);
    EXPECT_NE(list.output.find("Left Side"), std::string::npos);
    ExpectTold(Run({"export", "job.dxf", "out.csv", "--select", "100"}), told);
}

TEST_F(ToldParts, AQuoteIsToldByTheTextThatHoldsIt) {
    for (const auto& [key, caption] : {std::pair("PARTNAME", "Part Name"),
                                       {"NOTES", "Notes"},
                                       {"EB1", "EB1"},
                                       {"USERDATA2", "User Data2"}})
        ExpectTold(List(WithText(key, "6' long")),
                   std::string("a single quote stands in its ") + caption +
                       " \"6' long\", and the list can't take one; take the quote out\n");
}

}  // namespace
}  // namespace brenvik::cli_test
