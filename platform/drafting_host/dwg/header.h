// The variables of a drawing, of which the file holds a long row without names.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "drafting_host/dwg/containers.h"
#include "drafting_host/dwg/streams.h"

namespace brenvik::dwg {

/// What a reader needs besides the drawing's variables: the objects that it begins with.
struct Header {
    HandleValue handleSeed = 0, currentLayer = 0, ucsName = 0, groupDictionary = 0;
    HandleValue modelSpace = 0, paperSpace = 0;
    HandleValue dimensionStyle = 0, multilineStyle = 0;

    /// Variables that a drawing has no member for, by name with their groups.
    std::vector<std::pair<std::string, std::string>> variables{};
    /// Those that name an entry of a table.
    enum class Table { Styles, Linetypes, Blocks, Ucs };
    struct Reference {
        std::string name;
        int code = 0;
        Table table = Table::Styles;
        HandleValue handle = 0;
    };
    std::vector<Reference> references{};
    /// All that lead to an object, by the variables' names or those of what they lead to.
    std::map<std::string, HandleValue> handles{};
};

/// Reads the section and the template's measurement into `data`. A damaged section is reported; what was read
/// before the damage stays.
Header ReadHeader(Sections& sections, const Texts& texts, DrawingData& data);

}  // namespace brenvik::dwg
