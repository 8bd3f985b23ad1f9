// Records that are kept as the text which a DXF file has for them.
#pragma once

#include <string>

#include "drafting_host/dwg/names.h"
#include "drafting_host/dwg/objects.h"

namespace brenvik::dwg {

// Each behind OpenObject. They throw Damage.

/// Those with the record as a DXF file has it, in `groups`: blank for a line type of dashes alone.
LinetypeData ReadLinetype(Object& object, std::string& groups);
TextStyleData ReadStyle(Object& object, std::string& groups);
/// A view of the screen (VPORT) or one with a name (VIEW), as a DXF file has it.
std::string ReadScreenView(Object& object, std::string& name);
std::string ReadNamedView(Object& object);
Layout ReadLayout(Object& object);

}  // namespace brenvik::dwg
