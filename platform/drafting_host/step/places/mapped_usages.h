// Assembly usages whose place is a mapped item: the component's shape stands in the assembly's, and the usage
// has no place of its own.
#pragma once

#include <string>
#include <vector>

#include "drafting_host/step/texts/step_document.h"

namespace brenvik::step {

/// The content in which these usages are placed by a relationship of the shapes and the mapped items are
/// gone, each line where it was. Of several mapped items of one component each is a usage; one that repeats
/// the place of a usage is left out, with a remark in `notes`. A look of such an item names the usage then.
std::string WithPlacedUsages(std::string content, std::vector<StepNote>& notes);

}  // namespace brenvik::step
