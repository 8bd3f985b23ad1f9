// Letters that a run is about to work with, and whether they can be relied on.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brenvik {

class AcadEntity;

/// What is wrong with taking the letters of a solid as they stand on it: the extents saved with them are
/// damaged, or by its present extents they would be others by now. Null for a solid without letters or
/// without any saved extents, and for one that can't be measured.
std::optional<std::string> FaultOfLettersInUse(const AcadEntity& solid);

/// Notes that a solid has no letters, so that whoever works on it takes the usual ones.
void NoteMissingLetters(const AcadEntity& solid);

/// Letters that a scan has made out of a solid's data though these could not be right. Each scan begins anew.
void ForgetGuessedLetters();
void NoteGuessedLetters(std::string_view handle, std::string_view letters);
/// Whether these are the letters that were guessed for the solid, and not some that a person has typed since.
bool AreGuessedLetters(std::string_view handle, std::string_view letters);

}  // namespace brenvik
