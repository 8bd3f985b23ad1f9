// Cutting paths of the system's own form, and file patterns.
#include "file_roots/system_path.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

struct PathCase {
    const char* text;
    char drive;
    bool absolute;
    const char* names;

    friend void PrintTo(const PathCase& each, std::ostream* out) {
        *out << testing::PrintToString(each.text);
    }
};

class SystemPathText : public testing::TestWithParam<PathCase> {};

TEST_P(SystemPathText, IsCutIntoItsParts) {
    const SystemPath path = ParseSystemPath(GetParam().text);
    EXPECT_EQ(path.drive, GetParam().drive);
    EXPECT_EQ(path.absolute, GetParam().absolute);
    EXPECT_EQ(Join(path.names, "|"), GetParam().names);
}

INSTANTIATE_TEST_SUITE_P(Table, SystemPathText,
                         testing::Values(PathCase{"c:\\BV-DXF\\x.dxf", 'c', true, "BV-DXF|x.dxf"},
                                         PathCase{"C:/BV-DXF/2-sided/", 'c', true, "BV-DXF|2-sided"},
                                         PathCase{"d:", 'd', true, ""},
                                         PathCase{"c:x.txt", 'c', true, "x.txt"},
                                         PathCase{"c:\\a\\..\\..\\..\\b", 'c', true, "b"},
                                         PathCase{"c:\\a\\.\\\\b", 'c', true, "a|b"},
                                         PathCase{"/home/a\\_db\\x.mdb", 0, true, "home|a|_db|x.mdb"},
                                         PathCase{"\\\\server\\share\\x", 0, true, "server|share|x"},
                                         PathCase{"a\\b", 0, false, "a|b"},
                                         PathCase{"..\\a\\..\\..\\b", 0, false, "..|..|b"},
                                         PathCase{"/..", 0, true, ""}, PathCase{"1:\\a", 0, false, "1:|a"},
                                         PathCase{" a ", 0, false, " a "}));

TEST(SystemPathRefusal, BlankPathsAndZeroCharactersAreBadNames) {
    EXPECT_EQ(FailureOf([] { ParseSystemPath(""); }).number(), failure_number::BadFileName);
    EXPECT_EQ(FailureOf([] { ParseSystemPath("  "); }).number(), failure_number::BadFileName);
    EXPECT_EQ(FailureOf([] { ParseSystemPath(std::string_view("a\0b", 3)); }).number(),
              failure_number::BadFileName);
}

struct PatternCase {
    const char* name;
    const char* pattern;
    bool fits;

    friend void PrintTo(const PatternCase& each, std::ostream* out) {
        *out << testing::PrintToString(each.name) << " " << testing::PrintToString(each.pattern);
    }
};

class FilePattern : public testing::TestWithParam<PatternCase> {};

TEST_P(FilePattern, KnowsStarAndQuestionMark) {
    EXPECT_EQ(MatchesFilePattern(GetParam().name, GetParam().pattern), GetParam().fits)
        << GetParam().name << " by " << GetParam().pattern;
}

INSTANTIATE_TEST_SUITE_P(
    Table, FilePattern,
    testing::Values(PatternCase{"a.dxf", "*.dxf", true}, PatternCase{"A.DXF", "*.dxf", true},
                    PatternCase{"a.dxf.bak", "*.dxf", false}, PatternCase{"a.dxf", "*", true},
                    PatternCase{"a", "*.*", true}, PatternCase{"a", "?", true}, PatternCase{"ab", "?", false},
                    PatternCase{"\xC3\xBC.txt", "?.txt", true},
                    PatternCase{"\xC3\x9C.txt", "\xC3\xBC*", true}, PatternCase{"100%", "100_", false},
                    PatternCase{"", "*", true}, PatternCase{"a", "", false}));

}  // namespace
}  // namespace brenvik
