// What the objects of a drawing say of each other, held against each other.
#pragma once

#include <string>

#include "drafting_host/dwg/links.h"
#include "drafting_host/dwg/names.h"

namespace brenvik::dwg {

/// An entity says itself in which block it stands; `block` has it. Reported where they disagree.
void CheckOwner(Reading& reading, const Holder& holder, const Common& common, const std::string& block);

/// The object that ends a polyline. One that is none is reported, and left out of the drawing.
void CheckEnd(EntityGeometry& geometry, const Holder& holder, const Sections& sections, const Texts& texts,
              const ObjectMap& map, const Kinds& kinds, Links& links);

/// The name that its BLOCK has, if any. A block's record has it too, that of an anonymous one or of a sheet
/// without its number. Reported where they disagree.
void TakeBlockName(Reading& reading, Block& block, const std::string& nameOfBegin);

/// A block lists the references that show it, mostly: some of these are gone, others were never entered. What
/// it lists must not show another one.
void CheckReferences(Reading& reading, const Names& names);

/// Layer 0 and the line types by layer, by block and continuous, which every drawing has under these names.
void CheckStandardNames(Reading& reading, const Names& names, const Header& header);

}  // namespace brenvik::dwg
