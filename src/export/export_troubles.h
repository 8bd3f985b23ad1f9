// What an export has met that no message box tells of: a value that can't be read, a column that is none.
// Somebody who looks at the list alone would not see it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// Keeps a line until somebody takes it; the same line once.
void NoteExportTrouble(std::string text);
/// A line of a file that people edit by hand, as "path:line: text".
void NoteExportTrouble(std::string_view path, std::size_t line, std::string_view text);

/// The lines since the last call, in their order.
std::vector<std::string> TakeExportTroubles();

}  // namespace brenvik
