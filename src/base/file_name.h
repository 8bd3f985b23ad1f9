// Names that people type, made fit for files: what a name can't hold, and how long it may be.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// Longest file name in bytes, with its extension, that every system and path of the shop takes.
inline constexpr std::size_t LongestFileName = 240;

/// The text with each refused character, and each control character, replaced by an underscore.
std::string WithoutCharacters(std::string_view refused, std::string_view text);

/// The text as a piece of a file name, on any system that the file may be taken to.
std::string FileNameText(std::string_view text);

/// Shortens the texts until they have no more than `room` bytes together. The longest gives way, and
/// characters stay whole.
void MakeFit(std::vector<std::string>& texts, std::size_t room);

}  // namespace brenvik
