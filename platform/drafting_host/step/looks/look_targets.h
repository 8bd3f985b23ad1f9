// Layers, styles and hiding that stand on something beside the solid they mean: the modeller reads them where
// they stand on the solid itself, and passes over the others without a word.
#pragma once

#include <string>

#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// Whether a layer or a style stands on the shell of a solid, a layer on the style of one, or a whole list of
/// styles is hidden.
bool HasIndirectLooks(const Statements& statements);

/// The text of a file with each of these on the solid, or on the single styles. Numbers of statements stay.
std::string WithDirectLooks(std::string content);

}  // namespace brenvik::step
