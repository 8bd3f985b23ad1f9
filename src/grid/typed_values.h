// Values typed into the list that can't be used: keys that a cell doesn't take, letters that name no sizes,
// values that are written to the drawing though no list or run can use them. The rules of typing and of Apply
// stay as they are; here each such value is reported with its part.
#pragma once

#include <string_view>

namespace brenvik {

/// Notes keys typed into the letters of a row, of which the cell took `passed`. If that is blank, the cell
/// kept its text, and the edit counts as failed.
void NoteKeysNotTaken(int row, std::string_view typed, std::string_view passed);

/// Letters that name no sizes were refused, which empties the letters and the sizes of the row. `before` are
/// those that stood there.
void NoteRefusedLetters(int row, std::string_view typed, std::string_view before);

/// A size of a row was typed over. It goes out with the list, and no Apply writes it to the solid.
void NoteTypedSize(int column, int row);
/// The letters have made the sizes of the row anew.
void ForgetTypedSizes(int row);
/// The list is a new one.
void ForgetTypedSizes();

/// Something of a row was typed over or made anew: in one row, or in all that the list shows.
void NoteEditedRow(int row);
void NoteEditedRows();
/// An Apply has written the rows that the list shows; of the edited ones the others have stayed behind.
void NoteAppliedRows();
/// When the list closes: reports edited rows that the last Apply did not write.
void NoteRowsLeftBehind();

/// Reports what an Apply has written of a row, or couldn't write, that no list or run can use.
void NoteAppliedValues(int row);

}  // namespace brenvik
