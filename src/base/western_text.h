// Text of the editors of the past, which wrote the code page of their system. Drawings hold UTF-8, so a name
// with an umlaut is the same only when both are brought to one form.
#pragma once

#include <string>
#include <string_view>

namespace brenvik {

/// Whether all of the text is valid UTF-8.
bool IsUtf8(std::string_view text);

/// The text in UTF-8; bytes that are none are taken for characters of the Western Windows code page (1252).
std::string WesternAsUtf8(std::string_view bytes);

}  // namespace brenvik
