// A run that is shared out among processes writes and tells what one process does.
#include <cstdint>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "boards.h"
#include "drafting_host/document/files/drawing_files.h"
#include "drafting_host/document/host_application.h"
#include "file_roots/whole_file.h"
#include "program.h"
#include "sample/workpiece.h"

namespace brenvik::cli_test {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// Boards of these materials with a window each.
void WriteWindowsTo(const fs::path& file, const std::vector<std::string>& materials) {
    HostApplication host(WriteWholeFile);
    HostDocument& document = host.NewDocument();
    document.Layers().Add("Parts");
    double place = 0;
    for (const std::string& material : materials) {
        app::Workpiece board(document.ModelSpace(), {place, 0, 0}, {place + 600, 400, 18}, "Parts");
        board.Cut({place + 200, 100, -1}, {place + 300, 160, 19});
        const std::vector<std::int16_t> types{1001, 1000};
        const std::vector<XDataValue> values{std::string("MATERIAL"), material};
        board.Solid().SetXData(types, values);
        place += 1000;
    }
    SaveDrawing(document, file);
}

class Jobs : public ProgramTest {
  protected:
    Jobs() { EXPECT_EQ(Run({"init"}).status, 0); }

    struct Ran {
        Outcome outcome;
        Files files, home;
        std::string drawing;
    };

    /// Runs on a copy of the drawing in a copy of the home, since a run may change both.
    Ran RunWith(const std::string& jobs, const Words& words) const {
        for (const char* name : {"cut", "home", "job.dxf"}) fs::remove_all(folder / name);
        fs::copy(folder / "first-home", folder / "home", fs::copy_options::recursive);
        fs::copy_file(folder / "first.dxf", folder / "job.dxf");
        Words all{"cnc", "job.dxf", "--out", "cut", "--jobs", jobs};
        all.insert(all.end(), words.begin(), words.end());
        const Outcome outcome = Run(all);
        return {outcome, FilesBelow("cut"), FilesBelow("home"), Read("job.dxf")};
    }

    /// Whether `words` come to the same with several processes as with one; what one of them came to.
    Outcome ExpectOneOutcome(const Words& words) const {
        fs::remove_all(folder / "first-home");
        fs::copy(folder / "home", folder / "first-home", fs::copy_options::recursive);
        fs::copy_file(folder / "job.dxf", folder / "first.dxf", fs::copy_options::overwrite_existing);
        const Ran one = RunWith("1", words);
        for (const std::string jobs : {"2", "4"}) {
            SCOPED_TRACE(jobs);
            const Ran several = RunWith(jobs, words);
            EXPECT_EQ(several.outcome.status, one.outcome.status);
            EXPECT_EQ(several.outcome.errors, one.outcome.errors);
            EXPECT_EQ(several.outcome.output, one.outcome.output);
            EXPECT_TRUE(several.files == one.files) << NamesThatDiffer(several.files, one.files);
            EXPECT_TRUE(several.home == one.home) << NamesThatDiffer(several.home, one.home);
            EXPECT_EQ(several.drawing, one.drawing);
            ExpectNothingLeft();
        }
        return one.outcome;
    }

    /// Not even a folder is left of the places that the parts were made in.
    void ExpectNothingLeft() const {
        for (const auto& entry : fs::recursive_directory_iterator(folder / "cut"))
            if (entry.is_directory()) {
                EXPECT_EQ(entry.path().filename(), "2-sided");
            }
    }

    static std::string NamesThatDiffer(const Files& a, const Files& b) {
        std::string names;
        for (const auto& [name, content] : a)
            if (const auto other = b.find(name); other == b.end() || other->second != content)
                names += name + "\n";
        for (const auto& [name, content] : b)
            if (!a.contains(name)) names += "missing: " + name + "\n";
        return names;
    }

    void WriteBoards(const Boards& boards) const { WriteBoardsTo(folder / "job.dxf", boards); }

