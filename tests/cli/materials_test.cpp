// brenvik materials: the library as a table, one key looked up, and libraries that are damaged or gone.
#include <filesystem>
#include <future>

#include "program.h"

namespace brenvik::cli_test {
namespace {

class MaterialsCommand : public ProgramTest {};

const std::string Mdf =
    "material=18 Mdf\ngrain=0\ndirection=cc\ntool1=1\ntool1dia=12\ntool1ss=18000\ntool1fs=9000\ntool2=2\n"
    "tool2dia=8\ntool2ss=18000\ntool2fs=7000\ntool3=3\ntool3dia=5\ntool3ss=18000\ntool3fs=4000\n";

TEST_F(MaterialsCommand, ListPrintsATable) {
    Run({"init"});
    Write("home/materials.txt", Mdf);
    const Outcome outcome = Run({"materials", "list"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(
        outcome.output,
        "Material  Grain  Direction  Tool1  Tool1 Dia  Tool1 Speed  Tool1 Feed  Tool2  Tool2 Dia  Tool2 "
        "Speed  Tool2 Feed  Tool3  Tool3 Dia  Tool3 Speed  Tool3 Feed\n"
        "18 Mdf    0      cc         1      12         18000        9000        2      8          18000"
        "        7000        3      5          18000        4000\n");
}

TEST_F(MaterialsCommand, FindPrintsTheMaterialAsTheFileHasIt) {
    Run({"init"});
    Write("home/materials.txt", Mdf);
    const Outcome outcome = Run({"materials", "find", "18 MDF"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, Mdf);
}

TEST_F(MaterialsCommand, FindsWhatAnInstallationDelivers) {
    EXPECT_EQ(Run({"materials", "find", "19.05 RED OAK PLY"}).status, 0);
}

TEST_F(MaterialsCommand, AnUnknownKeyAndOneWithoutAFirstToolAreTold) {
    Run({"init"});
    std::string noTool = Mdf;
    noTool.replace(noTool.find("tool1=1"), 7, "tool1=");
    for (const std::string& content : {std::string("\n"), noTool}) {
        Write("home/materials.txt", content);
        const Outcome outcome = Run({"materials", "find", "18 mdf"});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.errors, "brenvik: you do not have the material 18 mdf in the material database\n");
    }
}

/// What `materials list` says of a library of this one record, ahead of which the file's name stands.
class RecordsThatNoPartFinds : public MaterialsCommand {
  protected:
    std::string Told(const std::string& library, int status = 1) const {
        Write("home/materials.txt", library);
        const Outcome outcome = Run({"materials", "list"});
        EXPECT_EQ(outcome.status, status) << outcome.errors;
        return outcome.errors;
    }
    static std::string With(const std::string& key, std::string library = Mdf) {
        return library.replace(library.find("18 Mdf"), 6, key);
    }
};

TEST_F(RecordsThatNoPartFinds, AreReportedByTheirThicknessInAMetricHome) {
    Run({"init"});
    const std::string place = "brenvik: " + Path("home/materials.txt") + ":1: the material ";
    EXPECT_EQ(
        Told(With("18.001 oak")),
        place + "\"18.001 oak\": expected the thickness as runs write it: \"18 oak\"; no part finds it\n");
    EXPECT_EQ(
        Told(With("20.123 oak")),
        place + "\"20.123 oak\": expected the thickness as runs write it: \"20.12 oak\"; no part finds it\n");
    for (const char* key : {"18.01 oak", "0.5 oak", ".5 oak"}) EXPECT_EQ(Told(With(key), 0), "") << key;
    Write("home/materials.txt", With("20.123 oak"));
    const Outcome found = Run({"materials", "find", "20.123 oak"});
    EXPECT_EQ(found.status, 1);
    EXPECT_EQ(found.errors,
              "brenvik: no part finds \"20.123 oak\": runs of this home ask for \"20.12 oak\"\n");
}

TEST_F(RecordsThatNoPartFinds, AreRightInInchesWithFiveDecimals) {
    Run({"init", "--units", "imperial"});
    EXPECT_NE(Told(With(".703125 oak")).find("the thickness as runs write it: \".70312 oak\""),
              std::string::npos);
    EXPECT_EQ(Told(With(".73438 oak"), 0), "");
}

TEST_F(RecordsThatNoPartFinds, AreReportedByTheirMissingFirstTool) {
    Run({"init"});
    std::string library = Mdf;
    library.replace(library.find("tool1=1"), 7, "tool1=");
    EXPECT_EQ(Told(library),
              "brenvik: " + Path("home/materials.txt") +
                  ":4: tool1 of the material \"18 Mdf\" is blank, expected the number of a tool: "
                  "without one the material counts as missing\n");
}

TEST_F(RecordsThatNoPartFinds, AreMissingAltogether) {
    Run({"init"});
    for (const char* empty : {"", "\r\n"})
        EXPECT_EQ(Told(empty),
                  "brenvik: " + Path("home/materials.txt") +
                      ":1: expected materials, of fifteen lines each, found none: every part of a run "
                      "is skipped\n");
}

TEST_F(MaterialsCommand, LinesThatAreNoUtf8AreReportedAndReadAsWestern) {
    Run({"init"});
    std::string library = Mdf + Mdf;
    library.replace(library.find("18 Mdf"), 6,
                    "16 B\xFC"
                    "che");
    Write("home/materials.txt", library);
    const std::string told =
        ":1: expected text in UTF-8; it was taken for the Western Windows code page, as "
        "\"material=16 Büche\"; save the file as UTF-8\n";
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"materials", "list"}, {"materials", "find", "16 büche"}}) {
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.errors.find(told), std::string::npos) << outcome.errors;
        EXPECT_NE(outcome.output.find("16 Büche"), std::string::npos);
    }
    const Outcome beside = Run({"materials", "find", "18 mdf"});
    EXPECT_EQ(beside.status, 0) << "what was found is as it should be";
    EXPECT_NE(beside.errors.find(told), std::string::npos) << beside.errors;
    const Outcome none = Run({"materials", "find", "16 oak"});
    EXPECT_EQ(none.status, 1);
    EXPECT_NE(none.errors.find(told), std::string::npos) << none.errors;
    EXPECT_EQ(Run({"materials", "add", "15 Büche", "--like", "16 büche"}).status, 0);
}

