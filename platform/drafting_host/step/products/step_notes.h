// What the reader of STEP files has to tell of what it left out, in words for a user.
#pragma once

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_quarantine.h"
#include "drafting_host/step/texts/step_strings.h"

namespace brenvik::step {

/// The first text of a statement, blank where it has none or it holds nothing but blanks.
std::string FirstTextOf(const Statements& statements, const Statement& statement, CodePage codePage);

/// The name of the product that a product definition stands for; blank for none.
std::string ProductName(const Statements& statements, int definition, CodePage codePage);

/// Tells the bodies, looks and papers that fell, the looks and papers as remarks.
void NoteQuarantine(const Quarantine& quarantine, const Statements& statements, CodePage codePage,
                    StepDocument& document);

/// Reports text after the end of the file: as a remark, or as a loss where it holds statements.
void NoteTail(const Statements& statements, StepDocument& document);

/// Tells the code page of the names where it is none that the format has.
void NoteCodePage(CodePage codePage, StepDocument& document);

/// Tells names with characters that don't exist.
void NoteMendedTexts(const StandIns& texts, StepDocument& document);

/// Tells texts with an escape that has no end or other digits than its kind, with the line of the first one.
void NoteBrokenEscapes(const StandIns& texts, const Statements& statements, StepDocument& document);

/// Tells assembly usages whose parent and component the shapes' relationship has the other way round.
void NoteContradictingUsages(const Statements& statements, StepDocument& document);

/// Reports assembly usages without a place, of which the modeller makes no part.
void NoteUnplacedUsages(const Statements& statements, CodePage codePage, StepDocument& document);

/// Reports products without a definition and mapped shapes that no shape holds.
void NoteLoosePieces(const Statements& statements, CodePage codePage, StepDocument& document);

}  // namespace brenvik::step
