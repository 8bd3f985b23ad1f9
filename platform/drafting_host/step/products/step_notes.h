// What the reader of STEP files reports of the things it left out, in words for a user.
#pragma once

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_quarantine.h"
#include "drafting_host/step/texts/step_strings.h"

namespace brenvik::step {

/// The first text of a statement, blank where it has none or it holds nothing but blanks.
std::string FirstTextOf(const Statements& statements, const Statement& statement, CodePage codePage);

/// The name of the product that a product definition stands for; blank for none.
std::string ProductName(const Statements& statements, int definition, CodePage codePage);

/// Reports bodies, looks and papers that were left out; looks and papers are remarks.
void NoteQuarantine(const Quarantine& quarantine, const Statements& statements, CodePage codePage,
                    StepDocument& document);

/// Reports text after the end of the file: as a remark, or as a loss where it holds statements.
void NoteTail(const Statements& statements, StepDocument& document);

/// Reports a code page of the names that the format doesn't have.
void NoteCodePage(CodePage codePage, StepDocument& document);

/// Reports names with characters that don't exist.
void NoteMendedTexts(const StandIns& texts, StepDocument& document);

/// Reports texts whose escape has no end or wrong digits, with the line of the first one.
void NoteBrokenEscapes(const StandIns& texts, const Statements& statements, StepDocument& document);

/// Reports assembly usages whose parent and component the shapes' relationship has the other way round.
void NoteContradictingUsages(const Statements& statements, StepDocument& document);

/// Reports assembly usages without a place, of which the modeller makes no part.
void NoteUnplacedUsages(const Statements& statements, CodePage codePage, StepDocument& document);

/// Reports products without a definition and mapped shapes that no shape holds.
void NoteLoosePieces(const Statements& statements, CodePage codePage, StepDocument& document);

}  // namespace brenvik::step