TEST_F(MaterialsCommand, SpeedsThatNoMachineHasAreReported) {
    Run({"init"});
    for (const auto& [key, speed] :
         {std::pair{"tool1ss=18000", "tool1ss=1e308"}, {"tool3fs=4000", "tool3fs=1000000"}}) {
        std::string library = Mdf;
        library.replace(library.find(key), std::string(key).size(), speed);
        Write("home/materials.txt", library);
        const Outcome outcome = Run({"materials", "list"});
        EXPECT_EQ(outcome.status, 1) << speed;
        EXPECT_NE(outcome.errors.find("expected a number above 0 and below 1000000"), std::string::npos)
            << outcome.errors;
    }
}

TEST_F(MaterialsCommand, ARunReportsTheLinesOfItsBoardsThatAreNoUtf8) {
    Run({"init"});
    WriteSample("job.step");
    std::string library = Mdf;
    library.replace(library.find("18 Mdf"), 6,
                    "18 B\xFC"
                    "che");
    Write("home/materials.txt", library);
    const Outcome outcome =
        Run({"cnc", "job.step", "--target", "C2C", "--out", "out", "--material", "Büche", "--select", "100"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("materials.txt:1: expected text in UTF-8; it was taken for the Western"),
              std::string::npos)
        << outcome.errors;
}

TEST_F(MaterialsCommand, AMissingLibraryCantBeRead) {
    Run({"init"});
    std::filesystem::remove(Path("home/materials.txt"));
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"materials", "list"}, {"materials", "find", "18 mdf"}}) {
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 3);
        EXPECT_EQ(outcome.output, "");
        EXPECT_NE(outcome.errors.find("materials.txt"), std::string::npos) << outcome.errors;
    }
}

