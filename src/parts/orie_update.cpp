// The letter update. It works on what was saved and what is measured now, and on nothing else: extents are
// compared for exact equality after rounding, so a drift in the fifth decimal is a change.
#include "parts/orie_update.h"

#include <algorithm>

#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "parts/extent_matching.h"
#include "parts/mautocad.h"

namespace brenvik::mAutoCAD {

namespace {

/// A label with the size it had and the extent it has now, both as text; "0" while the latter is unknown.
struct LabelRecord {
    std::string Letter;
    std::string NewValue = "0";
    std::string OldValue;
};

/// The working values of one update. Labels are in the order L, W, T and are numbered from 1.
struct OrieUpdate {
    SortedExtents extents;
    LabelledSizes oldSizes;
    std::string OldLetters;
    std::string Letters;
    std::array<LabelRecord, 3> labels;
    bool Ambiguous = false;

    LabelRecord& Label(int number) { return labels[static_cast<std::size_t>(number - 1)]; }
};

/// How the one changed extent lies among the labels.
struct Relabelling {
    bool IsCube = false, HasTwoEqual = false;
    int ChangedLabel = 0;
    std::string RemainingLetters;
    int BigLabel = 0, MidLabel = 0, SmallLabel = 0;
};

/// Whether two sums of sizes are equal to the decimals that extents are rounded to. Sums taken in different
/// orders may differ in their last bit, which must not look like a change of shape.
bool SameSum(double a, double b) {
    constexpr int extentDecimals = 5;
    return RoundHalfEven(a, extentDecimals) == RoundHalfEven(b, extentDecimals);
}

int CountMatches(const OrieUpdate& update) {
    ExtentsTaken taken;
    const auto& [Small, Mid, Big] = update.extents;
    int MatchCount = 0;
    for (const std::string* old :
         {&update.oldSizes.length, &update.oldSizes.width, &update.oldSizes.thickness})
        if (ConsumeExtent(taken, *old, Small, Big, Mid)) ++MatchCount;
    return MatchCount;
}

/// Fills the labels with the extents that they kept, and notes whether it is clear which one changed. Returns
/// the extents that are taken.
ExtentsTaken MatchLabels(OrieUpdate& update, Relabelling& relabelling) {
    ExtentsTaken taken;
    const auto& [Small, Mid, Big] = update.extents;
    const auto& old = update.oldSizes;
    update.labels = {LabelRecord{"L", "0", old.length}, LabelRecord{"W", "0", old.width},
                     LabelRecord{"T", "0", old.thickness}};
    int Unmatched = 0;
    for (int label = 1; label <= 3; ++label) {
        LabelRecord& record = update.Label(label);
        record.NewValue = MatchOldValue(taken, record.OldValue, Small, Big, Mid);
        if (LenientNumber(record.NewValue) != 0) continue;
        ++Unmatched;
        relabelling.ChangedLabel = label;
    }
    if (Unmatched > 1) update.Ambiguous = true;
    if (Unmatched != 1) return taken;
    // Of two equal old sizes nobody can say which one has changed.
    for (int label = 1; label <= 3; ++label)
        if (label != relabelling.ChangedLabel &&
            update.Label(label).OldValue == update.Label(relabelling.ChangedLabel).OldValue)
            update.Ambiguous = true;
    return taken;
}

/// Gives the extent that is left over to the label that lost its own.
void PlaceFreeExtent(OrieUpdate& update, Relabelling& relabelling, const ExtentsTaken& taken) {
    const double FreeExtent = !taken.Small ? update.extents.Small
                              : !taken.Mid ? update.extents.Mid
                                           : update.extents.Big;
    for (int label = 1; label <= 3; ++label) {
        LabelRecord& record = update.Label(label);
        if (LenientNumber(record.NewValue) != 0) continue;
        record.NewValue = NumberToText(FreeExtent);
        relabelling.RemainingLetters = ReplaceAll(FoldUpper(update.OldLetters), record.Letter, "");
        relabelling.ChangedLabel = label;
    }
    std::array<float, 3> values{};
    for (int label = 1; label <= 3; ++label)
        values[static_cast<std::size_t>(label - 1)] = ToSingle(LenientNumber(update.Label(label).NewValue));
    relabelling.BigLabel = IndexOfLargest(values[0], values[1], values[2]);
    relabelling.SmallLabel = IndexOfSmallest(values[0], values[1], values[2]);
    relabelling.MidLabel = ThirdIndex(relabelling.BigLabel, relabelling.SmallLabel);
}

/// The changed letter among the two others, which keep their order.
std::string PutBackChangedLetter(OrieUpdate& update, const Relabelling& relabelling) {
    const std::string& letter = update.Label(relabelling.ChangedLabel).Letter;
    const std::string& others = relabelling.RemainingLetters;
    if (relabelling.ChangedLabel == relabelling.BigLabel) return letter + others;
    if (relabelling.ChangedLabel == relabelling.MidLabel) return Left(others, 1) + letter + Right(others, 1);
    return others + letter;
}

std::string ChooseLetters(OrieUpdate& update, const Relabelling& relabelling) {
    if (relabelling.IsCube) return update.OldLetters;
    if (relabelling.HasTwoEqual) return PutBackChangedLetter(update, relabelling);
    if (relabelling.BigLabel + relabelling.MidLabel + relabelling.SmallLabel == 0) return {};
    std::string letters;
    for (const int label : {relabelling.BigLabel, relabelling.MidLabel, relabelling.SmallLabel})
        if (label >= 1 && label <= 3) letters += update.Label(label).Letter;
    return letters;
}

/// One extent changed: finds the label that it belongs to and puts the letters in their new order.
void Relabel(OrieUpdate& update) {
    const auto& [Small, Mid, Big] = update.extents;
    Relabelling relabelling;
    relabelling.IsCube = SameSum(3 * Small, Small + Big + Mid);
    relabelling.HasTwoEqual = (Small == Big || Big == Mid || Mid == Small) && !relabelling.IsCube;
    const ExtentsTaken taken = MatchLabels(update, relabelling);
    PlaceFreeExtent(update, relabelling, taken);
    update.Letters = ChooseLetters(update, relabelling);
}

void ApplyFinalGuards(OrieUpdate& update, const std::array<double, 3>& E) {
    const double length = LenientNumber(update.oldSizes.length);
    const double sum =
        length + LenientNumber(update.oldSizes.width) + LenientNumber(update.oldSizes.thickness);
    // What was a cube, or had no sizes at all, and is a cube no more has no letters to carry over.
    if (SameSum(3 * length, sum) && !SameSum(3 * length, E[0] + E[1] + E[2])) update.Letters.clear();
    if (update.Ambiguous) update.Letters.clear();
}

std::string StoredSize(const OrieUpdate& update, const LabelRecord& label, const std::string& oldSize) {
    if (LenientNumber(label.NewValue) == 0 && !update.Letters.empty()) return oldSize;
    return NumberToText(LenientNumber(label.NewValue));
}

}  // namespace

SortedExtents SortExtents(double a, double b, double c) {
    SortedExtents sorted;
    sorted.Small = RoundHalfEven(SmallestOfThree(a, b, c), 6);
    sorted.Big = RoundHalfEven(LargestOfThree(a, b, c), 6);
    sorted.Mid = RoundHalfEven((a + b + c) - (sorted.Small + sorted.Big), 6);
    return sorted;
}

LabelledSizes MapLetters(std::string_view letters, const SortedExtents& extents) {
    LabelledSizes sizes;
    const std::string upper = FoldUpper(letters);
    const auto name = [&sizes](const std::string& letter, double extent) {
        if (letter == "L") sizes.length = NumberToText(extent);
        if (letter == "W") sizes.width = NumberToText(extent);
        if (letter == "T") sizes.thickness = NumberToText(extent);
    };
    name(Left(upper, 1), extents.Big);
    name(Mid(upper, 2, 1), extents.Mid);
    name(Right(upper, 1), extents.Small);
    return sizes;
}

bool AreValidLetters(std::string_view letters) {
    constexpr std::array<std::string_view, 7> valid{"", "LWT", "LTW", "TLW", "TWL", "WTL", "WLT"};
    return std::find(valid.begin(), valid.end(), FoldUpper(letters)) != valid.end();
}

OrieResult UpdateOrie(const OrieInput& input) {
    OrieUpdate update;
    const auto& [old1, old2, old3] = input.oldValues;
    update.OldLetters = input.letters;
    update.Letters = input.letters;
    update.oldSizes = MapLetters(update.OldLetters,
                                 SortExtents(LenientNumber(old1), LenientNumber(old2), LenientNumber(old3)));
    const auto& D = input.extents.D;
    update.extents = SortExtents(D[0], D[1], D[2]);

    switch (CountMatches(update)) {
        case 0:
        case 1:
            // The solid has changed too much for the old letters to mean anything.
            update.Letters.clear();
            break;
        case 2:
            Relabel(update);
            break;
        default:
            break;
    }
    ApplyFinalGuards(update, input.extents.E);

    OrieResult result;
    result.letters = update.Letters;
    result.length = StoredSize(update, update.Label(1), update.oldSizes.length);
    result.width = StoredSize(update, update.Label(2), update.oldSizes.width);
    result.thickness = StoredSize(update, update.Label(3), update.oldSizes.thickness);
    return result;
}

}  // namespace brenvik::mAutoCAD
