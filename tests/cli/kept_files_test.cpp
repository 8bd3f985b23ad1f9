// Outputs that would take the place of what a command reads or its home lives by: refused before anything is
// written, whatever name leads to the file.
#include <filesystem>

#include "played_journal.h"

namespace brenvik::cli_test {
namespace {

class KeptFiles : public PlayedJournal {
  protected:
    KeptFiles() {
        EXPECT_EQ(Run({"init"}).status, 0);
        WriteSample("job.dxf");
        Write("a.journal", "select all\n");
        Write("adjust.txt", "[a]\nl=1\n");
        std::filesystem::create_symlink(Path("job.dxf"), Path("link.csv"));
        std::filesystem::create_hard_link(Path("job.dxf"), Path("hard.csv"));
        std::filesystem::create_symlink(Path("home/materials.txt"), Path("library.dxf"));
    }
    /// Refused, told, and every file as it was.
    void ExpectRefused(const std::vector<std::string>& words, const std::string& found) const {
        const Files before = Inputs();
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 2) << words.front() << outcome.errors;
        EXPECT_NE(outcome.errors.find(found + "; nothing was written\n"), std::string::npos)
            << outcome.errors;
        EXPECT_EQ(Inputs(), before) << words.front();
    }

  private:
    Files Inputs() const {
        Files files = FilesBelow("");
        std::erase_if(files, [](const auto& file) { return file.first.starts_with("std"); });
        return files;
    }
};

TEST_F(KeptFiles, AreNoPlaceForAnExport) {
    const auto cases = std::to_array<std::pair<std::string, std::string>>({
        {"job.dxf", "the drawing that is read"},
        {"./home/../job.dxf", "the drawing that is read"},
        {"JOB.DXF", "the drawing that is read"},
        {"link.csv", "the drawing that is read"},
        {"hard.csv", "the drawing that is read"},
        {"home/settings.txt", "the settings of the home"},
        {"home/materials.txt", "the material library of the home"},
        {"home/MATERIALS.BAK", "the backup of the material library"},
        {"home/brenvikprofiles.txt", "the profiles for exports of the home"},
        {"home/_db/bv04.mdb", "a file of the part databases of the home"},
        {"home/_db/list.csv", "a file of the part databases of the home"},
    });
    for (const auto& [place, found] : cases) ExpectRefused({"export", "job.dxf", place}, found);
    ExpectRefused({"export", "job.dxf", "adjust.txt", "--profile", "Cut List", "--adjustments", "adjust.txt"},
                  "the adjustment file");
    EXPECT_EQ(Run({"export", "job.dxf", "home/list.csv"}).status, 0);
}

TEST_F(KeptFiles, AreNoPlaceForATranscript) {
    for (const auto& [place, found] : {std::pair("job.dxf", "the drawing that is read"),
                                       {"a.journal", "the journal that is played"},
                                       {"hard.csv", "the drawing that is read"},
                                       {"home/settings.txt", "the settings of the home"}})
        ExpectRefused({"run", "job.dxf", "--journal", "a.journal", "--transcript", place}, found);
}

TEST_F(KeptFiles, AreNoPlaceForADrawingButTheDrawing) {
    const std::string found = "the material library of the home";
    ExpectRefused({"list", "job.dxf", "--save", "library.dxf"}, found);
    ExpectRefused({"convert", "job.dxf", "library.dxf"}, found);
    ExpectRefused({"sample", "library.dxf"}, found);
    ExpectRefused({"run", "job.dxf", "--journal", "a.journal", "--save", "library.dxf"}, found);
    EXPECT_EQ(Run({"list", "job.dxf", "--save", "job.dxf"}).status, 0);
    EXPECT_EQ(Run({"convert", "job.dxf", "job.dxf"}).status, 0);
}

TEST_F(KeptFiles, AreNoPlaceForWhatAJournalWrites) {
    const std::string library = Read("home/materials.txt");
    const Outcome saved = Play("save \"library.dxf\"\n");
    EXPECT_EQ(saved.status, 1);
    EXPECT_NE(saved.errors.find("found the material library of the home"), std::string::npos) << saved.errors;
    EXPECT_EQ(Read("home/materials.txt"), library);
    const Outcome exported = Play(
        "select all\ncommand Show\nanswer yes\npress tbMain.EXPORT\ntype txtSaveCSVFile "
        "\"home/settings.txt\"\n"
        "press cmdGo\npress cmdCancel\nclose\n");
    EXPECT_EQ(exported.status, 1) << exported.errors;
    EXPECT_NE(exported.errors.find("found the settings of the home"), std::string::npos) << exported.errors;
    const Outcome adjusted = Play(
        "command BVAdjustments\ncell fpAdjustments 1 1 \"a\"\nfile \"a.journal\"\npress "
        "cmdADJBrowse2\nclose\n");
    EXPECT_EQ(adjusted.status, 1) << adjusted.errors;
    EXPECT_NE(adjusted.errors.find("found the journal that is played"), std::string::npos) << adjusted.errors;
}

}  // namespace
}  // namespace brenvik::cli_test
