// The orientation letters of solids that changed shape, or didn't, since they were last applied.
#include "parts/orie_update.h"

#include <gtest/gtest.h>

#include <ostream>

#include "base/number_text.h"

namespace brenvik::mAutoCAD {

static bool operator==(const LabelledSizes& a, const LabelledSizes& b) {
    return a.length == b.length && a.width == b.width && a.thickness == b.thickness;
}
static std::ostream& operator<<(std::ostream& out, const LabelledSizes& sizes) {
    return out << sizes.length << ' ' << sizes.width << ' ' << sizes.thickness;
}

namespace {

struct Case {
    const char* rule;
    const char* letters;
    std::array<double, 3> old, now;
    const char *newLetters, *length, *width, *thickness;
};

std::ostream& operator<<(std::ostream& out, const Case& part) { return out << part.rule; }

OrieResult Update(std::string_view letters, const std::array<double, 3>& old,
                  const std::array<double, 3>& now) {
    const std::array<std::string, 3> texts{NumberToText(old[0]), NumberToText(old[1]), NumberToText(old[2])};
    return UpdateOrie({letters, {texts[0], texts[1], texts[2]}, {now, now}});
}

class OrieUpdate : public testing::TestWithParam<Case> {};

TEST_P(OrieUpdate, KeepsLettersTrue) {
    const Case& part = GetParam();
    const OrieResult result = Update(part.letters, part.old, part.now);
    EXPECT_EQ(result.letters, part.newLetters);
    EXPECT_EQ(result.length, part.length);
    EXPECT_EQ(result.width, part.width);
    EXPECT_EQ(result.thickness, part.thickness);
}

const Case Cases[] = {
    {"AWidthStretchedBeyondTheLength", "LWT", {18, 600, 400}, {18, 600, 800}, "WLT", "600", "800", "18"},
    {"AnUnchangedPanel", "LWT", {18, 600, 400}, {18, 600, 400}, "LWT", "600", "400", "18"},
    {"AnUnchangedPanelThatIsTurned", "LWT", {18, 600, 400}, {600, 400, 18}, "LWT", "600", "400", "18"},
    {"GrainAcrossTheLongSide", "WLT", {18, 600, 400}, {18, 600, 400}, "WLT", "400", "600", "18"},
    {"AWidthShrunkStillTheMiddle", "LWT", {18, 600, 400}, {18, 600, 300}, "LWT", "600", "300", "18"},
    {"AWidthShrunkBelowTheThickness", "LWT", {18, 600, 400}, {18, 600, 12}, "LTW", "600", "12", "18"},
    {"ALengthShrunkBelowTheWidth", "LWT", {18, 600, 400}, {18, 350, 400}, "WLT", "350", "400", "18"},
    {"AThicknessGrown", "LWT", {18, 600, 400}, {25, 600, 400}, "LWT", "600", "400", "25"},
    {"AThicknessGrownBeyondAll", "LWT", {18, 600, 400}, {700, 600, 400}, "TLW", "600", "400", "700"},
    {"LowerCaseLettersOfAnUnchangedPanelStay",
     "lwt",
     {18, 600, 400},
     {18, 600, 400},
     "lwt",
     "600",
     "400",
     "18"},
    {"LowerCaseLettersAreUpperCaseAfterAChange",
     "lwt",
     {18, 600, 400},
     {18, 600, 800},
     "WLT",
     "600",
     "800",
     "18"},
    {"TwoExtentsChanged", "LWT", {18, 600, 400}, {18, 650, 450}, "", "0", "0", "0"},
    {"AllExtentsChanged", "LWT", {18, 600, 400}, {19, 650, 450}, "", "0", "0", "0"},
    {"NoLettersAndNoOldValues", "", {0, 0, 0}, {18, 600, 400}, "", "0", "0", "0"},
    {"LettersWithoutOldValues", "LWT", {0, 0, 0}, {18, 600, 400}, "", "0", "0", "0"},
    {"NoLettersOnAnUnchangedPanel", "", {18, 600, 400}, {18, 600, 400}, "", "0", "0", "0"},
    {"AnUnchangedPanelWithTwoEqualSides", "LWT", {18, 400, 400}, {18, 400, 400}, "LWT", "400", "400", "18"},
    // The sizes are relabelled, but which of the equal sides it was can't be told.
    {"OneOfTwoEqualSidesStretched", "LWT", {18, 400, 400}, {18, 400, 500}, "", "400", "500", "18"},
    {"TheThicknessOfASquarePanelChanged", "LWT", {18, 400, 400}, {25, 400, 400}, "LWT", "400", "400", "25"},
    {"TheThicknessOfASquarePanelGrownBeyondIt",
     "WLT",
     {18, 400, 400},
     {500, 400, 400},
     "TWL",
     "400",
     "400",
     "500"},
    {"TheLengthOfAPostGrown", "LWT", {40, 40, 700}, {40, 40, 900}, "LWT", "900", "40", "40"},
    {"AChangedSizeEqualToAnotherNow", "LWT", {18, 600, 400}, {18, 400, 400}, "WLT", "400", "400", "18"},
    {"LowerCaseLettersWithTwoEqualSizesNow",
     "lwt",
     {18, 600, 400},
     {18, 400, 400},
     "WLT",
     "400",
     "400",
     "18"},
    {"AThicknessGrownToTheWidth", "LWT", {18, 600, 400}, {400, 600, 400}, "LTW", "600", "400", "400"},
    {"ACubeThatStaysOne", "LWT", {50, 50, 50}, {50, 50, 50}, "LWT", "50", "50", "50"},
    {"ACubeThatIsOneNoMore", "LWT", {50, 50, 50}, {50, 50, 60}, "", "50", "50", "60"},
    {"ABoxThatBecomesACubeByOneSide", "LWT", {50, 50, 60}, {50, 50, 50}, "LWT", "50", "50", "50"},
    {"LettersThatNameNothing", "XYZ", {18, 600, 400}, {18, 600, 400}, "", "0", "0", "0"},
    {"AFlatRegionUnchanged", "LWT", {0, 600, 400}, {0, 600, 400}, "LWT", "600", "400", "0"},
    // A size of 0 counts as unmatched, so both labels take the extent that is left over.
    {"AFlatRegionStretched", "LWT", {0, 600, 400}, {0, 700, 400}, "", "700", "400", "700"},
    {"AnEntityWithoutExtents", "", {0, 0, 0}, {0, 0, 0}, "", "0", "0", "0"},
    // The length is the mean of the three sizes, which is all that the test for a cube looks at.
    {"AnUnchangedPanelWhoseLengthIsTheMean",
     "WLT",
     {612.3, 1191.5, 33.1},
     {612.3, 33.1, 1191.5},
     "WLT",
     "612.3",
     "1191.5",
     "33.1"},
    {"AStretchedPanelWhoseLengthWasTheMean",
     "WLT",
     {600, 1182, 18},
     {600, 1200, 18},
     "",
     "600",
     "1200",
     "18"},
    {"FractionsOfInches", "LWT", {0.75, 23.25, 30.5}, {0.75, 23.25, 34.5}, "LWT", "34.5", "23.25", "0.75"},
};

INSTANTIATE_TEST_SUITE_P(Parts, OrieUpdate, testing::ValuesIn(Cases),
                         [](const auto& part) { return std::string(part.param.rule); });

TEST(OrieUpdateDrift, InTheFifthDecimalIsAChange) {
    const OrieResult result = Update("LWT", {18, 600, 400}, {18, 600, 400.00001});
    EXPECT_EQ(result.letters, "LWT");
    EXPECT_EQ(result.width, "400.00001");
}

TEST(OrieUpdateOldValues, AreReadByTheLenientRule) {
    const OrieResult result =
        UpdateOrie({"LWT", {"18 mm", " 600", "400,5"}, {{18, 600, 400}, {18, 600, 400}}});
    EXPECT_EQ(result.letters, "LWT");
    EXPECT_EQ(result.length, "600");
}

TEST(OrieUpdateFinalGuard, ComparesTheOldCubeWithTheExtentsOfTheRow) {
    // A solid that could not be measured: D is 0, E is what the part before it left.
    const OrieResult result = UpdateOrie({"LWT", {"", "", ""}, {{18, 600, 400}, {0, 0, 0}}});
    EXPECT_EQ(result.letters, "");
}

TEST(OrieUpdateFinalGuard, LeavesLettersWhereBothSumsAreEqual) {
    const OrieResult result = UpdateOrie({"LWT", {"", "", ""}, {{0, 0, 0}, {0, 0, 0}}});
    EXPECT_EQ(result.letters, "LWT");
    EXPECT_EQ(result.length, "0");
}

TEST(LetterMapping, NamesTheLabelsBySize) {
    const SortedExtents extents{18, 400, 600};
    EXPECT_EQ(MapLetters("LWT", extents), (LabelledSizes{"600", "400", "18"}));
    EXPECT_EQ(MapLetters("LTW", extents), (LabelledSizes{"600", "18", "400"}));
    EXPECT_EQ(MapLetters("TLW", extents), (LabelledSizes{"400", "18", "600"}));
    EXPECT_EQ(MapLetters("TWL", extents), (LabelledSizes{"18", "400", "600"}));
    EXPECT_EQ(MapLetters("WTL", extents), (LabelledSizes{"18", "600", "400"}));
    EXPECT_EQ(MapLetters("wlt", extents), (LabelledSizes{"400", "600", "18"}));
}

TEST(LetterMapping, TakesFirstSecondAndLastCharacter) {
    const SortedExtents extents{18, 400, 600};
    EXPECT_EQ(MapLetters("", extents), (LabelledSizes{"0", "0", "0"}));
    // One letter is the first and the last: the last set stands.
    EXPECT_EQ(MapLetters("L", extents), (LabelledSizes{"18", "0", "0"}));
    EXPECT_EQ(MapLetters("LW", extents), (LabelledSizes{"600", "18", "0"}));
    EXPECT_EQ(MapLetters("LWXT", extents), (LabelledSizes{"600", "400", "18"}));
    EXPECT_EQ(MapLetters("X?T", extents), (LabelledSizes{"0", "0", "18"}));
}

TEST(SortExtents, RoundsAndSorts) {
    const SortedExtents sorted = SortExtents(600.0000049, 18.25, 400);
    EXPECT_EQ(sorted.Small, 18.25);
    EXPECT_EQ(sorted.Mid, 400.000005);
    EXPECT_EQ(sorted.Big, 600);
}

}  // namespace
}  // namespace brenvik::mAutoCAD
