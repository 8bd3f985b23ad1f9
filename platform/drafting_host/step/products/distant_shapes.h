// Shapes that a product reaches by several relations: "its shape is that one, which is this one". The
// modeller follows a single relation.
#pragma once

#include <string>

#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

bool HasDistantShapes(const Statements& statements);

/// The content with a relation from each product's shape to the shapes with solids that lie further away.
std::string WithNearShapes(std::string content);

}  // namespace brenvik::step
