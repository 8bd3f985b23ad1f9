// Records whose values, names and owners can't be, in files whose checksums are right.
#include <gtest/gtest.h>

#include "drafting_host/dwg/common_values.h"
#include "drafting_host/dwg/record_checks.h"
#include "drafting_host/dwg/sheets.h"
#include "drafting_host/dwg/table_data.h"
#include "dwg/changed_sample.h"

namespace brenvik {
namespace {

using namespace dwg;

std::string Told(const Reading& reading) {
    std::string all;
    for (const ReadNote& note : reading.data.notes)
        all += (note.dataLost ? "" : "remark: ") + note.text + "\n";
    return all;
}

std::string ToldOfName(std::string_view kind, std::string_view name, bool isDependent = false) {
    Reading reading;
    CheckName(reading, {kind, 0x28}, name, isDependent);
    return Told(reading);
}

std::string ToldOfBlock(const std::string& name, bool isAnonymous) {
    Reading reading;
    Block block;
    block.name = name;
    block.record = 0x28;
    block.isAnonymous = isAnonymous;
    CheckAnonymous(reading, block);
    return Told(reading);
}

GroupText System(const Point3& x, const Point3& y) {
    GroupText groups;
    groups.Point(110, {}).Point(111, x).Point(112, y);
    return groups;
}

constexpr Point3 X{1, 0, 0}, Y{0, 1, 0}, Nothing{0, 0, 0};

TEST(DwgRecordChecks, ViewsHaveOneOfTheModesThatThereAre) {
    for (const char* kind : {"VPORT", "VIEW", "VIEWPORT"}) {
        EXPECT_EQ(ImpossibleIn(kind, GroupText().Whole(281, 6).Whole(79, 0).Take()), "") << kind;
        EXPECT_EQ(ImpossibleIn(kind, GroupText().Whole(281, 64).Take()),
                  "its render mode is 64 where 0 to 6 was expected")
            << kind;
        EXPECT_EQ(ImpossibleIn(kind, GroupText().Whole(79, 256).Take()),
                  "its orthographic view is 256 where 0 to 6 was expected")
            << kind;
    }
    EXPECT_EQ(ImpossibleIn("VPORT", GroupText().Whole(78, 256).Take()),
              "its isometric plane is 256 where 0 to 2 was expected");
}

TEST(DwgRecordChecks, AxesOfViewsAreOfLength1AndAtRightAngles) {
    const std::string doubt = "the axes of its coordinate system aren't at right angles or not of length 1";
    for (const char* kind : {"VPORT", "VIEW", "VIEWPORT"}) {
        EXPECT_EQ(ImpossibleIn(kind, System(X, Y).Take()), "") << kind;
        EXPECT_EQ(ImpossibleIn(kind, System(Nothing, Y).Take()), doubt) << kind;
        EXPECT_EQ(ImpossibleIn(kind, System({1, 1, 0}, Y).Take()), doubt) << kind;
    }
    EXPECT_EQ(ImpossibleIn("LAYOUT", GroupText().Point(16, X).Point(17, X).Take()), doubt);
}

TEST(DwgRecordChecks, SheetsArePlottedInAWayThatThereIs) {
    const auto plot = [](int code, long value) {
        return GroupText().Text(100, "AcDbPlotSettings").Whole(code, value).Take();
    };
    EXPECT_EQ(ImpossibleIn("LAYOUT", plot(72, 2) + plot(73, 3) + plot(74, 5) + plot(75, 32) + plot(76, 5)),
              "");
    EXPECT_EQ(ImpossibleIn("LAYOUT", plot(72, 256)), "its unit of paper is 256 where 0 to 2 was expected");
    EXPECT_EQ(ImpossibleIn("LAYOUT", plot(73, 17)),
              "its rotation of the plot is 17 where 0 to 3 was expected");
    EXPECT_EQ(ImpossibleIn("LAYOUT", plot(74, 21)), "its kind of plot is 21 where 0 to 5 was expected");
    EXPECT_EQ(ImpossibleIn("LAYOUT", plot(75, 144)), "its standard scale is 144 where 0 to 32 was expected");
    EXPECT_EQ(ImpossibleIn("LAYOUT", plot(76, 256)),
              "its shading of the plot is 256 where 0 to 5 was expected");
    EXPECT_EQ(ImpossibleIn("LAYOUT", GroupText().Text(100, "AcDbLayout").Whole(76, 6).Take()), "");
    EXPECT_EQ(ImpossibleIn("LAYOUT", GroupText().Text(100, "AcDbLayout").Whole(76, 7).Take()),
              "its orthographic view is 7 where 0 to 6 was expected");
}

TEST(DwgRecordChecks, LinesOfTextsAreSpacedInAWayThatThereIs) {
    EXPECT_EQ(ImpossibleIn("MTEXT", GroupText().Whole(73, 2).Take()), "");
    EXPECT_EQ(ImpossibleIn("MTEXT", GroupText().Whole(73, 17).Take()),
              "its kind of line spacing is 17 where 1 to 2 was expected");
}

TEST(DwgRecordChecks, BlocksArePlacedInAUnitAndAScaleThatThereAre) {
    EXPECT_EQ(ImpossibleIn("BLOCK_RECORD", GroupText().Whole(70, 24).Whole(280, 1).Whole(281, 1).Take()), "");
    EXPECT_EQ(ImpossibleIn("BLOCK_RECORD", GroupText().Whole(70, 256).Take()),
              "its unit of insertion is 256 where 0 to 24 was expected");
    EXPECT_EQ(ImpossibleIn("BLOCK_RECORD", GroupText().Whole(281, 16).Take()),
              "its mark of even scaling is 16 where 0 to 1 was expected");
}

TEST(DwgRecordChecks, NamesHaveTheCharactersThatNamesCanHave) {
    for (const char* kind : {"LAYER", "LTYPE", "STYLE", "VIEW", "VPORT", "LAYOUT", "BLOCK", "GROUP"}) {
        EXPECT_EQ(ToldOfName(kind, "Door, left (2) \xC3\xA4$0$\\U+00E4"), "") << kind;
        EXPECT_EQ(
            ToldOfName(kind, "Do\x17r"),
            std::string(kind) +
                " (handle 28) is named \"Do?r\" with a control character, which a name can't have: it may "
                "be damaged\n");
        EXPECT_EQ(
            ToldOfName(kind, "Do*r"),
            std::string(kind) +
                " (handle 28) is named \"Do*r\" with the character *, which a name can't have: it may be "
                "damaged\n");
        EXPECT_EQ(ToldOfName(kind, "House|Door", true), "") << kind;
        EXPECT_NE(ToldOfName(kind, "House|Door"), "") << kind;
    }
    for (const char* kind : {"BLOCK", "BLOCK_RECORD", "GROUP"})
        EXPECT_EQ(ToldOfName(kind, "*D18"), "") << kind;
    for (const char* kind : {"LAYER", "VIEW", "VPORT"}) EXPECT_NE(ToldOfName(kind, "*D18"), "") << kind;
    EXPECT_EQ(ToldOfName("VPORT", "*ACTIVE"), "");
    EXPECT_NE(ToldOfName("BLOCK", "*D\x17"), "");
}

TEST(DwgRecordChecks, BlocksAreMarkedAsWithoutANameWhenTheyHaveNone) {
    EXPECT_EQ(ToldOfBlock("Door", false), "");
    EXPECT_EQ(ToldOfBlock("*D", true), "");
    EXPECT_EQ(ToldOfBlock("*Model_Space", false), "");
    EXPECT_EQ(
        ToldOfBlock("Door", true),
        "block \"Door\" (handle 28) is marked as one without a name of its own, which it has: it may be "
        "damaged\n");
    EXPECT_EQ(
        ToldOfBlock("*D", false),
        "block \"*D\" (handle 28) isn't marked as one without a name of its own, which it is: it may be "
        "damaged\n");
}

/// Two sheets with the blocks that are drawn on them.
struct Sheets {
    Names names;
    Header header;
    Layout &model, &paper;

