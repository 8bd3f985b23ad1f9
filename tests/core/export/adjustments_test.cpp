// Size adjustments: the walk over the sections of a file, what applies to which record, and the editor's
// text.
#include "export/adjustments.h"
#include "export/adjustment_file.h"

#include <gtest/gtest.h>

#include "base/text_lines.h"
#include "core/export/export_fixture.h"
#include "export/adjustment_faults.h"
#include "export/export_troubles.h"

namespace brenvik {
namespace {

const Texts doors{"[Doors]", "Part Name=Door", "t=1", "[Backs]", "t=2", "[Sides]", "t=3"};

TEST(NextSection, OfABlankNameBeginsWithTheFirstLine) {
    EXPECT_EQ(GetCurrentAdj("", doors), (Texts{"[Doors]", "Part Name=Door", "t=1"}));
    EXPECT_EQ(GetCurrentAdj("", Texts{"# mine", "[A]"}), Texts{"# mine"});
    EXPECT_EQ(GetCurrentAdj("", Texts{}), Texts{});
}

TEST(NextSection, IsTheOneBehindTheNamedHeaderWithoutRegardToCase) {
    EXPECT_EQ(GetCurrentAdj("[DOORS]", doors), (Texts{"[Backs]", "t=2"}));
    EXPECT_EQ(GetCurrentAdj("[Backs]", doors), (Texts{"[Sides]", "t=3"}));
}

TEST(NextSection, IsMissingBehindTheLastHeaderAndForAnUnknownOne) {
    EXPECT_EQ(GetCurrentAdj("[Sides]", doors), Texts{});
    EXPECT_EQ(GetCurrentAdj("[Tops]", doors), Texts{});
}

TEST(NextSection, PassesOverTheSameHeaderAgain) {
    const Texts lines{"[A]", "t=1", "[a]", "t=2", "[B]", "t=4"};
    EXPECT_EQ(GetCurrentAdj("[A]", lines), (Texts{"[B]", "t=4"}));
}

TEST(NextSection, CanFollowALineThatIsNoHeader) {
    EXPECT_EQ(GetCurrentAdj("# mine", Texts{"# mine", "[A]", "t=1"}), (Texts{"[A]", "t=1"}));
}

TEST(ValueOfASection, IsTheOneOfTheFirstLineWithTheKey) {
    const Texts section{"[A]", "Part Name=Door=left", "t=1", "T=2", "w"};
    EXPECT_EQ(GetAdjValue(section, "part name"), "Door=left");
    EXPECT_EQ(GetAdjValue(section, "T"), "1");
    EXPECT_EQ(GetAdjValue(section, "w"), "");
    EXPECT_EQ(GetAdjValue(section, "L"), "");
}

/// The walk as the single steps would go, as far as it ends.
std::vector<AdjustmentSection> StepByStep(const Texts& lines) {
    std::vector<AdjustmentSection> sections;
    for (AdjustmentSection section = GetCurrentAdj("", lines); !section.empty() && sections.size() < 50;
         section = GetCurrentAdj(section.front(), lines))
        sections.push_back(section);
    return sections;
}

TEST(Walk, GoesAsTheSingleStepsDo) {
    for (const Texts& lines : {Texts{}, Texts{"rubbish"}, doors, Texts{"[A]", "[A]", "[B]"},
                               Texts{"# c", "", "[A]", "t=1"}, Texts{"Qty=", "[A]", "Qty=", "[B]"},
                               Texts{"[A]", "[B]", "[C]", "[D]", "x"}, Texts{"[", "[]", "]"}}) {
        const AdjustmentList list = WalkAdjustments(lines);
        EXPECT_EQ(list.sections, StepByStep(lines));
        EXPECT_FALSE(list.repeatedHeader);
    }
}

TEST(Walk, EndsAtANameUsedTwiceWithAnotherSectionBetween) {
    const AdjustmentList list = WalkAdjustments(Texts{"[A]", "t=1", "[B]", "[a]", "t=1", "[C]"});
    EXPECT_EQ(list.repeatedHeader, "[a]");
    EXPECT_EQ(StepByStep({"[A]", "[B]", "[a]"}).size(), 50U) << "the single steps never end";
}

TEST(Walk, GoesOnBehindABlankFirstLine) {
    const AdjustmentList list = WalkAdjustments(Texts{"", "t=1", "[A]", "t=2", "[B]"});
    EXPECT_FALSE(list.repeatedHeader);
    EXPECT_EQ(list.sections, (std::vector<AdjustmentSection>{{"", "t=1"}, {"[A]", "t=2"}, {"[B]"}}));
}

TEST(Walk, TakesAHugeFileInItsStride) {
    Texts lines;
    for (int section = 0; section < 100000; ++section) {
        lines.push_back("[" + std::to_string(section) + "]");
        lines.emplace_back("t=1");
    }
    EXPECT_EQ(WalkAdjustments(lines).sections.size(), 100000U);
    lines = Texts(200000, "[same]");
    EXPECT_EQ(WalkAdjustments(lines).sections.size(), 1U);
}

class AppliedAdjustments : public ExportTest {
  protected:
    SizeAdjustment Applied(const Texts& lines, const Part& board, const Texts& fields = AllFields()) {
        const ListRecords records({fields, {board}});
        return AdjustmentRules(WalkAdjustments(lines).sections).For(records);
    }
    double Thicker(const Texts& lines) { return Applied(lines, part).thickness; }
    Part part = Board("Door", 24.5, 12, 0.75);
};

TEST_F(AppliedAdjustments, WithoutCriteriaReachEveryPart) {
    const SizeAdjustment sum = Applied({"[All]", "Qty=", "Part Name=", "l=0.5", "w=-1.5", "t=2"}, part);
    EXPECT_EQ(sum.length, 0.5);
    EXPECT_EQ(sum.width, -1.5);
    EXPECT_EQ(sum.thickness, 2);
}

TEST_F(AppliedAdjustments, NeedAllTheirCriteria) {
    EXPECT_EQ(Thicker({"[A]", "Part Name=Door", "Material=Oak", "t=1"}), 1);
    EXPECT_EQ(Thicker({"[A]", "Part Name=Door", "Material=Ash", "t=1"}), 0);
    EXPECT_EQ(Thicker({"[A]", "Material=Ash", "t=1", "Part Name=Door"}), 0);
}

TEST_F(AppliedAdjustments, CompareTextsWithoutCaseAndBlanksAround) {
    EXPECT_EQ(Thicker({"[A]", "part name=  DOOR ", "t=1"}), 1);
    part["bv_partname"] = "  TÜR ";
    EXPECT_EQ(Thicker({"[A]", "Part Name=tür", "t=1"}), 1);
}

TEST_F(AppliedAdjustments, CompareNumbersByTheirText) {
    EXPECT_EQ(Thicker({"[A]", "Length=24.5", "t=1"}), 1);
    for (const char* other : {"24", "24.50", "24,5", "2.45E1"})
        EXPECT_EQ(Thicker({"[A]", std::string("Length=") + other, "t=1"}), 0) << other;
    part["bv_length"] = 24.0;
    EXPECT_EQ(Thicker({"[A]", "Length=24", "t=1"}), 1);
    EXPECT_EQ(Thicker({"[A]", "Length=24.0", "t=1"}), 0);
}

TEST_F(AppliedAdjustments, OfSeveralSectionsAddUp) {
    EXPECT_EQ(Thicker({"[A]", "t=0.25", "[B]", "Part Name=Door", "t=-0.125", "[C]", "Part Name=Top", "t=9"}),
              0.125);
}

TEST_F(AppliedAdjustments, AreDecimalNumbersOrNothing) {
    for (const char* nothing : {"1/8", "", "abc", "1 1/2", "0.5in", "."})
        EXPECT_EQ(Thicker({"[A]", std::string("t=") + nothing}), 0) << nothing;
    for (const char* number : {"-0.125", " -0.125 ", "-.125"})
        EXPECT_EQ(Thicker({"[A]", std::string("t=") + number}), -0.125) << number;
    const SizeAdjustment sum = Applied({"[A]", "l=1/8", "w=2", "t=x"}, part);
    EXPECT_EQ(sum.length, 0);
    EXPECT_EQ(sum.width, 2);
    EXPECT_EQ(sum.thickness, 0);
}

TEST_F(AppliedAdjustments, PassOverKeysWithoutAColumnAndComments) {
    EXPECT_EQ(Thicker({"[A]", "# Material=Ash", "Colour=Red", "Notes", "t=1"}), 1);
}

TEST_F(AppliedAdjustments, DontLookAtColumnsThatTheListLacks) {
    EXPECT_EQ(Applied({"[A]", "Material=Ash", "t=1"}, part, {"bv_partname"}).thickness, 1);
}

TEST_F(AppliedAdjustments, TakeNullForBlank) {
    part["bv_notes"] = FieldValue();
    EXPECT_EQ(Thicker({"[A]", "Notes=x", "t=1"}), 0);
    EXPECT_EQ(Thicker({"[A]", "Notes=  ", "t=1"}), 1);
}

TEST_F(AppliedAdjustments, OfAFileWithoutSectionsAreNone) {
    EXPECT_EQ(Thicker({}), 0);
    EXPECT_EQ(Thicker({"rubbish"}), 0);
    EXPECT_EQ(Thicker({"t=5"}), 0);
}

TEST_F(AppliedAdjustments, OfANameRepeatedAtOnceCountOnce) {
    EXPECT_EQ(Thicker({"[A]", "t=1", "[A]", "t=2", "[B]", "t=4"}), 5);
}

TEST(EditorsReader, TakesNameAndKeysInTheirOrder) {
    const auto rows = ParseAdjustments(
        Texts{"# Qty=9", "rubbish", "[Doors]", "QTY=2", "Part Name=Door=x", "", "w=9", "Sub Assembly=S"});
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0].size(), AdjustmentColumnCount);
    EXPECT_EQ(rows[0][0], "Doors");
    EXPECT_EQ(rows[0][1], "2");
    EXPECT_EQ(rows[0][2], "Door=x");
    EXPECT_EQ(rows[0][3], "S");
    EXPECT_EQ(rows[0][4], "");
}

