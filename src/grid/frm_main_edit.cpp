// Editing in the grid: what may be typed, the letters that become sizes, and the tick box that follows the
// current cell.
#include <algorithm>
#include <array>
#include <string>

#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "base/text.h"
#include "forms/repaint_off.h"
#include "grid/frm_main.h"
#include "grid/grid_columns.h"
#include "grid/mod4spread.h"
#include "grid/typed_values.h"
#include "parts/orie_update.h"
#include "session/message.h"

namespace brenvik {

namespace {

/// From this many on, the characters allowed are not compared, and no letter passes.
constexpr std::size_t TooManyAllowed = 4;

bool IsControlKey(std::string_view key) {
    return std::all_of(key.begin(), key.end(), [](char c) {
        const auto code = static_cast<unsigned char>(c);
        return code < 0x20 || code == 0x7F;
    });
}

}  // namespace

bool frmMain::checkEntry(std::string_view key, std::string_view allowed) {
    if (IsControlKey(key)) return true;
    const std::size_t count = CharacterCount(allowed);
    if (count >= TooManyAllowed) return false;
    const std::string upper = FoldUpper(key);
    for (std::size_t place = 1; place <= count; ++place)
        if (Mid(allowed, place, 1) == upper) return true;
    return false;
}

void frmMain::CurrentCellMoved(int column, int row) {
    if (Loading || row <= 0) return;
    std::string header;
    if (!Skip([&] { header = fpSpread1.CellText(column, 0); })) {
        const bool realMove = column > 0;
        if (realMove) ShowMessage("Unable to determine column name");
        return;
    }
    for (const auto& control : Controls())
        if (control->Name().starts_with("chk")) dynamic_cast<CheckControl&>(*control).SetValue(0);
    for (const ColumnTickBox& box : ColumnTickBoxes())
        if (box.header == FoldLower(header)) Get<CheckControl>(box.name).SetValue(1);
}

void frmMain::SetSizesFromLetters(int row) {
    // The grid hands its numbers over in single precision.
    std::array<double, 3> extents{};
    for (std::size_t i = 0; i < extents.size(); ++i)
        extents[i] =
            ToSingle(LenientNumber(Mod4Spread::GetCellText(Value1Column + static_cast<int>(i), row)));
    const mAutoCAD::LabelledSizes sizes = mAutoCAD::MapLetters(
        Mod4Spread::GetCellText(OrieColumn, row), mAutoCAD::SortExtents(extents[0], extents[1], extents[2]));
    fpSpread1.SetCellText(LengthColumn, row, sizes.length);
    fpSpread1.SetCellText(WidthColumn, row, sizes.width);
    fpSpread1.SetCellText(ThicknessColumn, row, sizes.thickness);
}

void frmMain::OrieEdited(int row) {
    if (Loading) return;
    const std::string letters = Mod4Spread::GetCellText(OrieColumn, row);
    const bool valid = mAutoCAD::AreValidLetters(letters);
    if (!valid) {
        ShowMessage(LettersRefused);
        NoteRefusedLetters(row, letters, fpSpread1.SavedText(OrieColumn, row));
    }
    ForgetTypedSizes(row);
    const RepaintOff repaintOff(fpSpread1);
    if (valid) {
        SetSizesFromLetters(row);
    } else {
        for (const int column : {OrieColumn, LengthColumn, WidthColumn, ThicknessColumn})
            fpSpread1.SetCellText(column, row, "");
    }
    fpSpread1.SaveOrTell();
}

}  // namespace brenvik
