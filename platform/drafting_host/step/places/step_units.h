// The units of length of a STEP file as its statements have them: by metres and a prefix, or by a conversion
// that names another unit, which may be a conversion itself (a foot of 12 inches of 25.4 millimetres).
#pragma once

#include <optional>
#include <string>

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_statements.h"
#include "drafting_host/step/texts/step_text.h"

namespace brenvik::step {

/// Whether a unit of length is defined by one that is a conversion itself. The modeller knows no such units.
bool HasNestedUnits(const Statements& statements);

/// The text of a file with each such unit defined by metres directly. Numbers of statements stay.
std::string WithDirectUnits(std::string content);

/// What the unit of length of a representation's context (number of its statement) measures in millimetres;
/// null if the context has none that is known.
std::optional<double> UnitOfContext(const Statements& statements, int context);

/// Where a unit of length can't be taken, and what was expected there.
struct UnitFault {
    std::size_t place = 0;
    std::string expected;
};

/// What is wrong with a statement that is a unit of length: a prefix or name that the format doesn't have, of
/// which the modeller makes metres, a factor that is none, another quantity that it is measured by, or a size
/// in which no part is drawn. Null for a sound unit and for any other statement.
std::optional<UnitFault> FaultOfUnit(const Statements& statements, const Statement& statement);

/// Reports contradictions in the units of length of the file's contexts: two of different sizes in one
/// context, of which the last counts, and a unit whose name says another size than its factor, which counts.
void NoteUnits(const Statements& statements, CodePage codePage, StepDocument& document);

}  // namespace brenvik::step