TEST(EditorsReader, TakesNoNameWhileItAwaitsAKey) {
    const auto rows = ParseAdjustments(Texts{"[A]", "Qty=1", "[B]", "Qty=2"});
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0][0], "A");
    EXPECT_EQ(rows[0][1], "1");
}

TEST(EditorsReader, TakesWhateverStandsBehindTheKeyForItsSign) {
    EXPECT_EQ(ParseAdjustments(Texts{"[A]", "Qty:7"})[0][1], "7");
    EXPECT_EQ(ParseAdjustments(Texts{"[A]", "Qty"})[0][1], "");
    EXPECT_EQ(ParseAdjustments(Texts{"["})[0][0], "");
    EXPECT_EQ(ParseAdjustments(Texts{"[Türen]"})[0][0], "Türen");
}

TEST(EditorsWriter, WritesTwentyThreeLinesThatItsReaderAndTheExportsUnderstand) {
    AdjustmentRow row(AdjustmentColumnCount);
    row[0] = "Doors";
    row[2] = "Door";
    row[22] = "-0.125";
    const std::string text = AdjustmentText(row, "\n");
    EXPECT_EQ(text,
              "[Doors]\nQty=\nPart Name=Door\nSub Assembly=\nMaterial=\nLength=\nWidth=\nThickness=\nORIE=\n"
              "Notes=\nUser Data1=\nUser Data2=\nPN=\nPrice=\nEB1=\nEB2=\nEB3=\nEB4=\nFace=\nLayer=\nl=\nw=\n"
              "t=-0.125\n");
    EXPECT_EQ(ParseAdjustments(LinesOf(text + text)), (std::vector<AdjustmentRow>{row, row}));
    EXPECT_EQ(GetAdjValue(LinesOf(text), "T"), "-0.125");
}

