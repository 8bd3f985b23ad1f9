// What the text of a part file tells before anybody reads it as a drawing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// Whether a DXF file has its end: the mark that closes it is the last thing in it, so a file that was cut
/// off on its way has none. Readers of drawings make do without.
bool EndsAsDxf(std::string_view content);

/// The layers of the entities of a DXF file in text, in their order. None of a binary one.
std::vector<std::string> LayersInText(std::string_view content);

}  // namespace brenvik
