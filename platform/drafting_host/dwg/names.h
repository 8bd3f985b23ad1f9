// The tables of a drawing by handle: what entities refer to, with the names under which the drawing has it.
#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
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
    HandleValue begin = 0;              ///< Its BLOCK entity.
    HandleValue first = 0, last = 0;    ///< Up to release 2000.
    std::vector<HandleValue> entities;  ///< From release 2004 on.
    HandleValue layout = 0;
    std::vector<HandleValue> references;  ///< The block references that show it, from release 2000 on.
    std::string groups;  ///< Of its record: unit and how it is scaled, from release 2007 on; its picture.
    std::string description, drawing;  ///< Its description; the file of another drawing that it shows.
    bool isOverlay = false;
    std::vector<RawXData> xdata;
};

struct Dictionary {
    std::vector<std::pair<std::string, HandleValue>> entries;
};

struct Layout {
    std::string name;
    HandleValue block = 0, handle = 0, dictionary = 0;
    std::string groups;  ///< Blank where a part of it can't be read.
    std::vector<RawXData> xdata;
};

/// The drawing's own files of records: read in one walk over the map before any entity.
struct Names {
    std::unordered_map<HandleValue, std::string> layers, linetypes, styles, applications, ucs;
    std::unordered_set<HandleValue> shapeFiles;  ///< Those of the styles that no text can have.
    std::vector<Block> blocks;                   ///< In the order of the map.
    std::unordered_map<HandleValue, std::string> blockNames;
    /// The BLOCK entities, which have the blocks' full names.
    struct Begin {
        HandleValue record = 0;
        std::string name;
        std::vector<RawXData> xdata;
    };
    std::unordered_map<HandleValue, Begin> begins;
    std::unordered_map<HandleValue, Dictionary> dictionaries;
    std::unordered_map<HandleValue, Layout> layouts;
    std::vector<GroupData> groups;
};

}  // namespace brenvik::dwg
