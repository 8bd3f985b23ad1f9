// Two tables have entries beside those that they count: the spaces, and the line types by block and by layer.
#include "drafting_host/dwg/missing_records.h"

#include <utility>

#include "base/handle_text.h"

namespace brenvik::dwg {

void MissingRecords::TakeTable(std::string_view kind, Object& head) {
    constexpr std::string_view ending = "_CONTROL";
    const std::string_view table = kind.substr(0, kind.size() - ending.size());
    if (table == "VX" || table == "DIMSTYLE") return;  // nothing of these arrives
    ReadOwner(head);
    Streams& streams = head.streams;
    std::size_t count = streams.handles.Count(streams.data.BitLong(), 8);
    if (table == "BLOCK" || table == "LTYPE") count += 2;
    const std::string what = table == "BLOCK" ? "BLOCK_RECORD" : std::string(table);
    for (std::size_t entry = 0; entry < count; ++entry) Expect(streams.Handle(), what, what);
}

void MissingRecords::Expect(HandleValue handle, std::string_view kind, std::string what) {
    if (handle != 0) mExpected.push_back({handle, std::string(kind), std::move(what)});
}

void MissingRecords::Tell(Reading& reading, const ObjectMap& map, const KindOf& kindOf) const {
    for (const auto& [handle, kind, what] : mExpected) {
        const ObjectMap::Entry* const entry = map.Find(handle);
        const std::string_view found = entry == nullptr ? std::string_view() : kindOf(*entry);
        if (entry != nullptr && (found.empty() || found == kind)) continue;
        reading.Note(0, what + " (handle " + HandleToText(handle) +
                            ") is missing: the file names it and has no such object" +
                            (what == "BLOCK_RECORD" ? "; its entities are missing with it" : ""));
    }
}

}  // namespace brenvik::dwg
