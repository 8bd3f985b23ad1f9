// Names, assemblies and layers go into a STEP file by the rules of the format and come back to the letter.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "base/utf8.h"
#include "drafting_host/step/step_reader.h"
#include "drafting_host/step/texts/step_strings.h"
#include "solids/parts.h"
#include "step/write_step.h"

namespace brenvik::step {
namespace {

using solids::test::Board;

TEST(StepStrings, AreEncodedByTheFormat) {
    EXPECT_EQ(EncodedText("plain 1/2\" (a)"), "plain 1/2\" (a)");
    EXPECT_EQ(EncodedText("it's \\ 2"), "it''s \\\\ 2");
    EXPECT_EQ(EncodedText("Größe"), "Gr\\X2\\00F600DF\\X0\\e");
    EXPECT_EQ(EncodedText("\xF0\x9F\xAA\xB5"), "\\X2\\D83EDEB5\\X0\\");
    EXPECT_EQ(EncodedText("a\tb\n"), "a\\X2\\0009\\X0\\b\\X2\\000A\\X0\\");
    EXPECT_EQ(EncodedText("\\X\\"), "\\\\X\\\\");
    EXPECT_EQ(EncodedText("\xFF"), "\\X2\\FFFD\\X0\\");
}

TEST(StepStrings, AreDecodedWhateverEscapesTheyHave) {
    const auto decoded = [](std::string_view text) { return DecodedText(text, CodePage::Utf8); };
    EXPECT_EQ(decoded("it''s \\\\ 2"), "it's \\ 2");
    EXPECT_EQ(decoded("Gr\\X2\\00F600DF\\X0\\e"), "Größe");
    EXPECT_EQ(decoded("\\X2\\D83E\nDEB5\\X0\\"), "\xF0\x9F\xAA\xB5");
    EXPECT_EQ(decoded("\\X4\\0001FAB5000000E4\\X0\\"), "\xF0\x9F\xAA\xB5ä");
    EXPECT_EQ(decoded("T\\X\\FCr"), "Tür");
    EXPECT_EQ(decoded("T\\S\\|r"), "Tür");
    EXPECT_EQ(decoded("\\PE\\\\S\\4\\S\\2"), "ДВ");
    EXPECT_EQ(decoded("a\\N\\b\\T\\c"), "a\nb\tc");
    EXPECT_EQ(decoded("two\r\n lines"), "two lines");
    EXPECT_EQ(decoded("C:\\parts\\new"), "C:\\parts\\new");
    EXPECT_EQ(decoded("\\X2\\00F\\X0\\ \\X2\\ \\X\\G1 \\X4\\00"), "\\X2\\00F\\X0\\ \\X2\\ \\X\\G1 \\X4\\00");
    EXPECT_EQ(decoded("\\X2\\D83E\\X0\\"), "\xEF\xBF\xBD");
    EXPECT_EQ(decoded("\\\\X2\\\\00F6"), "\\X2\\00F6");
    EXPECT_EQ(DecodedText("T\xFCr \\X2\\0434\\X0\\", CodePage::Western), "Tür д");
    EXPECT_EQ(DecodedText("\xC4\xE2\xE5\xF0\xFC", CodePage::Cyrillic), "Дверь");
}

/// Names as no shop would give them all, each class of characters with every other.
class RandomNames {
  public:
    std::string Next() {
        std::string name;
        const std::size_t length = Below(4) == 0 ? 5 + Below(296) : 1 + Below(20);
        for (std::size_t count = 0; count < length; ++count) AppendPiece(name);
        return name;
    }

  private:
    std::size_t Below(std::size_t end) { return mRandom() % end; }

