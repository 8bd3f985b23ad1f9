// The text rules shared by everybody: blanks, splitting, replacing, and positions counted in
// characters. Text is UTF-8; a byte that is no part of a valid character counts as one character and
// is never changed. Results are texts of their own, so they outlive their arguments.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// Without the blanks at both ends, at the right. Only the blank itself (0x20) counts:
/// a tab is data.
std::string Trim(std::string_view text);
std::string TrimRight(std::string_view text);

/// Whether the text holds nothing but blanks.
bool IsBlank(std::string_view text);

/// The pieces between the separators, blanks kept: "a,,b" gives "a", "", "b". An empty text has no
/// pieces.
std::vector<std::string> Split(std::string_view text, char separator);

/// The pieces with the separator between them; the counterpart of Split.
std::string Join(const std::vector<std::string>& pieces, std::string_view separator);

/// A text cut in two at the first separator, which belongs to neither side.
struct HeadAndTail {
    std::string head;
    std::string tail;
    bool found = false;
};

/// Cuts the text at the first separator. With none, the head is the whole text, the tail is empty and
/// `found` is false.
HeadAndTail SplitAtFirst(std::string_view text, char separator);

/// The text with every occurrence of `part` replaced, from left to right; what was put in is not
/// looked at again. An empty `part` changes nothing.
std::string ReplaceAll(std::string_view text, std::string_view part, std::string_view replacement);

/// The number of characters.
std::size_t CharacterCount(std::string_view text);

/// The first, the last `count` characters; the whole text when it is shorter.
std::string Left(std::string_view text, std::size_t count);
std::string Right(std::string_view text, std::size_t count);

/// The characters from position `start` (from 1) to the end, or `count` of them. Empty when the text
/// ends before `start`; `start` 0 is a defect of the caller.
std::string Mid(std::string_view text, std::size_t start, std::size_t count = std::string_view::npos);

/// The text without its last `count` characters.
std::string DropRight(std::string_view text, std::size_t count);

}  // namespace brenvik
