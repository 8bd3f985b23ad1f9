// What the text of a part file shows before it is read as a drawing.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// A group as it stands: its code and its value, without the ends of their lines.
struct TextGroup {
    std::string_view code, value;
    std::size_t line = 0;  ///< Of the code, counted from 1.
};

/// The groups of a DXF file in text, one after another: a code alone on a line, and its value on the next.
class TextGroups {
  public:
    explicit TextGroups(std::string_view text) : mRest(text) {}
    /// Nothing at the end, where half a group may be left.
    std::optional<TextGroup> Next();

  private:
    std::optional<std::string_view> NextLine();

    std::string_view mRest;
    std::size_t mLine = 0;
};

bool HoldsBinaryGroups(std::string_view content);

/// Whether a DXF file has its end: the mark that closes it is the last thing in it, so a file that was cut
/// off on its way has none. Readers of drawings make do without.
bool EndsAsDxf(std::string_view content);

/// The layers of the entities of a DXF file in text, in their order. None of a binary one.
std::vector<std::string> LayersInText(std::string_view content);

}  // namespace brenvik
