// Extended data of table records, which a drawing keeps as the text that a DXF file has of them.
#pragma once

#include <span>
#include <string>

#include "drafting_host/dxf/drawing_data.h"

namespace brenvik::dwg {

/// The groups of extended data, from each application's name on.
std::string GroupsOfXData(std::span<const XDataOfApp> data);

}  // namespace brenvik::dwg
