// Operators that set one shape into another: an origin, up to three axes, and a scale.
#pragma once

#include <optional>
#include <string>

#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_statements.h"
#include "drafting_host/step/texts/step_text.h"

namespace brenvik::step {

/// What was expected of an operator that does more than move and turn a shape: one that scales or mirrors it,
/// or whose axes leave its turn open. The modeller takes place and turn, and leaves the rest out. Null for
/// a sound operator, for one that mirrors a component into its assembly, and for any other statement.
std::optional<std::string> FaultOfOperator(const Statements& statements, const Statement& statement);

/// Whether a file has sound operators that leave axes to the format's rules, or are of several kinds.
bool HasShortOperators(const Statements& statements);

/// The content with all three axes in these, in the short form: the modeller has rules of its own.
std::string WithWholeOperators(std::string content);

/// Reports components whose places in assemblies mirror them: they are read as they are drawn.
void NoteMirroredUsages(const Statements& statements, CodePage codePage, StepDocument& document);

}  // namespace brenvik::step
