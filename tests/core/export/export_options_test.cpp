// The CSV export asked for by options.
#include "export/export_options.h"

#include <gtest/gtest.h>

#include "core/export/export_fixture.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

class ExportByOptions : public ExportTest {
  protected:
    ExportByOptions() {
        files.contents["C:\\Brenvik\\BrenvikProfiles.txt"] = "[Sizes]\ncolumns=Part Name,Length\n[Saw]\n";
        database.parts = {Board("Door", 600.5, 400, 19)};
        choices.path = "C:\\out.csv";
    }
    std::string Exported() {
        EXPECT_TRUE(ExportToCsv(choices));
        EXPECT_FALSE(Form().Loaded());
        return files.contents["C:\\out.csv"];
    }
    CsvExportChoices choices;
};

TEST_F(ExportByOptions, WritesTheStandardColumns) {
    EXPECT_TRUE(Exported().ends_with("\n,1,Door,,400,600.5,19,Oak,,,,,,,,,,0,19 Oak,19 Oak\n"));
    EXPECT_EQ(Messages(), Texts{"Export Complete!!"});
}

TEST_F(ExportByOptions, WritesTheColumnsOfAProfile) {
    choices.profile = "sizes";
    EXPECT_EQ(Exported(), "Part Name,Length\nDoor,600.5\n");
}

TEST_F(ExportByOptions, WritesFractions) {
    choices.profile = "Sizes";
    choices.fractions = true;
    EXPECT_EQ(Exported(), "Part Name,Length\nDoor,0600 1/2\n");
}

TEST_F(ExportByOptions, AppliesAnAdjustmentFileThisOnce) {
    files.contents["D:\\once.txt"] = "[A]\nl=1\n";
    choices.profile = "Sizes";
    choices.adjustments = "D:\\once.txt";
    for (const char* before : {"", "C:\\mine.txt"}) {
        settings.Set("CSV_SAVE\\CVS_ADJ_PATH", before);
        files.contents.erase("C:\\out.csv");
        EXPECT_EQ(Exported(), "Part Name,Length\nDoor,601.5\n");
        EXPECT_EQ(Setting("CSV_SAVE\\CVS_ADJ_PATH"), before);
    }
}

TEST_F(ExportByOptions, LeavesTheChoicesOfTheDialogAlone) {
    for (const auto& [name, text] :
         std::map<std::string, std::string>{{"EXPORT_TYPE", "4"},
                                            {"SAVE_SWITCH", "1"},
                                            {"CSV_SAVE\\CVS_EXPORT_PATH", "C:\\mine.csv"},
                                            {"CSV_SAVE\\CVS_MAPPING_SWITCH", "1"},
                                            {"CSV_SAVE\\CSV_REDUCE", "1"}})
        settings.Set(name, text);
    EXPECT_TRUE(Exported().ends_with("600.5,19,Oak,,,,,,,,,,0,19 Oak,19 Oak\n"));
    EXPECT_EQ(Setting("EXPORT_TYPE"), "4");
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_EXPORT_PATH"), "C:\\mine.csv");
    EXPECT_EQ(Setting("CSV_SAVE\\CSV_REDUCE"), "1");
    EXPECT_FALSE(files.contents.contains("C:\\mine.csv"));
}

TEST_F(ExportByOptions, NamesTheProfilesWhenItIsGivenAnother) {
    choices.profile = "Cut";
    const Failure failure = FailureOf([this] { ExportToCsv(choices); });
    EXPECT_EQ(failure.number(), failure_number::InvalidCall);
    EXPECT_EQ(
        failure.description(),
        "profile: there is no profile \"Cut\" in C:\\Brenvik\\BrenvikProfiles.txt; the profiles are Sizes, "
        "Saw");
    EXPECT_FALSE(Form().Loaded());
    files.contents.erase("C:\\Brenvik\\BrenvikProfiles.txt");
    EXPECT_TRUE(FailureOf([this] { ExportToCsv(choices); }).description().ends_with("; it has none"));
}

TEST_F(ExportByOptions, NamesProfilesInQuotesThatWouldBeTakenForOthers) {
    files.contents["C:\\Brenvik\\BrenvikProfiles.txt"] = "[Saw ]\n[a, b]\n[Edge Banding]\n[]\n";
    choices.profile = "Saw";
    EXPECT_TRUE(FailureOf([this] { ExportToCsv(choices); })
                    .description()
                    .ends_with("; the profiles are \"Saw \", \"a, b\", Edge Banding, \"\""));
}

TEST_F(ExportByOptions, NamesTwentyProfilesAtMost) {
    std::string content;
    for (int profile = 1; profile <= 1000; ++profile) content += "[P" + std::to_string(profile) + "]\n";
    files.contents["C:\\Brenvik\\BrenvikProfiles.txt"] = content;
    choices.profile = "Cut";
    const std::string told = FailureOf([this] { ExportToCsv(choices); }).description();
    EXPECT_TRUE(told.ends_with(", P19, P20, 980 more")) << told;
}

TEST_F(ExportByOptions, RefusesAdjustmentsThatWouldHaveNoEffect) {
    choices.adjustments = "D:\\once.txt";
    EXPECT_EQ(FailureOf([this] { ExportToCsv(choices); }).number(), failure_number::InvalidCall);
}

TEST_F(ExportByOptions, RefusesAdjustmentsThatCantBeRead) {
    choices.profile = "Sizes";
    choices.adjustments = "D:\\gone.txt";
    const Failure failure = FailureOf([this] { ExportToCsv(choices); });
    EXPECT_EQ(failure.number(), failure_number::FileNotFound);
    EXPECT_EQ(failure.detail(), "D:\\gone.txt");
    EXPECT_FALSE(files.contents.contains("C:\\out.csv"));
}

TEST_F(ExportByOptions, SaysWhenNothingWasWritten) {
    files.failOnWrite = DiskFull("C:\\out.csv");
    EXPECT_FALSE(ExportToCsv(choices));
    EXPECT_FALSE(Form().Loaded());
    EXPECT_EQ(Messages(), Texts{"61\r\nBrenvik\r\nDisk full: C:\\out.csv"});
    files.failOnWrite.reset();
    files.contents["C:\\out.csv"] = "old";
    dialogs.answers = {MessageAnswer::No};
    EXPECT_FALSE(ExportToCsv(choices));
    EXPECT_EQ(files.contents["C:\\out.csv"], "old");
}

}  // namespace
}  // namespace brenvik
