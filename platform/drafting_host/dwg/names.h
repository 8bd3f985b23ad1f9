// The tables of a drawing by handle: what entities refer to, with the names under which the drawing has it.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "drafting_host/dwg/containers.h"
#include "drafting_host/dwg/header.h"
#include "drafting_host/dwg/object_map.h"
#include "drafting_host/dwg/objects.h"

namespace brenvik::dwg {

/// A block's record and its BLOCK entity.
struct Block {
    HandleValue record = 0;
    std::string name;
    Point3 base;
    bool isAnonymous = false, isExternal = false;
    HandleValue first = 0, last = 0;    ///< Up to release 2000.
    std::vector<HandleValue> entities;  ///< From release 2004 on.
    HandleValue layout = 0;
};

struct Dictionary {
    std::vector<std::pair<std::string, HandleValue>> entries;
};

struct Layout {
    std::string name;
    HandleValue block = 0;
};

/// The drawing's own files of records: read in one walk over the map before any entity.
struct Names {
    std::unordered_map<HandleValue, std::string> layers, linetypes, styles, applications, ucs;
    std::vector<Block> blocks;  ///< In the order of the map.
    std::unordered_map<HandleValue, std::string> blockNames;
    std::unordered_map<HandleValue, Dictionary> dictionaries;
    std::unordered_map<HandleValue, Layout> layouts;
    std::vector<GroupData> groups;
};

// The records, each behind OpenObject. They throw Damage.
LayerData ReadLayer(Object& object, HandleValue& linetype);
LinetypeData ReadLinetype(Object& object);
TextStyleData ReadStyle(Object& object, bool& isShapeFile);
UcsData ReadUcs(Object& object);
std::string ReadApplication(Object& object);
Block ReadBlockRecord(Object& object);
/// The full name, which the record of an anonymous block lacks.
std::string ReadBlockName(Object& object, HandleValue& record);
Dictionary ReadDictionary(Object& object);
GroupData ReadGroup(Object& object);
Layout ReadLayout(Object& object);

}  // namespace brenvik::dwg
