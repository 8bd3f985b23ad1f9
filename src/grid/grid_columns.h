// Places of the grid's columns that the form's own rules name.
#pragma once

namespace brenvik {

inline constexpr int IdColumn = 1, PartNameColumn = 3;
inline constexpr int LengthColumn = 6, WidthColumn = 7, ThicknessColumn = 8;
inline constexpr int OrieColumn = 9;
/// The first of the three raw extents.
inline constexpr int Value1Column = 10;

/// The message for letters that name no sizes.
inline constexpr const char* LettersRefused =
    "Orientation cell must be empty or have one instance of the letters L, W and T";

}  // namespace brenvik