    void AppendPiece(std::string& name) {
        static const std::vector<std::string> pieces{"'",      "''",    "\\", "\\\\", "\\X\\", "\\X2\\",
                                                     "\\X0\\", "\\S\\", " ",  "  ",   "#12",   ";",
                                                     "(,)",    "/*",    "*/", "\"",   "?",     "_"};
        static const std::vector<char32_t> starts{'a', 'A', '0', 0xE4, 0x434, 0x4E00, 0x1F600, 0x3B1, 0x20AC};
        const std::size_t kind = Below(pieces.size() + 4 * starts.size());
        if (kind < pieces.size())
            name += pieces[kind];
        else
            AppendUtf8(name, starts[kind % starts.size()] + static_cast<char32_t>(Below(10)));
    }

    std::mt19937 mRandom{20260711};
};

StepDocument RoundTrip(const std::vector<StepSolid>& parts) {
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    const auto path =
        std::filesystem::path(::testing::TempDir()) / ("brenvik_step_names_" + std::string(test->name()));
    WriteStep(path, parts);
    StepDocument document = ReadStep(path);
    std::filesystem::remove(path);
    return document;
}

TEST(StepNames, OfEveryKindComeBackToTheLetter) {
    RandomNames names;
    std::vector<StepSolid> parts;
    for (int count = 0; count < 300; ++count)
        parts.push_back({Board(100 + count, 50, 18), names.Next(), "", names.Next(), std::nullopt});
    const StepDocument document = RoundTrip(parts);
    ASSERT_EQ(document.solids.size(), parts.size());
    for (std::size_t index = 0; index < parts.size(); ++index) {
        EXPECT_EQ(document.solids[index].name, parts[index].name);
        EXPECT_EQ(document.solids[index].layer, parts[index].layer);
    }
    EXPECT_TRUE(document.notes.empty());
}

TEST(StepNames, OfAssembliesComeBackToTheLetter) {
    RandomNames names;
    std::vector<StepSolid> parts;
    for (int count = 0; count < 40; ++count) {
        // Two of one name make one assembly; each is told by its size.
        const std::string assembly = names.Next() + std::to_string(count);
        parts.push_back({Board(100 + count, 50, 18), names.Next(), assembly, "", std::nullopt});
        parts.push_back({Board(100 + count, 60, 18), names.Next(), assembly, "", std::nullopt});
    }
    const StepDocument document = RoundTrip(parts);
    ASSERT_EQ(document.solids.size(), parts.size());
    for (std::size_t index = 0; index < parts.size(); ++index) {
        EXPECT_EQ(document.solids[index].name, parts[index].name);
        EXPECT_EQ(document.solids[index].assembly, parts[index].assembly);
    }
}

TEST(StepNames, StandOnOneLineEach) {
    RandomNames names;
    std::vector<StepSolid> parts;
    for (int count = 0; count < 60; ++count)
        parts.push_back({Board(100, 50, 18), names.Next(), names.Next(), names.Next(), std::nullopt});
    std::istringstream lines(StepText("Tür's.step", parts));
    for (std::string line; std::getline(lines, line);)
        EXPECT_EQ(std::ranges::count(line, '\'') % 2, 0) << line;
}

TEST(StepNames, OfNobodysGivingStayBlank) {
    const StepDocument document = RoundTrip({{Board(100, 50, 18), "", "", "", std::nullopt},
                                             {Board(100, 60, 18), "", "", "", std::nullopt},
                                             {Board(100, 70, 18), "", "Case", "", std::nullopt},
                                             {Board(100, 80, 18), "  ", " ", "", std::nullopt},
                                             {Board(100, 90, 18), "BrenvikText1", "", "", std::nullopt}});
    ASSERT_EQ(document.solids.size(), 5U);
    EXPECT_EQ(document.solids[0].name, "");
    EXPECT_EQ(document.solids[1].name, "");
    EXPECT_EQ(document.solids[2].name, "");
    EXPECT_EQ(document.solids[2].assembly, "Case");
    EXPECT_EQ(document.solids[3].name, "  ");
    EXPECT_EQ(document.solids[3].assembly, " ");
    EXPECT_EQ(document.solids[4].name, "BrenvikText1");
}

}  // namespace
}  // namespace brenvik::step