    Sheets() : model(names.layouts[0x22]), paper(names.layouts[0x59]) {
        header.handles["LAYOUTS"] = 0x1A;
        names.dictionaries[0x1A] = {};
        Make(model, "Model", 0x22, 0x1F, 0);
        Make(paper, "Plan", 0x59, 0x58, 1);
    }
    void Make(Layout& sheet, const std::string& name, HandleValue handle, HandleValue block, long tab) {
        sheet = {name, block, handle, 0x1A, GroupText().Text(100, "AcDbLayout").Whole(71, tab).Take(), {}};
        Block& drawn = names.blocks.emplace_back();
        drawn.name = tab == 0 ? "*Model_Space" : "*Paper_Space";
        drawn.record = block;
        drawn.layout = handle;
    }
    std::string Told() {
        Reading reading;
        JoinSheets(names, header, Release::R2000, reading);
        return brenvik::Told(reading);
    }
};

TEST(DwgRecordChecks, SheetsBelongToTheDictionaryOfSheets) {
    Sheets sheets;
    EXPECT_EQ(sheets.Told(), "");
    sheets.paper.dictionary = 0x12;
    EXPECT_EQ(
        sheets.Told(),
        "sheet \"Plan\" (handle 59) says that it belongs to another dictionary than that of all sheets: it "
        "may be damaged\n");
}

TEST(DwgRecordChecks, NoTwoSheetsHaveOneTab) {
    Sheets sheets;
    sheets.paper.groups = GroupText().Text(100, "AcDbLayout").Whole(71, 0).Take();
    EXPECT_EQ(
        sheets.Told(),
        "sheet \"Plan\" (handle 59) has the place 0 among the tabs, as sheet \"Model\" (handle 22) has: one "
        "of the two may be damaged\n");
}

class DwgRecords : public testing::Test {
  protected:
    void SetUp() override {
        if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
    }
    static DrawingData Flipped(HandleValue handle, std::size_t bit) {
        return test::ChangedSample("AC1015", handle,
                                   [&](std::string& bits) { bits[bit] = bits[bit] == '1' ? '0' : '1'; });
    }
};

TEST_F(DwgRecords, AViewOfTheScreenThatCannotBeIsTold) {
    test::ExpectLoss(Flipped(0x94, 547),
                     "VPORT (handle 94): its render mode is 64 where 0 to 6 was expected");
}

TEST_F(DwgRecords, AViewportThatCannotBeIsTold) {
    test::ExpectLoss(Flipped(0x252, 1078),
                     "VIEWPORT (handle 252): its render mode is 128 where 0 to 6 was expected");
    test::ExpectLoss(Flipped(0x252, 1061),
                     "VIEWPORT (handle 252): its status is 5013536 where 0 to 4194303 was expected");
}

TEST_F(DwgRecords, ASheetThatCannotBeIsTold) {
    test::ExpectLoss(Flipped(0x59, 1873),
                     "sheet \"Layout1\" (handle 59): its unit of paper is 256 where 0 to 2 was expected");
}

TEST_F(DwgRecords, AHandleThatWasNeverThereIsToldOfExtendedData) {
    test::ExpectLoss(Flipped(0xA91, 162),
                     "block (handle A91): the extended data of \"AcDbBlockRepBTag\" refer to handle "
                     "200000A7E where one below 10F7, the next one, was expected: it may be damaged");
}

TEST_F(DwgRecords, ABlockThatIsMarkedWronglyIsTold) {
    test::ExpectLoss(
        Flipped(0x6F2, 792),
        "block \"MyBlock\" (handle 6F2) is marked as one without a name of its own, which it has: it "
        "may be damaged");
}

TEST_F(DwgRecords, AStyleOfTextsThatBecomesOneOfShapesIsTold) {
    test::ExpectLoss(
        Flipped(0x399, 390),
        "text (handle 3B9), text (handle 3BA), text (handle 756), text (handle 757), text (handle 924) and 7 "
        "others refer to a text style (handle 399), which the drawing doesn't have: \"Standard\" is taken");
}

TEST_F(DwgRecords, SoundDrawingsAreSilent) {
    std::size_t drawings = 0;
    for (const auto& file : std::filesystem::directory_iterator(test::SampleFolder() / "dwg")) {
        if (file.path().extension() != ".dwg") continue;
        ++drawings;
        for (const ReadNote& note : ReadDwg(test::FileBytes(file), "job.dwg").notes)
            for (const char* doubt : {"may be damaged", "was expected", "right angles", "doesn't have"})
                EXPECT_EQ(note.text.find(doubt), std::string::npos) << file.path() << ": " << note.text;
    }
    EXPECT_GT(drawings, 0U);
}

TEST_F(DwgRecords, ABlockWithoutANameOfItsOwnThatHasAControlCharacterIsTold) {
    test::ExpectLoss(
        Flipped(0x55B, 120),
        "BLOCK (handle 55B) is named \"*D?\" with a control character, which a name can't have: it "
        "may be damaged");
}

}  // namespace
}  // namespace brenvik