    static std::vector<std::string> NamesOf(int count, int different) {
        std::vector<std::string> names;
        for (int board = 0; board < count; ++board)
            names.push_back("Board " + std::to_string(board % different));
        return names;
    }
};

class JobsOfTargets : public Jobs, public ::testing::WithParamInterface<std::string> {};

TEST_P(JobsOfTargets, WriteTheSampleAsOneProcessDoes) {
    WriteSample("job.dxf");
    // The shelf has no material and is skipped.
    EXPECT_EQ(ExpectOneOutcome({"--target", GetParam()}).status, 1);
}

INSTANTIATE_TEST_SUITE_P(All, JobsOfTargets,
                         ::testing::Values("C2C", "ATP", "ROV", "CNI", "ASP", "WOP4", "WOP5", "THERM", "BW",
                                           "Enroute", "ABC", "RCIM"),
                         [](const auto& target) { return target.param; });

TEST_F(Jobs, WriteTheSampleByWayOfTheGrid) {
    WriteSample("job.dxf");
    ExpectOneOutcome({"--target", "BW", "--from-grid"});
}

TEST_F(Jobs, WriteTheSampleInInches) {
    fs::remove_all(folder / "home");
    EXPECT_EQ(Run({"init", "--units", "imperial"}).status, 0);
    const std::string library = Read("home/materials.txt"), key = "material=.75 birch ply";
    const std::size_t at = library.find(key), next = library.find("material=", at + 1);
    ASSERT_NE(at, std::string::npos);
    Write("home/materials.txt",
          library + "material=15 birch ply" + library.substr(at + key.size(), next - at - key.size()));
    WriteSample("job.dxf");
    ExpectOneOutcome({"--target", "C2C", "--quiet"});
    EXPECT_GE(FilesBelow("cut").size(), 5U);
}

// A body in inches that was drawn in millimetres comes back from the text of a part file with other last
// digits.
TEST_F(Jobs, WriteASampleOfMillimetresInInches) {
    WriteSample("job.step");
    fs::rename(folder / "job.step", folder / "job.dxf");
    fs::remove_all(folder / "home");
    EXPECT_EQ(Run({"init", "--units", "imperial"}).status, 0);
    for (const std::string thickness : {".31496", ".47244", ".59055", ".70866", ".74803"})
        EXPECT_EQ(Run({"materials", "add", thickness + " Birch Ply", "--like", ".75 birch ply"}).status, 0);
    ExpectOneOutcome({"--target", "C2C", "--material", "Birch Ply"});
    EXPECT_GE(FilesBelow("cut").size(), 15U);
}

TEST_F(Jobs, WithoutTheProofWriteTheSameFiles) {
    WriteSample("job.dxf");
    ExpectOneOutcome({"--target", "ROV", "--no-proof"});
}

TEST_F(Jobs, WriteBothSidesOfFortyBoards) {
    WriteBoards({NamesOf(40, 40), "White Melamine", true});
    EXPECT_EQ(ExpectOneOutcome({"--target", "BW"}).status, 0);
    EXPECT_TRUE(Exists("cut/2-sided/WorkList.txt"));
    EXPECT_TRUE(Exists("cut/2-sided/BPart_39_Board 39_7.dxf"));
}

TEST_F(Jobs, TakeGroupsAndQuantitiesFromTheGrid) {
    WriteBoards({NamesOf(40, 12), "White Melamine", true});
    EXPECT_EQ(ExpectOneOutcome({"--target", "RCIM", "--from-grid"}).status, 0);
    EXPECT_TRUE(Exists("cut/Part_11_Board 11_7.dxf") || Exists("cut/Part_11_Board 9_7.dxf"));
}

TEST_F(Jobs, TellPartsOfAnUnknownMaterialOnce) {
    WriteBoards({NamesOf(9, 9), "Pearwood"});
    const Outcome outcome = ExpectOneOutcome({"--target", "THERM"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("\"Board 8\" ("), std::string::npos) << outcome.errors;
}

TEST_F(Jobs, TellPartsWhoseTextsMoveTheColumns) {
    WriteBoards({{"A,1", "B", "C,2", "D", "E,3", "F", "G", "H"}, "White Melamine", true});
    const Outcome outcome = ExpectOneOutcome({"--target", "Enroute"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("moves the columns of the work list, by the comma in: A,1"),
              std::string::npos)
        << outcome.errors;
}

TEST_F(Jobs, TellADamagedSettingOnce) {
    EXPECT_EQ(Run({"settings", "set", "CircleSize", "35"}).status, 0);
    std::string settings = Read("home/settings.txt");
    const std::size_t at = settings.find("CircleSize");
    ASSERT_NE(at, std::string::npos);
    settings.replace(settings.find("35", at), 2, "wide");
    Write("home/settings.txt", settings);
    WriteBoards({NamesOf(8, 8)});
    EXPECT_NE(ExpectOneOutcome({"--target", "C2C"}).errors.find("CircleSize is \"wide\""), std::string::npos);
}

/// Windows for which the first bit of one board is too wide, and whose other two are of one diameter: they
/// get the bit that is in hand, which the part before has had.
TEST_F(Jobs, LeaveTheBitInHandToTheNextPart) {
    std::string library = Read("home/materials.txt");
    for (const auto& [from, to] :
         {std::pair{"tool1dia=12", "tool1dia=90"}, std::pair{"tool3dia=5", "tool3dia=8"}}) {
        const std::size_t at = library.find(from, library.find("material=18 birch ply"));
        ASSERT_NE(at, std::string::npos);
        library.replace(at, std::string(from).size(), to);
    }
    Write("home/materials.txt", library);
    WriteWindowsTo(folder / "job.dxf", {"Birch Ply", "White Melamine", "Birch Ply", "Pearwood", "Birch Ply",
                                        "White Melamine", "White Melamine", "Birch Ply"});
    const std::string errors = ExpectOneOutcome({"--target", "C2C"}).errors;
    EXPECT_NE(errors.find(" got no bit"), std::string::npos) << errors;
    EXPECT_TRUE(Exists("cut/Part_4__.dxf")) << NamesThatDiffer(FilesBelow("cut"), {});
    EXPECT_NE(Read("cut/Part_4__.dxf").find("D12_"), std::string::npos);
}

TEST_F(Jobs, NumberIsRefusedUnlessItCountsProcesses) {
    WriteBoards({{"Side"}});
    for (const char* jobs : {"0", "-1", "two", "1.5", "", "5000"})
        EXPECT_EQ(Run({"cnc", "job.dxf", "--target", "C2C", "--out", "cut", "--jobs", jobs}).status, 2)
            << jobs;
    EXPECT_FALSE(Exists("cut"));
}

}  // namespace
}  // namespace brenvik::cli_test
