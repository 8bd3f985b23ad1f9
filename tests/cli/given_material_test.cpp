// --material: parts without a material get one for the call, and from there files for a machine come.
#include <algorithm>

#include "program.h"

namespace brenvik::cli_test {
namespace {

class GivenMaterial : public ProgramTest {
  protected:
    std::vector<std::string> FilesOf(const std::string& where) const {
        std::vector<std::string> names;
        if (!std::filesystem::is_directory(folder / where)) return names;
        for (const auto& entry : std::filesystem::directory_iterator(folder / where))
            if (entry.is_regular_file()) names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    std::size_t LinesWith(const std::string& text, const std::string& part) const {
        std::size_t count = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
        return count;
    }
    std::string Materials(const std::string& drawing) const {
        return Run({"list", drawing, "--group", "Material", "--format", "csv"}).output;
    }
};

TEST_F(GivenMaterial, IsForPartsWithoutOneAndForThisCall) {
    const std::string sample = ShippedSample().string();
    const Outcome outcome =
        Run({"list", sample, "--material", "Oak", "--group", "Material", "--format", "csv"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.errors, "--material: 2 parts without a material given \"Oak\"\n");
    EXPECT_NE(outcome.output.find("2,Oak\r\n"), std::string::npos) << outcome.output;
    EXPECT_NE(outcome.output.find("2,Cherry\r\n"), std::string::npos) << outcome.output;
    EXPECT_EQ(Materials(sample).find("Oak"), std::string::npos) << "the drawing itself is as it was";
}

TEST_F(GivenMaterial, IsSavedWhereTheCommandSaves) {
    const std::string sample = ShippedSample().string();
    Write("none.journal", "# nothing\n");
    EXPECT_EQ(Run({"list", sample, "--material", "Oak", "--save", "list.dxf"}).status, 0);
    EXPECT_EQ(Run({"convert", sample, "convert.dxf", "--material", "Oak"}).status, 0);
    EXPECT_EQ(
        Run({"run", sample, "--journal", "none.journal", "--material", "Oak", "--save", "run.dxf"}).status,
        0);
    for (const char* drawing : {"list.dxf", "convert.dxf", "run.dxf"})
        EXPECT_NE(Materials(drawing).find("2,Oak\r\n"), std::string::npos) << drawing;
}

TEST_F(GivenMaterial, IsForTheSelectedPartsAlone) {
    const std::string sample = ShippedSample().string();
    EXPECT_EQ(Run({"list", sample, "--material", "Oak", "--select", "170", "--save", "one.dxf"}).status, 0);
    EXPECT_NE(Materials("one.dxf").find("1,Oak\r\n"), std::string::npos);
}

TEST_F(GivenMaterial, ReachesPartsOnALockedLayer) {
    Write("lock.journal", "host \"-layer lock CARCASS  \"\nhost \"-layer lock DRAWER  \"\n");
    ASSERT_EQ(
        Run({"run", ShippedSample().string(), "--journal", "lock.journal", "--save", "locked.dxf"}).status,
        0);
    EXPECT_EQ(Run({"convert", "locked.dxf", "given.dxf", "--material", "Oak"}).status, 0);
    EXPECT_NE(Materials("given.dxf").find("2,Oak\r\n"), std::string::npos);
    EXPECT_NE(Read("given.dxf").find("CARCASS"), std::string::npos);
}

TEST_F(GivenMaterial, GoesIntoExportsAndPartDrawings) {
    const std::string sample = ShippedSample().string();
    EXPECT_EQ(Run({"export", sample, "list.csv", "--material", "Oak", "--select", "170"}).status, 0);
    EXPECT_NE(Read("list.csv").find(",Oak,"), std::string::npos) << Read("list.csv");
    EXPECT_EQ(Run({"parts", sample, "--out", "parts", "--material", "Oak", "--select", "170"}).status, 0);
}

TEST_F(GivenMaterial, OfAStepFileLeadsToFilesForTheMachine) {
    WriteSample("kitchen.step");
    // Nothing comes out without a material, and the last line says what to type.
    Outcome outcome = Run({"cnc", "kitchen.step", "--target", "C2C", "--out", "machine"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(FilesOf("machine"), std::vector<std::string>{});
    EXPECT_TRUE(outcome.errors.ends_with("have no material; to give them one: --material \"birch ply\"\n"))
        << outcome.errors;
    // The library has this board in all thicknesses but one, and the last line says what to type.
    const std::vector<std::string> run{"cnc",   "kitchen.step", "--target",   "C2C",
                                       "--out", "machine",      "--material", "Birch Ply"};
    outcome = Run(run);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.errors.ends_with("to add the board as a copy of the nearest: brenvik --home " +
                                         Path("home") +
                                         " materials add \"19 BIRCH PLY\" --like \"18 birch ply\"\n"))
        << outcome.errors;
    EXPECT_EQ(Run({"materials", "add", "19 BIRCH PLY", "--like", "18 birch ply"}).status, 0);
    outcome = Run(run);
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(LinesWith(Read("machine/WORKLIST.TXT"), " BIRCH PLY,1,1,"), 16u)
        << Read("machine/WORKLIST.TXT");
}

TEST_F(GivenMaterial, TheAdviceIsLeftOutWhereQuietIsAskedFor) {
    const Outcome outcome =
        Run({"cnc", ShippedSample().string(), "--target", "C2C", "--select", "170", "--quiet"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors.find("--material"), std::string::npos) << outcome.errors;
}

}  // namespace
}  // namespace brenvik::cli_test
