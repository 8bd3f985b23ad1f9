// The part-per-file export from the command line: which drawings it writes and where, and what it refuses.
#include <algorithm>

#include "program.h"
#include "support/ezdxf_audit.h"

namespace brenvik::cli_test {
namespace {

class Parts : public ProgramTest {
  protected:
    std::vector<std::string> Names(const std::string& name) const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder / name))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    static constexpr const char* warning =
        "[] This utility will set your ucsfollow and ucsortho system variables to 0. It will also set your "
        "plinetype to 2, osnapcoord to 2, and turn off backup copies. You will may need to manually set "
        "these "
        "variable back to your preferences. Please wait for the -- Export Complete! -- message before "
        "continuing.\n";
    static constexpr const char* complete = "[] -- Export Complete! --\n";
};

TEST_F(Parts, WritesADrawingForEachSelectedSolidAndPrintsTheirNames) {
    const Outcome outcome = Run({"parts", ShippedSample().string(), "--select", "156,100"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, "Part0_DOOR_B600-08_.dwg\nPart1_LEFT SIDE_B600-01_.dwg\n");
    EXPECT_EQ(outcome.errors, std::string(warning) + complete);
    EXPECT_EQ(Names("home/drive_c/BV-DWG"),
              (std::vector<std::string>{"Part0_DOOR_B600-08_.dwg", "Part1_LEFT SIDE_B600-01_.dwg"}));
}

TEST_F(Parts, TakesEverySolidByDefault) {
    const Outcome outcome = Run({"parts", ShippedSample().string(), "--out", "out"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 16);
    EXPECT_EQ(Names("out").size(), 16u);
    EXPECT_FALSE(Exists("home/drive_c/BV-DWG"));
    if (!test::HasEzdxf()) GTEST_SKIP() << "ezdxf is not installed";
    for (const std::string& name : Names("out"))
        EXPECT_EQ(test::AuditWithEzdxf(folder / "out" / name), std::nullopt) << name;
}

TEST_F(Parts, TheDrawingsAreReadBackWithTheirPartOnItsMaterialsLayer) {
    ASSERT_EQ(Run({"parts", ShippedSample().string(), "--select", "156", "--out", "out"}).status, 0);
    const Outcome listed = Run({"list", "out/Part0_DOOR_B600-08_.dwg", "--format", "csv"});
    EXPECT_EQ(listed.status, 0) << listed.errors;
    EXPECT_NE(listed.output.find(",1,Door,Fronts,Cherry,472,596,19,WLT,"), std::string::npos)
        << listed.output;
    EXPECT_NE(listed.output.find(",Material_ 19 CHERRY,"), std::string::npos) << listed.output;
}

TEST_F(Parts, AnOlderExportMakesRoomForANewOne) {
    ASSERT_EQ(Run({"parts", ShippedSample().string(), "--select", "156,100", "--out", "out"}).status, 0);
    ASSERT_EQ(Run({"parts", ShippedSample().string(), "--select", "140", "--out", "out"}).status, 0);
    EXPECT_EQ(Names("out"), std::vector<std::string>{"Part0_BOTTOM_B600-03_.dwg"});
}

TEST_F(Parts, AFolderWithOtherFilesIsRefusedUntouched) {
    std::filesystem::create_directory(folder / "mine");
    Write("mine/letters.txt", "dear");
    const Outcome outcome = Run({"parts", ShippedSample().string(), "--out", "mine"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.errors,
              "brenvik: --out: the export empties its folder, and mine holds letters.txt, which "
              "is from no export; choose another folder\n");
    EXPECT_EQ(Names("mine"), std::vector<std::string>{"letters.txt"});
}

TEST_F(Parts, WhatADeadProgramLeftInTheFolderIsClearedAway) {
    std::filesystem::create_directory(folder / "out");
    Write("out/.brenvik-work-1-1", "half");
    EXPECT_EQ(Run({"parts", ShippedSample().string(), "--select", "140", "--out", "out"}).status, 0);
    EXPECT_FALSE(Exists("out/.brenvik-work-1-1"));
}

TEST_F(Parts, TheFolderOfTheDrawingItselfIsRefused) {
    WriteSample("job.dxf");
    const Outcome outcome = Run({"parts", "job.dxf", "--out", "."});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.errors,
              "brenvik: --out: the export empties its folder, and . holds the drawing itself\n");
    EXPECT_TRUE(Exists("job.dxf"));
}

TEST_F(Parts, AFileInPlaceOfTheFolderIsRefused) {
    Write("out", "a file");
    const Outcome outcome = Run({"parts", ShippedSample().string(), "--out", "out"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.errors, "brenvik: --out: expected a folder, found the file out\n");
}

TEST_F(Parts, ADrawingThatIsNotThereEndsWithStatus3) {
    const Outcome outcome = Run({"parts", "none.dxf"});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.errors, "brenvik: none.dxf: expected a drawing, found no file of this name\n");
}

TEST_F(Parts, ADrawingWithoutSolidsIsRemarkedOn) {
    Write("a.journal", "select all\nhost \"erase all  \"\n");
    ASSERT_EQ(Run({"run", ShippedSample().string(), "--journal", "a.journal", "--save", "empty.dxf"}).status,
              0);
    const Outcome outcome = Run({"parts", "empty.dxf"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "");
    EXPECT_NE(outcome.errors.find("the drawing holds no solids"), std::string::npos) << outcome.errors;
}

TEST_F(Parts, PartsFromAnotherSystemGetTheLettersOfTheCommand) {
    WriteSample("job.step");
    const Outcome outcome = Run({"parts", "job.step", "--letters", "none", "--out", "out"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_NE(outcome.errors.find("ORIE data not detected on this part, so it is being set to LWT"),
              std::string::npos);
    EXPECT_EQ(Run({"parts", "job.step", "--out", "out2"}).errors, std::string(warning) + complete);
}

TEST_F(Parts, RefuseToEmptyTheDefaultFolderWhenItHoldsTheDrawing) {
    EXPECT_EQ(Run({"init"}).status, 0);
    const std::string drawing = "home/drive_c/BV-DWG/job.dxf";
    std::filesystem::create_directories(Path("home/drive_c/BV-DWG"));
    WriteSample(drawing);
    const Outcome outcome = Run({"parts", drawing});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.errors.find("the export empties its folder, and " + Path("home/drive_c/BV-DWG") +
                                  " holds the drawing itself"),
              std::string::npos)
        << outcome.errors;
    EXPECT_TRUE(Exists(drawing));
}

TEST_F(Parts, CopiesThatCannotAllBeWrittenAreTakenBack) {
    WriteSample("job.dxf");
    ASSERT_EQ(Run({"init"}).status, 0);
    // In blocks of 512 bytes: the copy of the first side is smaller, that of the second isn't.
    const Outcome outcome = RunBare("trap '' XFSZ; ulimit -f 90; BRENVIK_HOME=" + Path("home"),
                                    {"parts", "job.dxf", "--out", "out"});
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find("16 of 16 parts have no drawing\n"), std::string::npos) << outcome.errors;
    EXPECT_TRUE(FilesBelow("out").empty()) << FilesBelow("out").begin()->first;
}

}  // namespace
}  // namespace brenvik::cli_test
