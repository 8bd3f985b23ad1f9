// Records that a file's tables and dictionaries name and its map of objects lacks: what hangs on them would
// be gone without a trace.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "drafting_host/dwg/object_map.h"
#include "drafting_host/dwg/objects.h"
#include "drafting_host/dxf/reading/reading.h"

namespace brenvik::dwg {

class MissingRecords {
  public:
    /// The entries of a table; `kind` is that of its head, such as LAYER_CONTROL. Throws Damage.
    void TakeTable(std::string_view kind, Object& head);
    /// An object of a kind that the file can't do without; 0 is none.
    void Expect(HandleValue handle, std::string_view kind, std::string what);
    /// The kind of an object; blank for one that can't be read, which is reported by itself.
    using KindOf = std::function<std::string_view(const ObjectMap::Entry&)>;
    /// Reports those that the map doesn't have or has as another kind, in the order in which they were named.
    void Tell(Reading& reading, const ObjectMap& map, const KindOf& kindOf) const;

  private:
    struct Expected {
        HandleValue handle = 0;
        std::string kind, what;
    };
    std::vector<Expected> mExpected;
};

}  // namespace brenvik::dwg