TEST(Lines, EndAtAnyLineEnd) {
    EXPECT_EQ(LinesOf("a\r\nb\nc\rd"), (Texts{"a", "b", "c", "d"}));
    EXPECT_EQ(LinesOf("\n\na\n"), (Texts{"", "", "a"}));
    EXPECT_EQ(LinesOf(""), Texts{});
    EXPECT_EQ(LinesOf("\xEF\xBB\xBF[A]\n"), Texts{"[A]"});
    EXPECT_EQ(LinesOf(std::string("a\0b\n", 4)), Texts{std::string("a\0b", 3)});
}

class AdjustmentFile : public ExportTest {
  protected:
    static Texts FaultsOf(const Texts& lines) {
        Texts texts;
        for (const AdjustmentFault& fault : AdjustmentFaults(lines))
            texts.push_back(std::to_string(fault.line) + ": " + fault.text);
        return texts;
    }
};

TEST_F(AdjustmentFile, AsTheEditorWritesItHasNoFaults) {
    AdjustmentRow row(AdjustmentColumnCount);
    row.front() = "Doors";
    row[5] = "24.5";
    row[20] = "-0.125";
    EXPECT_EQ(FaultsOf(LinesOf("# ours\n\n" + AdjustmentText(row, "\n"))), Texts{});
}

TEST_F(AdjustmentFile, TellsAmountsThatAreNoNumbers) {
    for (const char* value : {"1/8", "1,5", "abc", "1 mm", "1e999"}) {
        const Texts faults = FaultsOf({"[A]", std::string("l=") + value, "W=", "t= 1.5 "});
        EXPECT_EQ(faults,
                  Texts{std::string("2: l: expected a decimal number such as 0.125 or -1.5, found \"") +
                        value + "\"; nothing is added"});
    }
}

