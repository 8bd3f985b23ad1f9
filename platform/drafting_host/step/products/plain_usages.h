// Assembly usages in forms that the modeller doesn't know, brought into the plain one before anything else is
// looked at: statements of several kinds, and usages that stand for a quantity.
#pragma once

#include <string>
#include <vector>

#include "drafting_host/step/texts/step_document.h"

namespace brenvik::step {

/// The content with plain usages in their places, each line where it was; a usage that stands for several
/// pieces has one for each of them. What is remarked or lost thereby comes into `notes`.
std::string WithPlainUsages(std::string content, std::vector<StepNote>& notes);

}  // namespace brenvik::step
