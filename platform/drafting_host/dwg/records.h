// The records of tables, blocks, dictionaries and groups.
#pragma once

#include <string>

#include "drafting_host/dwg/names.h"
#include "drafting_host/dwg/objects.h"

namespace brenvik::dwg {

// Each behind OpenObject. They throw Damage.
LayerData ReadLayer(Object& object, HandleValue& linetype);
UcsData ReadUcs(Object& object);
std::string ReadApplication(Object& object);
Block ReadBlockRecord(Object& object);
/// The full name, which the record of an anonymous block lacks.
std::string ReadBlockName(Object& object, HandleValue& record);
Dictionary ReadDictionary(Object& object);
GroupData ReadGroup(Object& object);

/// What every table record begins with: its name, and where it came from.
std::string ReadRecordName(Object& object);

}  // namespace brenvik::dwg
