// What the grid form keeps between its openings: its place and size, the column widths, and the path of the
// working database.
#pragma once

namespace brenvik {

/// Reads the grid form's settings into the session and sets the column widths that are stored as numbers.
void LoadGridSettings();

/// Notes how the form and its columns stand once it has been placed by its settings.
void NoteGridSettingsShown();

/// Writes the path, the form's place and size, and the width of each column that has a width key. A value
/// that was changed only by another program since it was read stays.
void SaveGridSettings();

}  // namespace brenvik
