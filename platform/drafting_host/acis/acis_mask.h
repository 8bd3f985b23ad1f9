// How ACIS text hides in a DXF file. Drawings carry a body's text masked, character by character, and an
// ASCII DXF file puts a blank behind every "^" that the masking brings forth, since "^" opens a control
// character there. A line is joined from its groups first, then unescaped, then unmasked; a "^" and its
// blank may stand in two groups.
#pragma once

#include <string>
#include <string_view>

namespace brenvik::acis {

/// A masked line in clear: every printable character c but the blank is 159 - c. Blanks, control
/// characters and bytes beyond ASCII stay as they are. The line must be unescaped already.
std::string DecodeLine(std::string_view masked);

/// A line in clear, masked; the counterpart of DecodeLine and the same mapping.
std::string EncodeLine(std::string_view plain);

/// Drops the blank that follows a "^". A "^" without a blank behind it stays.
std::string UnescapeDxf(std::string_view escaped);

/// Puts a blank behind every "^". The result may be cut anywhere, also between the two.
std::string EscapeDxf(std::string_view masked);

/// Whether a body's first line stands in clear: it begins with the version number, whose digits no
/// masked line begins with. Leading blanks are passed over.
bool IsPlainFirstLine(std::string_view line);

}  // namespace brenvik::acis
