// Operators that set one shape into another: an origin, up to three axes, and a scale.
#pragma once

#include <optional>
#include <string>

#include "drafting_host/step/places/placement_frames.h"
#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// What was expected of an operator that does more than move and turn a shape: one that scales it, or
/// whose axes leave its turn open. The modeller takes place and turn, and leaves the rest out. Null for a
/// sound operator and for any other statement.
std::optional<std::string> FaultOfOperator(const Statements& statements, const Statement& statement);

/// Where a sound operator puts a shape. One that mirrors does so across the shape's YZ plane ahead of that.
struct OperatorPlace {
    Frame frame;
    bool mirrors = false;
};
/// Null for an operator with a fault and for any other statement.
std::optional<OperatorPlace> PlaceOfOperator(const Statements& statements, int number);

/// Whether a file has sound operators that leave axes to the format's rules, or are of several kinds.
bool HasShortOperators(const Statements& statements);

/// The content with all three axes in these, in the short form: the modeller has rules of its own.
std::string WithWholeOperators(std::string content);

}  // namespace brenvik::step
