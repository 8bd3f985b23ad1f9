// Statements of one kind that are written with all the kinds above it, "#1=(MAPPED_ITEM(#2,#3)
// REPRESENTATION_ITEM(''));": ISO 10303-21 lets a program write any entity so (external mapping). The
// modeller takes this form for entities of several kinds alone.
#pragma once

#include <string>

namespace brenvik::step {

/// The text with such statements in the plain form, "#1=MAPPED_ITEM('',#2,#3);", where their kinds are
/// exactly one kind of shapes, assemblies, units or colours with all those above it. Each line of the file
/// stays where it is. Others, among them units and rational splines, which are of several kinds, stay as they
/// are.
std::string WithPlainForms(std::string content);

}  // namespace brenvik::step