TEST_F(AdjustmentFile, TellsCriteriaThatNobodyAsksForAndThoseThatNoPartMeets) {
    const Texts faults = FaultsOf({"[A]", "Part Nmae=Door", "Material =Oak", "Length=24.0", "Width=24,5",
                                   "Thickness=18", "l 5", "Qty=2", "t=1"});
    ASSERT_EQ(faults.size(), 5U);
    EXPECT_NE(faults[0].find("found \"Part Nmae\""), std::string::npos) << faults[0];
    EXPECT_NE(faults[1].find("found \"Material \""), std::string::npos) << faults[1];
    EXPECT_EQ(faults[2], "4: Length: expected \"24\", found \"24.0\"; no part meets it");
    EXPECT_EQ(
        faults[3],
        "5: Width: expected a number as the list has it, such as 24.5, found \"24,5\"; no part meets it");
    EXPECT_EQ(faults[4], "7: expected KEY=VALUE, found \"l 5\"; it is not read");
}

TEST_F(AdjustmentFile, TellsLettersAndQuotesThatNoPartOfAListHas) {
    const Texts faults =
        FaultsOf({"[A]", "ORIE=XYZ", "Material=O'k", "t=1", "[B]", "ORIE=tlw", "Material=Oak", "t=1"});
    ASSERT_EQ(faults.size(), 2U);
    EXPECT_EQ(faults[0],
              "2: ORIE: expected the letters L, W and T in some order, found \"XYZ\"; no part meets it");
    EXPECT_EQ(faults[1],
              "3: Material: expected no quote ('), which no list takes, found \"O'k\"; no part meets it");
}

TEST_F(AdjustmentFile, TellsASectionWithoutAnAmountByItsName) {
    const auto fault = [](const std::string& line, const std::string& name) {
        return line + ": the adjustment " + name +
               " has no amount, expected l=, w= or t= with a number; it changes nothing";
    };
    EXPECT_EQ(FaultsOf({"[A]", "Qty=2", "[B]", "l=1", "[C]", "l=", "W=", "t="}),
              (Texts{fault("1", "[A]"), fault("5", "[C]")}));
    EXPECT_EQ(FaultsOf({"[A]", "T=0"}), Texts{}) << "nothing is an amount too";
}

TEST_F(AdjustmentFile, TellsWhatStandsTwiceOrOutsideOfASection) {
    EXPECT_EQ(FaultsOf({"l=1", "[A]", "l=1", "L=2", "[a]", "l=3", "[B", "t=1"}),
              (Texts{"1: expected the name of an adjustment in square brackets ahead of it, found \"l=1\"",
                     "4: \"L\" stands in line 3 already, found it again with \"2\"",
                     "5: the adjustment [a] stands in line 2 already; the lines below it here are not read",
                     "7: expected \"]\" at the end of the name, found \"[B\""}));
}

TEST_F(AdjustmentFile, ThatLeavesNoSizeOfABoardIsTroubleOfTheExport) {
    const AdjustmentRules rules(std::vector<AdjustmentSection>{{"[A]", "l=-700"}});
    const ListRecords records({AllFields(), {Board("Door", 600, 400, 18)}});
    EXPECT_EQ(rules.For(records).length, -700);
    const Texts troubles = TakeExportTroubles();
    ASSERT_EQ(troubles.size(), 1U);
    EXPECT_NE(troubles[0].find("its Length 600 with the adjustment -700 is -100"), std::string::npos)
        << troubles[0];
}

TEST_F(AdjustmentFile, ThatAddsUpToNoNumberIsTroubleAndLeavesTheSizeAsItIs) {
    const AdjustmentRules rules(std::vector<AdjustmentSection>{{"[A]", "l=1e308"}, {"[B]", "l=1e308"}});
    const ListRecords records({AllFields(), {Board("Door", 600, 400, 18)}});
    EXPECT_EQ(rules.For(records).length, 0);
    const Texts troubles = TakeExportTroubles();
    ASSERT_EQ(troubles.size(), 1U);
    EXPECT_NE(troubles[0].find("its Length stays as it is: its adjustments add up to no number"),
              std::string::npos)
        << troubles[0];
}

class AdjustmentPath : public ExportTest {};

TEST_F(AdjustmentPath, IsTheOneOfTheSettings) {
    settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "D:\\mine.txt");
    EXPECT_EQ(ResolveAdjustmentPath(), "D:\\mine.txt");
}

