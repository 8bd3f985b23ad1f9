// Shapes with solids that a product's own shape has at a place, said by a relationship with a transformation
// instead of a mapped item. The modeller follows such a relationship for assembly usages alone.
#pragma once

#include <string>

namespace brenvik::step {

/// The content in which these shapes are mapped into the product's and the relationships are gone, each line
/// where it was.
std::string WithRelatedShapes(std::string content);

}  // namespace brenvik::step