TEST_F(MaterialsCommand, ADamagedLibraryIsListedAndItsPlacesTold) {
    Run({"init"});
    Write("home/materials.txt", Mdf + Mdf.substr(0, Mdf.find("tool3=")));
    const Outcome listed = Run({"materials", "list"});
    EXPECT_EQ(listed.status, 1);
    EXPECT_NE(listed.errors.find("materials.txt:16: the material \"18 Mdf\" has 11 lines, expected 15\n"),
              std::string::npos)
        << listed.errors;
    const Outcome found = Run({"materials", "find", "18 mdf"});
    EXPECT_EQ(found.status, 3);
    EXPECT_NE(found.errors.find("materials.txt:16: "), std::string::npos) << found.errors;
}

TEST_F(MaterialsCommand, AddCopiesARecordAndLeavesTheOthersAsTheyAre) {
    Run({"init"});
    // A note and a missing line end are the shop's own.
    Write("home/materials.txt", "our boards\n" + Mdf.substr(0, Mdf.size() - 1));
    const Outcome outcome = Run({"materials", "add", "16 Türblatt", "--like", "18 MDF"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "added 16 Türblatt, cut as 18 Mdf\n");
    EXPECT_EQ(outcome.errors, "");
    std::string added = Mdf;
    added.replace(added.find("18 Mdf"), 6, "16 Türblatt");
    EXPECT_EQ(Read("home/materials.txt"), "our boards\n" + Mdf + added);
    EXPECT_EQ(Read("home/materials.bak"), "our boards\n" + Mdf.substr(0, Mdf.size() - 1));
    EXPECT_EQ(Run({"materials", "find", "16 TÜRBLATT"}).output, added);
}

TEST_F(MaterialsCommand, AddRefusesAKeyThatIsThereOrCannotBeAndAnUnknownLike) {
    Run({"init"});
    const std::string library = Read("home/materials.txt");
    const std::string file = Path("home") + "/materials.txt";
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"18 Birch PLY", "--like", "19 cherry"}, "KEY: expected one that is new; "},
        {{"Oak", "--like", "19 cherry"},
         "KEY: expected a thickness, a blank and a name, such as \"18 Birch Ply\"; found \"Oak\"\n"},
        {{"18.0 Oak", "--like", "19 cherry"},
         "KEY: expected the thickness as runs write it: \"18 Oak\"; found \"18.0 Oak\"\n"},
        {{"18 O\nak", "--like", "19 cherry"}, "without control characters; found"},
        {{"18 O'ak", "--like", "19 cherry"},
         "without single quotes, since no list takes a part with one; found \"18 O'ak\"\n"},
        {{"18 Oak", "--like", "18 White Melamin"}, "; found \"18 White Melamin\"\n"},
        {{"18 Oak", "--like", "18 White Melamin"}, ", such as \"18 white melamine\", "},
    };
    for (const auto& [words, told] : cases) {
        std::vector<std::string> all{"materials", "add"};
        all.insert(all.end(), words.begin(), words.end());
        const Outcome outcome = Run(all);
        EXPECT_EQ(outcome.status, 2) << told;
        EXPECT_EQ(outcome.output, "");
        EXPECT_NE(outcome.errors.find(told), std::string::npos) << outcome.errors;
    }
    EXPECT_EQ(Run({"materials", "add", "18 Oak"}).status, 2);
    EXPECT_EQ(Read("home/materials.txt"), library);
    EXPECT_FALSE(Exists("home/materials.bak"));
}

