// The name of the record that holds an entity in a drawing file.
#pragma once

#include <string_view>

#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik {

/// The record's name; an arc all the way round is a circle.
std::string_view EntityName(const EntityGeometry& geometry);
bool IsFullRound(const ArcData& arc);

}  // namespace brenvik
