// Data of a binary drawing that are passed on as the text that a DXF file has of them: table entries, sheets,
// blocks' heads and variables. Gathered while the records are read, handed over when all names are known.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "drafting_host/dwg/header.h"
#include "drafting_host/dwg/links.h"
#include "drafting_host/dwg/names.h"
#include "drafting_host/dxf/reading/reading.h"

namespace brenvik::dwg {

/// Extended data with the names of their applications; `what` and the handle say whose data they are.
using NamedXData = std::function<std::vector<XDataOfApp>(std::string_view what, HandleValue handle,
                                                         const std::vector<RawXData>& data)>;

class KeptTables {
  public:
    /// The entry at a place of the drawing's line types or text styles.
    void AddLinetype(std::size_t place, std::string groups, std::vector<RawXData> data);
    void AddStyle(std::size_t place, std::string groups, std::vector<RawXData> data);
    /// An entry of which a drawing has no member: a view, the style of a shape file.
    void AddEntry(std::string_view table, HandleValue handle, std::string groups, std::vector<RawXData> data);
    /// Puts all of them into the drawing; missing text styles are reported through `links`.
    void HandOver(Reading& reading, const Names& names, const NamedXData& named, Links& links);

  private:
    struct Entry {
        std::size_t place = 0;
        std::string_view table;
        HandleValue handle = 0;
        std::string groups;
        std::vector<RawXData> data;
    };
    std::vector<Entry> mLinetypes, mStyles, mEntries;
};

/// A block's record, and its BLOCK if that holds more than a name and a place.
void KeepBlock(Reading& reading, const Block& block, std::string_view layer,
               const std::vector<RawXData>& data, const NamedXData& named);
void KeepLayout(Reading& reading, const Layout& layout, const Block& block, const NamedXData& named);
void KeepVariables(Reading& reading, const Header& header, const Names& names, unsigned maintenance,
                   Links& links);

}  // namespace brenvik::dwg
