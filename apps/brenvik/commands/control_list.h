// The controls of all forms by the names that journals call them by.
#pragma once

#include <string>

namespace brenvik::app {

/// A page of Markdown: for each form how it opens, and a row for each control. Made from the forms
/// themselves, as they were designed.
std::string ControlList();

}  // namespace brenvik::app
