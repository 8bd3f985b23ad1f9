// Runs on material libraries as shops have them: edited by hand, cut off, in the code page of an old system.
#include <map>

#include "cnc/cnc_fixture.h"
#include "session/library/cnc_commands.h"

namespace brenvik {
namespace {

using Texts = std::vector<std::string>;

class RunMaterials : public CncTest {
  protected:
    static constexpr std::size_t linesOfARecord = 15;

    /// Boards of 16 and 18, in this order.
    void RunBoards(std::string_view material = "Oak") {
        for (const double thickness : {16.0, 18.0})
            GivePartData(Board(600, 400, thickness).Solid(), thickness == 16 ? "Thin" : "Thick", "LWT",
                         material);
        ChooseAllSolids();
        RunOnSelection(host, Target::C2C, GridBeforeRuns());
    }
    /// The library of these lines, and of line ends that a record needn't have.
    void WriteLibrary(const Texts& lines, const std::string& lineEnd = "\r\n", bool endsLast = true) {
        files.WriteFile(MaterialsPath(), Join(lines, lineEnd) + (endsLast ? lineEnd : ""));
    }
    /// The records for 16 and 18 that the shop of the tests has, line by line.
    Texts Lines(const char* materialName = "OAK") {
        WriteMaterials({"16", "18"}, {12, 6, 3});
        Texts lines = Split(ReplaceAll(files.ReadFile(MaterialsPath()), "\r", ""), '\n');
        lines.resize(2 * linesOfARecord);
        for (std::string& line : lines) line = ReplaceAll(line, "OAK", materialName);
        return lines;
    }
    std::string OutlineOf(const std::string& name) {
        return OnLayers(Read("c:\\BV-DXF\\" + name), "OT_").at(0).layer;
    }
    Texts Written() { return FilesIn(OutputFolder, "*.dxf"); }
};

TEST_F(RunMaterials, EndWithAnyLineEndOrNone) {
    const Texts lines = Lines();
    for (const char* lineEnd : {"\r\n", "\n", "\r"})
        for (const bool endsLast : {true, false}) {
            document.ModelSpace().ForEach([](AcadEntity& entity) { entity.Delete(); });
            WriteLibrary(lines, lineEnd, endsLast);
            RunBoards();
            ASSERT_EQ(Written(), (Texts{"Part_0_Thin_7.dxf", "Part_1_Thick_7.dxf"}));
            EXPECT_EQ(OutlineOf("Part_1_Thick_7.dxf"), "OT_Z18p3_T1_D12_S18000_F300_R_C0");
        }
}

TEST_F(RunMaterials, ARecordThatBreaksOffSkipsItsPartsAlone) {
    Texts lines = Lines();
    lines.erase(lines.begin() + 5, lines.begin() + linesOfARecord);
    WriteLibrary(lines);
    RunBoards();
    EXPECT_EQ(Written(), Texts{"Part_1_Thick_7.dxf"});
    ASSERT_EQ(Messages().size(), 4U);
    EXPECT_NE(Messages()[1].find("materials.txt:1: the material \"16 OAK\" has 5 lines, expected 15"),
              std::string::npos)
        << Messages()[1];
    EXPECT_EQ(Messages()[2].find("The part \"Thin\" ("), 0U) << Messages()[2];
    EXPECT_EQ(Messages()[3], "-- Export Complete! --");
}

TEST_F(RunMaterials, AFileThatBreaksOffSkipsTheLastOnesParts) {
    Texts lines = Lines();
    lines.resize(linesOfARecord + 3);
    WriteLibrary(lines, "\r\n", false);
    RunBoards();
    EXPECT_EQ(Written(), Texts{"Part_0_Thin_7.dxf"});
    EXPECT_EQ(Messages().back(), "-- Export Complete! --");
}

TEST_F(RunMaterials, AreReadByTheirPlacesAndNotByTheirKeys) {
    Texts lines = Lines();
    lines[linesOfARecord + 3] = "hello=9";  // Where "tool1=" belongs, and as long.
    WriteLibrary(lines);
    RunBoards();
    EXPECT_EQ(OutlineOf("Part_1_Thick_7.dxf"), "OT_Z18p3_T9_D12_S18000_F300_R_C0");
}

TEST_F(RunMaterials, WithoutATool1AreNotFound) {
    Texts lines = Lines();
    lines[3] = "tool1=";
    WriteLibrary(lines);
    RunBoards();
    EXPECT_EQ(Written(), Texts{"Part_1_Thick_7.dxf"});
    ASSERT_EQ(Messages().size(), 3U);
    EXPECT_EQ(Messages()[1],
              "You do not have the material 16 OAK in the material database, so this part export will be "
              "skipped.");
}

TEST_F(RunMaterials, AreFoundInUtf8AndInTheOldCodePage) {
    for (const char* name : {"EICHE GED\xC3\x84MPFT", "EICHE GED\xC4MPFT"}) {
        document.ModelSpace().ForEach([](AcadEntity& entity) { entity.Delete(); });
        WriteLibrary(Lines(name));
        RunBoards("Eiche gedämpft");
        EXPECT_EQ(Written().size(), 2U) << name;
    }
    EXPECT_NE(files.ReadFile("c:\\BV-DXF\\WORKLIST.TXT").find(",18 EICHE GEDÄMPFT,0,1,"), std::string::npos);
}

/// The home's files, with a count of how often each is read.
class CountedReads : public FileRoots {
  public:
    using FileRoots::FileRoots;
    std::string ReadFile(std::string_view path) override {
        ++reads[std::string(path)];
        return FileRoots::ReadFile(path);
    }
    std::map<std::string, int> reads;
};

TEST_F(RunMaterials, AreReadOnceForEachPass) {
    CountedReads counted(home.Path());
    ThePlatform().files = &counted;
    RunBoards();
    ThePlatform().files = &files;
    EXPECT_EQ(Written().size(), 2U);
    EXPECT_EQ(counted.reads[MaterialsPath()], 2);
}

TEST_F(RunMaterials, ThatAreMissingEndTheRunOnce) {
    files.RemoveFile(MaterialsPath());
    RunBoards();
    EXPECT_EQ(Written(), Texts{});
    EXPECT_TRUE(FilesIn(OutputFolder).empty());
    ASSERT_EQ(Messages().size(), 3U);
    EXPECT_NE(Messages()[1].find("materials.txt"), std::string::npos) << Messages()[1];
    EXPECT_TRUE(Messages()[2].ends_with("1 more part has not been worked on.")) << Messages()[2];
}

TEST_F(RunMaterials, ThatAreNoTextEndTheRunOnce) {
    files.WriteFile(MaterialsPath(), std::string("PK\x03\x04\0\0\0\0", 8));
    RunBoards();
    ASSERT_EQ(Messages().size(), 3U);
    EXPECT_NE(Messages()[1].find("materials.txt"), std::string::npos) << Messages()[1];
    EXPECT_TRUE(FilesIn(OutputFolder).empty());
    EXPECT_EQ(host.Documents().Count(), 1);
}

}  // namespace
}  // namespace brenvik