TEST_F(AdjustmentPath, FallsBackOnTheDeliveredFile) {
    EXPECT_EQ(TakeExportAdjustmentPath(), "C:\\Brenvik\\No Adjustments.txt");
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_ADJ_PATH"), "C:\\Brenvik\\No Adjustments.txt");
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(AdjustmentPath, OfTheDeliveredFileIsStoredByThePlaceThatTheHomeRemembers) {
    settings.Set("ApplicationPath", "C:\\First\\");
    EXPECT_EQ(TakeExportAdjustmentPath(), "C:\\Brenvik\\No Adjustments.txt");
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_ADJ_PATH"), "C:\\First\\No Adjustments.txt");
    EXPECT_EQ(TakeExportAdjustmentPath(), "C:\\Brenvik\\No Adjustments.txt");
}

TEST_F(AdjustmentPath, ThatIsMissingEndsAnExport) {
    files.contents.clear();
    EXPECT_FALSE(TakeExportAdjustmentPath());
    ExpectMessage(
        "Brenvik cannot find your No Adjustments.txt file in your installed folder. It may have been "
        "deleted. You "
        "will need to load another BrenvikAdjustment file or reinstall Brenvik. This export is now aborting.",
        "", MessageIcon::None);
}

TEST_F(AdjustmentPath, OfAnUnreadableFileAppliesNothing) {
    files.failOnRead = PermissionDenied("C:\\adj.txt");
    EXPECT_TRUE(ReadExportAdjustments("C:\\adj.txt").usable);
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(AdjustmentPath, OfAFileWithoutASectionAppliesNothingAndSaysSo) {
    files.contents["C:\\adj.txt"] = "Material=Oak\nt=1\n";
    const AdjustmentSource source = ReadExportAdjustments("C:\\adj.txt");
    EXPECT_TRUE(source.usable);
    const ListRecords records({AllFields(), {Board("Door", 1, 2, 3)}});
    EXPECT_EQ(source.rules.For(records).thickness, 0);
    ASSERT_EQ(Messages().size(), 1u);
    EXPECT_TRUE(Messages()[0].starts_with("The BrenvikAdjustments file C:\\adj.txt holds no adjustment"));
    EXPECT_TRUE(TakeExportTroubles().empty()) << "the box tells it";
}

TEST_F(AdjustmentPath, OfAFileOfRemarksSaysNothing) {
    for (const char* content : {"", "\n\n", "# none yet\n"}) {
        files.contents["C:\\adj.txt"] = content;
        EXPECT_TRUE(ReadExportAdjustments("C:\\adj.txt").usable);
        EXPECT_TRUE(dialogs.messages.empty()) << content;
        EXPECT_TRUE(TakeExportTroubles().empty()) << content;
    }
}

TEST_F(AdjustmentPath, OfAFileThatIsGoneIsKeptForWhoAsks) {
    files.failOnRead = FileNotFound("C:\\adj.txt");
    ReadExportAdjustments("C:\\adj.txt");
    EXPECT_EQ(TakeExportTroubles(),
              std::vector<std::string>{"the BrenvikAdjustments file C:\\adj.txt can't be read (File not "
                                       "found), so no sizes are adjusted"});
    EXPECT_TRUE(TakeExportTroubles().empty()) << "it is told once";
}

TEST_F(AdjustmentPath, ThatIsLentIsNeverStored) {
    settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "C:\\own.txt");
    {
        const AdjustmentsLent lent("C:\\lent.txt");
        EXPECT_EQ(TakeExportAdjustmentPath(), "C:\\lent.txt");
        EXPECT_EQ(Setting("CSV_SAVE\\CVS_ADJ_PATH"), "C:\\own.txt");
    }
    EXPECT_EQ(TakeExportAdjustmentPath(), "C:\\own.txt");
}

TEST_F(AdjustmentPath, ThatAnotherProgramHasStoredMeanwhileStays) {
    settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "C:\\other.txt");
    KeepAdjustmentPath("C:\\mine.txt");
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_ADJ_PATH"), "C:\\other.txt");
}

TEST_F(AdjustmentPath, OfBinaryRubbishAppliesNothing) {
    std::string rubbish;
    for (int byte = 0; byte < 4096; ++byte) rubbish += static_cast<char>(byte * 7919 >> 3);
    files.contents["C:\\adj.txt"] = rubbish;
    const AdjustmentSource source = ReadExportAdjustments("C:\\adj.txt");
    const ListRecords records({AllFields(), {Board("Door", 1, 2, 3)}});
    EXPECT_EQ(source.rules.For(records).thickness, 0);
}

}  // namespace
}  // namespace brenvik
