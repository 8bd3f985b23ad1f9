// Takes out of a file's records what a drawing has no value for, as text that can be written again.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "drafting_host/dxf/data/kept_records.h"
#include "drafting_host/dxf/reading/group_reader.h"

namespace brenvik {

/// Whether a drawing holds entities of this kind.
bool IsUnderstoodKind(std::string_view name);

/// All groups of a record.
std::string TextOfGroups(std::span<const Group> groups);
/// A record as a whole.
KeptRecord KeptRecordOf(const Record& record);

/// What an understood entity's record holds besides its values; extended data are values. Brackets and
/// embedded objects have to stand in the record still.
Kept<KeptGroups> LeftoversOfEntity(const Record& record);
/// The same of a vertex of an old polyline, or of its end. `layer` is the polyline's, as in the file.
KeptGroups::Vertex LeftoversOfVertex(const Record& record, std::string_view layer);
/// The same of an entry of the tables LAYER, UCS, BLOCK_RECORD, extended data included.
KeptGroups LeftoversOfEntry(std::string_view table, std::span<const Group> groups);

/// Whether a drawing has a value for a group of an understood kind.
bool IsValueOfKind(std::string_view kind, int code);

/// Counts the groups of a record that neither a drawing nor the file keeps, as in records of release 12: by
/// kind and code. References to other records are nobody's loss there.
void CountLost(std::map<std::string, std::size_t>& lost, const std::string& kind, std::string_view groups);

/// Replaces the record's own handle; puts one in front of a record without.
void ChangeOwnHandle(KeptRecord& record, HandleValue handle);

}  // namespace brenvik
