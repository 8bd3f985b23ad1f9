// What files of other systems have no place for: part data, layers and colours. It is reported once for all
// parts, since nobody could see in the file that it is gone.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "drafting_host/document/host_document.h"

namespace brenvik {

/// The part data that reading a file of another system gives to a solid: the letters, and its extents as the
/// saved ones, written as the scan of a cut list does, so that the first scan finds nothing changed.
std::array<std::pair<std::string_view, std::string>, 4> DataOfReading(const std::string& letters,
                                                                      const solids::Extents& extents);

/// The text of a solid's part data; blank where there is none.
std::string PartText(const HostEntity& entity, std::string_view key);

/// Reports the parts with data that `form` has no place for, except data under `kept`. Data that reading the
/// file restores by itself aren't lost.
void TellLostPartData(const HostDocument& document, const std::vector<const HostSolid*>& solids,
                      std::string_view form, const std::vector<std::string_view>& kept,
                      std::vector<std::string>& problems);

/// Reports that ACIS text can't hold layers and colours, if there are any.
void TellLostLooks(const std::vector<const HostSolid*>& solids, std::vector<std::string>& problems);

}  // namespace brenvik
