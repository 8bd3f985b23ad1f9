// The text form of the settings: what is read, what is written, and what is refused.
#include "settings_store/settings_text.h"

#include <gtest/gtest.h>

#include "base/file_failure.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

const char* const key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvane, Inc.\\Brenvik04";
const std::string head = "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvane, Inc.\\Brenvik04]\n";

SettingsText Parsed(const std::string& content) { return SettingsText::Parse(content, "settings.txt"); }

struct ValueForm {
    const char* line;
    const char* name;
    std::string value;

    friend void PrintTo(const ValueForm& each, std::ostream* out) {
        *out << testing::PrintToString(each.line);
    }
};

class SettingsLine : public testing::TestWithParam<ValueForm> {};

TEST_P(SettingsLine, IsReadAndWrittenInOneForm) {
    const auto& [line, name, value] = GetParam();
    EXPECT_EQ(Parsed(head + line + "\n").Find(key, name), value);
    SettingsText written;
    written.Set(key, name, value);
    EXPECT_EQ(written.Content(), head + line + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Table, SettingsLine,
    testing::Values(ValueForm{"CircleSize=35", "CircleSize", "35"}, ValueForm{"MDBPath=", "MDBPath", ""},
                    ValueForm{"MDBPath=d:\\\\shop\\\\bv04.mdb", "MDBPath", "d:\\shop\\bv04.mdb"},
                    ValueForm{"A=one\\ntwo\\r\\nthree", "A", "one\ntwo\r\nthree"},
                    ValueForm{"A= a = b ", "A", " a = b "}, ValueForm{"A=#[x]", "A", "#[x]"},
                    ValueForm{"A=T\xC3\xBCr", "A", "T\xC3\xBCr"}, ValueForm{"A=1\t2", "A", "1\t2"},
                    ValueForm{"A=\\xff\\x00\\x1b", "A", std::string("\xFF\0\x1B", 3)},
                    ValueForm{"a\\=b=c", "a=b", "c"}, ValueForm{"\\#a=c", "#a", "c"},
                    ValueForm{"\\[a=c", "[a", "c"}, ValueForm{"\\ a b\\ =c", " a b ", "c"},
                    ValueForm{"=c", "", "c"}, ValueForm{"2SideUCS=1", "2SideUCS", "1"},
                    ValueForm{"QUANTITY_WIDTH=8.5", "QUANTITY_WIDTH", "8.5"}));

TEST(SettingsContent, NamesAndPathsCompareWithoutCase) {
    const SettingsText settings = Parsed(head + "CircleSize=35\nT\xC3\xBCr=1\n");
    EXPECT_EQ(settings.Find("hkey_local_machine\\software\\ORVANE, inc.\\brenvik04", "CIRCLESIZE"), "35");
    EXPECT_EQ(settings.Find(key, "t\xC3\x9CR"), "1");
    EXPECT_EQ(settings.Find(key, "Circle"), std::nullopt);
    EXPECT_EQ(settings.Find("HKEY_LOCAL_MACHINE\\SOFTWARE", "CircleSize"), std::nullopt);
}

TEST(SettingsContent, GivesItsLinesWithTheirPlaces) {
    std::string text;
    for (const SettingsFileLine& line : Parsed("# ours\n" + head + "A=1\n\nB 2\n[X]\na=3\n").Lines())
        text += std::to_string(line.number) + " " + std::to_string(static_cast<int>(line.kind)) + " " +
                line.section.substr(line.section.size() - 1) + " " + line.name + " " + line.value + "\n";
    EXPECT_EQ(text, "2 0 4  \n3 1 4 A 1\n5 2 4 B 2 \n6 0 X  \n7 1 X a 3\n");
}

TEST(SettingsContent, SavingKeepsTheNameAsItStood) {
    SettingsText settings = Parsed(head + "CircleSize=35\n");
    settings.Set(key, "circlesize", "40");
    EXPECT_EQ(settings.Content(), head + "CircleSize=40\n");
}

TEST(SettingsContent, RemarksUnknownLinesAndOrderStay) {
    const std::string content =
        "# made by hand\n\n" + head + "B=1\n# why\nsomething else\nA=2\n\n[other]\nC=3\n\n# end\n";
    SettingsText settings = Parsed(content);
    EXPECT_EQ(settings.Content(), content);
    settings.Set(key, "B", "5");
    settings.Set(key, "New", "6");
    settings.Set("third", "D", "7");
    EXPECT_EQ(settings.Content(),
              "# made by hand\n\n" + head +
                  "B=5\n# why\nsomething else\nA=2\nNew=6\n\n[other]\nC=3\n\n# end\n\n[third]\nD=7\n");
    EXPECT_TRUE(settings.Remove(key, "A"));
    EXPECT_FALSE(settings.Remove(key, "A"));
    EXPECT_EQ(settings.ValuesUnder(key),
              (std::vector<std::pair<std::string, std::string>>{{"B", "5"}, {"New", "6"}}));
}

TEST(SettingsContent, LineEndsAndTheByteOrderMarkStay) {
    const std::string content = "\xEF\xBB\xBF[k]\r\nA=1\r\n";
    SettingsText settings = Parsed(content);
    EXPECT_EQ(settings.Find("k", "A"), "1");
    settings.Set("k", "B", "2");
    EXPECT_EQ(settings.Content(), content + "B=2\r\n");
}

TEST(SettingsContent, TheFirstOfTwoCounts) {
    SettingsText settings = Parsed("[k]\nA=1\na=2\n[K]\nB=3\n");
    EXPECT_EQ(settings.Find("k", "A"), "1");
    EXPECT_EQ(settings.Find("k", "B"), std::nullopt);
}

TEST(SettingsContent, OnlyValuesDirectlyUnderThePathAreListed) {
    const SettingsText settings = Parsed("[k]\nA=1\n[k\\CSV_SAVE]\nB=2\n");
    EXPECT_EQ(settings.ValuesUnder("k").size(), 1U);
    EXPECT_EQ(settings.ValuesUnder("K\\csv_save").size(), 1U);
    EXPECT_TRUE(settings.ValuesUnder("none").empty());
}

TEST(SettingsContent, PathsOfSeveralLinesAreRefused) {
    SettingsText settings;
    EXPECT_EQ(FailureOf([&] { settings.Set("a\nb", "A", "1"); }).number(), failure_number::InvalidCall);
    EXPECT_EQ(FailureOf([&] { settings.Set("a\xFF", "A", "1"); }).number(), failure_number::InvalidCall);
    EXPECT_EQ(settings.Content(), "");
}

struct DamagedFile {
    std::string content;
    const char* description;

    friend void PrintTo(const DamagedFile& each, std::ostream* out) {
        *out << testing::PrintToString(each.content);
    }
};

class SettingsDamage : public testing::TestWithParam<DamagedFile> {};

TEST_P(SettingsDamage, IsToldWithFileLineAndWhatWasExpected) {
    const Failure failure = FailureOf([] { Parsed(GetParam().content); });
    EXPECT_EQ(failure.number(), failure_number::InvalidFileFormat);
    EXPECT_EQ(failure.description(), std::string("settings.txt, line ") + GetParam().description);
}

INSTANTIATE_TEST_SUITE_P(
    Table, SettingsDamage,
    testing::Values(
        DamagedFile{"", "1: the file is empty; expected a section head such as [HKEY_LOCAL_MACHINE\\...]"},
        DamagedFile{"A=1\n",
                    "1: expected a section head such as [HKEY_LOCAL_MACHINE\\...] before the first value"},
        DamagedFile{"[k]\nA=1\nB=2",
                    "3: expected a line break at the end of the last line; the file was cut off"},
        DamagedFile{"[k\nA=1\n", "1: expected ] at the end of a section head"},
        DamagedFile{"[\nA=1\n", "1: expected ] at the end of a section head"},
        DamagedFile{"[k] \nA=1\n", "1: expected ] at the end of a section head, found a blank behind it"},
        DamagedFile{"[k]\rA=1\r", "1: expected lines that end in LF or CR LF, found a CR alone"},
        DamagedFile{"[k]\nA=1\rB=2\n", "2: expected lines that end in LF or CR LF, found a CR alone"},
        DamagedFile{std::string("\xFF\xFE[\0k\0]\0\n\0", 10), "1: expected UTF-8 text, found UTF-16"},
        DamagedFile{"[k]\nA=C:\\temp\n",
                    "2: a backslash stands alone; expected \\\\ for a backslash, \\n, \\r or \\xHH"},
        DamagedFile{"[k]\nA=1\\\n",
                    "2: a backslash stands alone; expected \\\\ for a backslash, \\n, \\r or \\xHH"},
        DamagedFile{"[k]\nA=\\xg0\n",
                    "2: a backslash stands alone; expected \\\\ for a backslash, \\n, \\r or \\xHH"},
        DamagedFile{"[k]\nA=\\x1\n",
                    "2: a backslash stands alone; expected \\\\ for a backslash, \\n, \\r or \\xHH"},
        DamagedFile{"[k]\nA=\xFF\n", "2: expected UTF-8 text, found other bytes; the file is damaged"},
        DamagedFile{std::string("[k]\n\0\n", 6),
                    "2: expected UTF-8 text, found other bytes; the file is damaged"},
        DamagedFile{"\x7F"
                    "ELF\x02\x01\n",
                    "1: expected UTF-8 text, found other bytes; the file is damaged"}));

}  // namespace
}  // namespace brenvik
