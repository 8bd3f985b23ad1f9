// The two ways in which pages of binary drawings are packed: runs of plain bytes, and copies of what was
// unpacked before.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace brenvik::dwg {

/// The pages of releases 2004 and 2010 on. Null if the data are damaged or come to more than `most`
/// bytes.
std::optional<std::string> Unpack2004(std::string_view packed, std::size_t most);
/// Unpacks data of release 2007. Empty when they are damaged or don't unpack to `size` bytes.
std::optional<std::string> Unpack2007(std::string_view packed, std::size_t size);

}  // namespace brenvik::dwg
