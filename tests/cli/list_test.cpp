// The cut list of the sample job, in every format, from every format.
#include <algorithm>

#include "boards.h"
#include "checkout_paths.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

class List : public ProgramTest {
  protected:
    static std::size_t Lines(const std::string& text) {
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    }
};

TEST_F(List, ShowsTheSampleJobAsATable) {
    const Outcome outcome = Run({"list", ShippedSample().string()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.output,
              ReadFile(std::filesystem::path(BRENVIK_SOURCE_DIR) / "tests/cli/base-cabinet.txt"));
}

TEST_F(List, ASolidOfTwoLumpsIsOnePartAndToldWithNameAndCount) {
    WriteBoardsTo(folder / "job.dxf", {.names = {"Left", "Right"}, .areSawn = true});
    const Outcome list = Run({"list", "job.dxf", "--format", "csv"});
    EXPECT_EQ(list.status, 0) << list.errors;
    EXPECT_EQ(Lines(list.output), 3u) << list.output;
    const std::string told =
        "\" holds 2 bodies that don't touch, and is one part with the sizes of all together\n";
    for (const std::string name : {"Left", "Right"})
        EXPECT_NE(list.errors.find(" \"" + name + told), std::string::npos) << list.errors;
    EXPECT_EQ(Lines(list.errors), 2u) << list.errors;
    EXPECT_NE(Run({"export", "job.dxf", "job.csv"}).errors.find(told), std::string::npos);
    WriteBoardsTo(folder / "whole.dxf", {.names = {"Left", "Right"}});
    EXPECT_EQ(Run({"list", "whole.dxf"}).errors, "");
}

TEST_F(List, PartsInOnePlaceAreRemarkedOnByName) {
    const std::vector<std::string> names{"Left", "Right", "Shelf"};
    WriteBoardsTo(folder / "job.dxf", {.names = names, .areStacked = true, .lengths = {600, 600, 500}});
    const Outcome list = Run({"list", "job.dxf", "--format", "csv"});
    EXPECT_EQ(list.status, 0) << list.errors;
    EXPECT_EQ(Lines(list.output), 4u) << list.output;
    const std::string told = "a part stands in another one of the same size and counts like any other: ";
    EXPECT_NE(list.errors.find(told), std::string::npos) << list.errors;
    EXPECT_EQ(Lines(list.errors), 1u) << list.errors;
    EXPECT_LT(list.errors.find(" \"Right\" in "), list.errors.find(" \"Left\"\n")) << list.errors;
    for (const std::vector<std::string>& words : {std::vector<std::string>{"export", "job.dxf", "job.csv"},
                                                  {"cnc", "job.dxf", "--target", "C2C", "--out", "c2c"},
                                                  {"parts", "job.dxf", "--out", "parts"}})
        EXPECT_NE(Run(words).errors.find(told), std::string::npos) << words.front();
    EXPECT_EQ(Run({"list", "job.dxf", "--quiet"}).errors, "");
    WriteBoardsTo(folder / "many.dxf", {.names = std::vector<std::string>(8, "Side"), .areStacked = true});
    const std::string many = Run({"list", "many.dxf"}).errors;
    EXPECT_NE(many.find("7 parts stand in others of the same size and count like any other: "),
              std::string::npos)
        << many;
    EXPECT_NE(many.find(" and 2 more\n"), std::string::npos) << many;
}

TEST_F(List, CsvHasARowForEachPart) {
    const Outcome outcome = Run({"list", ShippedSample().string(), "--format", "csv"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(Lines(outcome.output), 17u);
    EXPECT_NE(outcome.output.find(
                  ",1,Door,Fronts,Cherry,472,596,19,WLT,596,19,472,grain runs upright,,,B600-08,42.50,2mm "
                  "Cherry,2mm Cherry,2mm Cherry,2mm Cherry,Front,FRONTS,596,19,472\r\n"),
              std::string::npos)
        << outcome.output;
}

TEST_F(List, JsonHasAnObjectForEachPart) {
    const Outcome outcome = Run({"list", ShippedSample().string(), "--format", "json"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output.rfind("[\n {\"bv_id\": \"", 0), 0u);
    EXPECT_NE(outcome.output.find(
                  "\"bv_partname\": \"Tray Divider\", \"bv_subassembly\": \"Interior\", \"bv_material\": "
                  "\"Birch Ply\", \"bv_length\": 450, \"bv_width\": 270, \"bv_thickness\": 12,"),
              std::string::npos)
        << outcome.output;
}

TEST_F(List, ASecondListIsTheSame) {
    const std::string first = Run({"list", ShippedSample().string()}).output;
    EXPECT_EQ(Run({"list", ShippedSample().string()}).output, first);
}

TEST_F(List, TakesOnlyTheSelectedPartsInTheirOrder) {
    const std::string csv = Run({"list", ShippedSample().string(), "--format", "csv"}).output;
    const auto handleOf = [&csv](const std::string& part) {
        const std::size_t line = csv.rfind('\n', csv.find("," + part + ",")) + 1;
        return csv.substr(line, csv.find(',', line) - line);
    };
    const std::string door = handleOf("Door"), back = handleOf("Back");
    const Outcome outcome =
        Run({"list", ShippedSample().string(), "--format", "csv", "--select", door + "," + back});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(Lines(outcome.output), 3u);
    EXPECT_LT(outcome.output.find(",Door,"), outcome.output.find(",Back,"));
}

TEST_F(List, APartThatIsSelectedTwiceIsOnePart) {
    for (const char* handles : {"100,100", "100,0100,156"}) {
        const Outcome outcome =
            Run({"list", ShippedSample().string(), "--format", "csv", "--select", handles});
        EXPECT_EQ(outcome.status, 0) << handles << ": " << outcome.errors;
        EXPECT_EQ(outcome.errors, "") << handles;
    }
}

TEST_F(List, AnUnknownHandleIsAWrongWord) {
    const Outcome outcome = Run({"list", ShippedSample().string(), "--select", "FFFFF"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.errors, "brenvik: --select: expected the handle of an entity of " +
                                  ShippedSample().string() + ", found FFFFF\n");
}

TEST_F(List, SizesSurviveTheWayThroughOtherFormats) {
    const auto sizesOf = [this](const std::string& drawing) {
        std::vector<std::string> words{"list", drawing, "--format", "json"};
        // Drawings with part data have letters of their own.
        if (drawing.ends_with(".step") || drawing.ends_with(".sat"))
            words.insert(words.end(), {"--letters", "none"});
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        std::vector<std::string> sizes;
        for (std::size_t at = outcome.output.find("\"bv_x\""); at != std::string::npos;
             at = outcome.output.find("\"bv_x\"", at + 1))
            sizes.push_back(outcome.output.substr(at, outcome.output.find(", \"bv_notes", at) - at));
        return sizes;
    };
    const auto expected = sizesOf(ShippedSample().string());
    EXPECT_EQ(expected.size(), 16u);
    for (const char* name : {"a.step", "a.sat", "a.dwg"}) {
        const Outcome outcome = Run({"convert", ShippedSample().string(), name});
        // The other forms have no place for part data.
        ASSERT_EQ(outcome.status, std::string_view(name) == "a.dwg" ? 0 : 1) << outcome.errors;
        EXPECT_EQ(sizesOf(name), expected) << name;
    }
}

TEST_F(List, AStepFileGetsNamesAssembliesAndLetters) {
    WriteSample("a.step");
    const Outcome letters = Run({"list", "a.step", "--format", "csv"});
    EXPECT_EQ(letters.status, 0) << letters.errors;
    EXPECT_NE(letters.output.find(",Left Side,"), std::string::npos) << letters.output;
    EXPECT_NE(letters.output.find(",720,560,18,LWT,"), std::string::npos) << letters.output;
    const Outcome others = Run({"list", "a.step", "--format", "csv", "--letters", "wlt"});
    EXPECT_NE(others.output.find(",560,720,18,WLT,"), std::string::npos) << others.output;
    const Outcome none = Run({"list", "a.step", "--format", "csv", "--letters", "none"});
    EXPECT_NE(none.output.find(",0,0,0,,18,560,720,"), std::string::npos) << none.output;
}

TEST_F(List, ADrawingWithoutSolidsGivesTheHeadAlone) {
    Write("line.dxf",
          "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  8\n0\n 10\n0\n 20\n0\n 30\n0\n 11\n1\n 21\n1\n 31\n0\n"
          "  0\nENDSEC\n  0\nEOF\n");
    const Outcome outcome = Run({"list", "line.dxf"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.errors, "line.dxf: the drawing holds no solids\n");
    EXPECT_EQ(Lines(outcome.output), 2u);
    EXPECT_EQ(Run({"list", "line.dxf", "--quiet"}).errors, "");
}

TEST_F(List, SavesTheDrawingWhereAsked) {
    ASSERT_EQ(Run({"list", ShippedSample().string(), "--save", "copy.dxf"}).status, 0);
    EXPECT_EQ(Run({"list", "copy.dxf"}).output, Run({"list", ShippedSample().string()}).output);
}

class Sample : public ProgramTest {};

TEST_F(Sample, IsTheShippedDrawing) {
    const Outcome outcome = Run({"sample", "cabinet.dxf"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.output + outcome.errors, "");
    EXPECT_TRUE(Read("cabinet.dxf") == ReadFile(ShippedSample()))
        << "samples/base-cabinet.dxf is to be written anew by: brenvik sample samples/base-cabinet.dxf";
}

TEST_F(Sample, NeedsNoHome) {
    EXPECT_EQ(Run({"sample", "cabinet.dxf"}).status, 0);
    EXPECT_FALSE(Exists("home"));
}

}  // namespace
}  // namespace brenvik::cli_test
