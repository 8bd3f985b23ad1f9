// The section OBJECTS: dictionaries, groups and layouts. They refer to each other by handle in any order,
// so they are gathered first and joined at the end.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "drafting_host/dxf/reading/reading.h"

namespace brenvik {

class ObjectReader {
  public:
    explicit ObjectReader(Reading& reading) : mReading(reading) {}

    void Take(Record& record);
    /// Puts the groups and the layouts' names into the drawing.
    void Finish();

  private:
    using Entries = std::vector<std::pair<std::string, HandleValue>>;
    struct Layout {
        HandleValue handle = 0, blockRecord = 0;
        std::string name;
    };

    void TakeDictionary(Groups groups);
    void TakeGroup(Groups groups);
    void TakeLayout(Groups groups);
    const Entries* RootDictionary(std::string_view name);
    void NameGroups();
    void KeepHandles();

    Reading& mReading;
    std::map<HandleValue, Entries> mDictionaries;
    HandleValue mRoot = 0;
    std::vector<GroupData> mGroups;
    std::vector<Layout> mLayouts;
};

}  // namespace brenvik