TEST_F(MaterialsCommand, AddRefusesToCopyARecordThatBreaksOffAndALibraryThatIsGone) {
    Run({"init"});
    const std::string broken = Mdf.substr(0, Mdf.find("tool3="));
    Write("home/materials.txt", broken);
    const Outcome outcome = Run({"materials", "add", "16 Mdf", "--like", "18 mdf"});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_NE(outcome.errors.find("materials.txt:1: "), std::string::npos) << outcome.errors;
    EXPECT_EQ(Read("home/materials.txt"), broken);
    std::filesystem::remove(Path("home/materials.txt"));
    EXPECT_EQ(Run({"materials", "add", "16 Mdf", "--like", "18 mdf"}).status, 3);
    EXPECT_FALSE(Exists("home/materials.txt"));
}

TEST_F(MaterialsCommand, FindTellsTheNearestOfAnUnknownKey) {
    const Outcome outcome = Run({"materials", "find", "16 birch ply"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.errors.rfind("brenvik: you do not have the material 16 birch ply in the material database; "
                             "the nearest are \"15 birch ply\", \"18 birch ply\", ",
                             0),
        0u)
        << outcome.errors;
}

TEST_F(MaterialsCommand, TheEditorIsDrivenByAJournal) {
    Run({"init"});
    Write("home/materials.txt", Mdf);
    WriteSample("job.dxf");
    Write("edit.journal",
          "command BVMaterial\nexpect form frmMaterials\nexpect cell fpMaterials 1 1 \"18 Mdf\"\n"
          "goto fpMaterials 1 1\npress mnuCopyRow\ngoto fpMaterials 2 1\npress mnuPasteRow\n"
          "cell fpMaterials 2 1 \"19 Mdf\"\ncell fpMaterials 3 1 \"lost\"\npress btnSave\nexpect no form\n");
    const Outcome outcome = Run({"run", Path("job.dxf"), "--journal", Path("edit.journal")});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    std::string second = Mdf;
    second.replace(second.find("18 Mdf"), 6, "19 Mdf");
    EXPECT_EQ(Read("home/materials.txt"), Mdf + second);
    EXPECT_EQ(Read("home/materials.bak"), Mdf);
}

TEST_F(MaterialsCommand, AddOfTwoProgramsAtOnceLosesNoRecord) {
    Run({"init"});
    Write("home/materials.txt", Mdf);
    for (int round = 0; round < 6; ++round) {
        const std::string thickness = std::to_string(20 + round);
        auto other = std::async(std::launch::async, [&] {
            return RunNamed("b", {"materials", "add", thickness + " Elm", "--like", "18 Mdf"});
        });
        EXPECT_EQ(RunNamed("a", {"materials", "add", thickness + " Ash", "--like", "18 Mdf"}).status, 0);
        EXPECT_EQ(other.get().status, 0);
        EXPECT_EQ(Run({"materials", "find", thickness + " Ash"}).status, 0) << thickness;
        EXPECT_EQ(Run({"materials", "find", thickness + " Elm"}).status, 0) << thickness;
    }
}

TEST_F(MaterialsCommand, AMetricKeyFinerThanRunsWriteItIsRefused) {
    const Outcome outcome = Run({"materials", "add", "20.123 oak", "--like", "19 cherry"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.errors.find("\"20.12 oak\"; found \"20.123 oak\""), std::string::npos)
        << outcome.errors;
}

TEST_F(MaterialsCommand, AreNotCopiedFromMillimetresToInches) {
    for (const auto& [key, like] : {std::pair(".75 oak", "18 white melamine"), {"300 oak", "18 birch ply"}}) {
        const Outcome outcome = Run({"materials", "add", key, "--like", like});
        EXPECT_EQ(outcome.status, 2) << key;
        EXPECT_NE(outcome.errors.find("expected a board of about the same thickness"), std::string::npos)
            << outcome.errors;
    }
}

}  // namespace
}  // namespace brenvik::cli_test
