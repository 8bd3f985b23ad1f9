// Letters, sizes and turns. Sizes are compared for equality after rounding, so that a panel with two equal
// sizes stays as it lies.
#include "cnc/laying/orientation.h"

#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "base/text.h"
#include "cnc/drawing/drawing_walk.h"
#include "parts/mautocad.h"
#include "parts/part_data_faults.h"
#include "session/message.h"

namespace brenvik {

namespace {

constexpr int ExtentDecimals = 5;
/// The host's coordinates are good to the ninth decimal, so three more than are asked for hold no noise.
constexpr int DecimalsBeforeNoise = 3;
constexpr std::string_view UsualLetters = "LWT";

enum class TurnAxis { X, Y, Z };

std::string_view NameOf(TurnAxis axis) {
    switch (axis) {
        case TurnAxis::X:
            return "x ";
        case TurnAxis::Y:
            return "y ";
        case TurnAxis::Z:
            return "z ";
    }
    return {};
}

std::string LettersOf(const AcadEntity& solid) {
    std::string letters = FoldUpper(mAutoCAD::PartDataOf(solid, "ORIE"));
    if (!IsBlank(letters)) return letters;
    ShowMessage("ORIE data not detected on this part, so it is being set to LWT");
    return std::string(UsualLetters);
}

/// Turns all about an axis through the origin of the drawing.
void TurnAll(AcadDocument& drawing, TurnAxis axis, int degrees) {
    drawing.SendCommand("rotate3d ");
    drawing.SendCommand("all ");
    drawing.SendCommand(" ");
    drawing.SendCommand(NameOf(axis));
    drawing.SendCommand("0,0,0 ");
    drawing.SendCommand(std::to_string(degrees) + " ");
}

}  // namespace

double Settled(double value, int decimals) {
    return RoundHalfEven(RoundHalfEven(value, decimals + DecimalsBeforeNoise), decimals);
}

PartExtents ExtentsOf(const Box3& box) {
    return {Settled(box.max.x - box.min.x, ExtentDecimals), Settled(box.max.y - box.min.y, ExtentDecimals),
            Settled(box.max.z - box.min.z, ExtentDecimals)};
}

mAutoCAD::LabelledSizes SizesByLetters(std::string_view letters, const PartExtents& extents) {
    const auto& [x, y, z] = extents;
    mAutoCAD::SortedExtents sorted;
    sorted.Big = mAutoCAD::LargestOfThree(x, y, z);
    sorted.Small = mAutoCAD::SmallestOfThree(x, y, z);
    sorted.Mid = RoundHalfEven(x + y + z - sorted.Big - sorted.Small, ExtentDecimals);
    return mAutoCAD::MapLetters(letters, sorted);
}

std::optional<std::string> UsableLettersOf(const AcadEntity& solid) {
    std::string letters = LettersOf(solid);
    const std::optional<std::string> fault = LettersFault(letters);
    if (!fault) return letters;
    std::string name;
    Skip([&] { name = mAutoCAD::PartDataOf(solid, "PartName"); });
    ShowMessage("The part" + (name.empty() ? std::string() : " \"" + name + "\"") + " is skipped: " + *fault +
                ".");
    return std::nullopt;
}

void TurnOver(AcadDocument& drawing) { TurnAll(drawing, TurnAxis::X, 180); }

mAutoCAD::LabelledSizes TurnByLetters(AcadDocument& drawing, const AcadEntity& solid,
                                      std::string_view letters) {
    constexpr int quarter = 90;
    const auto extents = [&solid] { return ExtentsOf(solid.GetBoundingBox()); };
    mAutoCAD::LabelledSizes sizes = SizesByLetters(letters, extents());
    const double length = LenientNumber(sizes.length), thickness = LenientNumber(sizes.thickness);
    if (length != extents().x) TurnAll(drawing, TurnAxis::Z, quarter);
    if (length != extents().x) TurnAll(drawing, TurnAxis::Y, quarter);
    if (thickness != extents().z) TurnAll(drawing, TurnAxis::X, quarter);
    return sizes;
}

void MoveOriginToCorner(AcadDocument& drawing, const AcadEntity& solid) {
    const Point3 corner = solid.GetBoundingBox().min;
    drawing.SendCommand("regen ");
    drawing.SendCommand("ucs ");
    drawing.SendCommand("move ");
    drawing.SendCommand(PointAnswer(corner));
}

}  // namespace brenvik
