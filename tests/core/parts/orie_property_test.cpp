// What holds for every part: the letters stay with their sizes, whatever the extents are.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "base/number_text.h"
#include "base/numbers.h"
#include "parts/orie_update.h"

namespace brenvik::mAutoCAD {
namespace {

constexpr int Rounds = 2000;
constexpr std::array<std::string_view, 6> AllLetters{"LWT", "LTW", "TLW", "TWL", "WTL", "WLT"};

using Extents = std::array<double, 3>;

/// Random parts: sizes of a shop, with up to five decimals.
class Parts {
  public:
    Extents Different() {
        for (;;) {
            Extents extents{Size(), Size(), Size()};
            if (extents[0] != extents[1] && extents[1] != extents[2] && extents[2] != extents[0])
                return extents;
        }
    }
    double Size() {
        const int decimals = std::uniform_int_distribution<int>(0, 5)(random);
        return RoundHalfEven(std::uniform_real_distribution<double>(1, 3000)(random), decimals);
    }
    std::string_view Letters() { return AllLetters[Index(6)]; }
    std::size_t Index(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    }
    void Shuffle(Extents& extents) { std::shuffle(extents.begin(), extents.end(), random); }

  private:
    std::mt19937 random{20040416};
};

OrieResult Update(std::string_view letters, const Extents& old, const Extents& now) {
    const std::array<std::string, 3> texts{NumberToText(old[0]), NumberToText(old[1]), NumberToText(old[2])};
    return UpdateOrie({letters, {texts[0], texts[1], texts[2]}, {now, now}});
}

/// The size under a letter when the letters name the extents from the largest down.
double SizeUnder(char letter, std::string_view letters, Extents extents) {
    std::sort(extents.rbegin(), extents.rend());
    return extents[letters.find(letter)];
}

double StoredUnder(char letter, const OrieResult& result) {
    return LenientNumber(letter == 'L' ? result.length : letter == 'W' ? result.width : result.thickness);
}

TEST(OrieProperty, AnUnchangedSolidKeepsLettersAndSizesHoweverItIsTurned) {
    Parts parts;
    for (int round = 0; round < Rounds; ++round) {
        const Extents old = parts.Different();
        const std::string_view letters = parts.Letters();
        Extents now = old;
        parts.Shuffle(now);
        const OrieResult result = Update(letters, old, now);
        ASSERT_EQ(result.letters, letters);
        for (const char letter : {'L', 'W', 'T'})
            ASSERT_EQ(StoredUnder(letter, result), SizeUnder(letter, letters, old));
    }
}

TEST(OrieProperty, AnUnchangedSolidWhoseLengthIsTheMeanOfItsSizesKeepsItsLetters) {
    Parts parts;
    for (int round = 0; round < Rounds; ++round) {
        const double length = 1000 + parts.Size(), thickness = parts.Size() / 100;
        const Extents old{length, RoundHalfEven(2 * length - RoundHalfEven(thickness, 5), 5),
                          RoundHalfEven(thickness, 5)};
        Extents now = old;
        parts.Shuffle(now);
        ASSERT_EQ(Update("WLT", old, now).letters, "WLT") << old[0] << ' ' << old[1] << ' ' << old[2];
    }
}

TEST(OrieProperty, AChangeOfOneOfThreeDifferentSizesMovesTheLettersWithTheirSizes) {
    Parts parts;
    for (int round = 0; round < Rounds; ++round) {
        const Extents old = parts.Different();
        const std::string_view letters = parts.Letters();
        const std::size_t changed = parts.Index(3);
        Extents now = old;
        do now[changed] = parts.Size();
        while (std::count(now.begin(), now.end(), now[changed]) > 1 || now[changed] == old[changed]);
        char changedLetter = '?';
        for (const char letter : letters)
            if (SizeUnder(letter, letters, old) == old[changed]) changedLetter = letter;

        const OrieResult result = Update(letters, old, now);
        ASSERT_EQ(result.letters.size(), 3u);
        for (const char letter : letters) {
            const double expected = letter == changedLetter ? now[changed] : SizeUnder(letter, letters, old);
            ASSERT_EQ(StoredUnder(letter, result), expected) << letters << " to " << result.letters;
            // The letters name the extents by size, so what they say is what is stored.
            ASSERT_EQ(SizeUnder(letter, result.letters, now), expected);
        }
    }
}

TEST(OrieProperty, AChangeOfTwoSizesBlanksTheLetters) {
    Parts parts;
    for (int round = 0; round < Rounds; ++round) {
        const Extents old = parts.Different();
        const Extents now{old[0], old[1] + 3001, old[2] + 6002};
        const OrieResult result = Update(parts.Letters(), old, now);
        ASSERT_EQ(result.letters, "");
        ASSERT_EQ(result.length + result.width + result.thickness, "000");
    }
}

TEST(OrieProperty, AnUpdateIsStableOnceItIsApplied) {
    Parts parts;
    for (int round = 0; round < Rounds; ++round) {
        const Extents old = parts.Different();
        Extents now = old;
        now[parts.Index(3)] = parts.Size();
        const OrieResult first = Update(parts.Letters(), old, now);
        if (first.letters.empty()) continue;
        const OrieResult second = Update(first.letters, now, now);
        ASSERT_EQ(second.letters, first.letters);
        ASSERT_EQ(second.length, first.length);
        ASSERT_EQ(second.width, first.width);
        ASSERT_EQ(second.thickness, first.thickness);
    }
}

}  // namespace
}  // namespace brenvik::mAutoCAD
