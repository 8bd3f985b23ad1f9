// The ACIS data of solids, regions and bodies: masked text up to release 2000, binary data within the entity
// up to 2010, binary data in a store of their own from 2013 on.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "drafting_host/dwg/containers.h"
#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik::dwg {

/// The bytes of the store that begin like binary ACIS data, by the handles of their entities. Damage is
/// reported in the sections' notes. Thumbnails lie there too and are passed over.
std::unordered_map<HandleValue, std::string> ReadDataStore(Sections& sections);

/// Whether data begin like binary ACIS data.
bool IsBinaryAcis(std::string_view data);

/// The length of binary ACIS data up to behind their end mark, found token by token, since a name may hold
/// the mark's words. Null if there is no end mark.
std::optional<std::size_t> BinaryAcisLength(std::string_view data);

/// The text behind its mask: each character from "!" to "~" stands for another one; line ends become "\n".
std::string Unmasked(std::string_view masked);

}  // namespace brenvik::dwg
