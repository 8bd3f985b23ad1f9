// A DXF file in text is pairs of lines, a group code and its value.
#include "cnc/proof/written_text.h"

#include <optional>

#include "base/text.h"

namespace brenvik {

namespace {

constexpr std::string_view BinaryMark = "AutoCAD Binary DXF", EndMark = "EOF", LayerCode = "8";

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// One line after another, without blanks around it.
class Lines {
  public:
    explicit Lines(std::string_view text) : mRest(text) {}
    std::optional<std::string_view> Next() {
        if (mRest.empty()) return std::nullopt;
        const std::size_t end = mRest.find('\n');
        const std::string_view line = mRest.substr(0, end);
        mRest = end == std::string_view::npos ? std::string_view() : mRest.substr(end + 1);
        return Trimmed(line);
    }

  private:
    std::string_view mRest;
};

}  // namespace

bool EndsAsDxf(std::string_view content) {
    if (content.starts_with(BinaryMark)) return content.ends_with(std::string_view("EOF\0", 4));
    const std::string_view text = Trimmed(content);
    if (!text.ends_with(EndMark)) return false;
    const std::size_t lineBreak = text.find_last_of('\n');
    if (lineBreak == std::string_view::npos || Trimmed(text.substr(lineBreak)) != EndMark) return false;
    const std::string_view before = Trimmed(text.substr(0, lineBreak));
    return Trimmed(before.substr(before.find_last_of('\n') + 1)) == "0";
}

std::vector<std::string> LayersInText(std::string_view content) {
    std::vector<std::string> layers;
    if (content.starts_with(BinaryMark)) return layers;
    Lines lines(content);
    bool inEntities = false;
    std::string_view lastValue;
    while (const auto code = lines.Next()) {
        const auto value = lines.Next();
        if (!value) break;
        if (*code == "2" && lastValue == "SECTION") inEntities = *value == "ENTITIES";
        if (inEntities && *code == LayerCode) layers.emplace_back(*value);
        lastValue = *value;
    }
    return layers;
}

}  // namespace brenvik
