// A DXF file in text is pairs of lines, a group code and its value.
#include "cnc/proof/written_text.h"

#include "base/byte_order_mark.h"
#include "base/trimmed.h"

namespace brenvik {

namespace {

constexpr std::string_view BinaryMark = "AutoCAD Binary DXF", EndMark = "EOF", LayerCode = "8";

}  // namespace

std::optional<std::string_view> TextGroups::NextLine() {
    if (mLine == 0) mRest = WithoutByteOrderMark(mRest);
    if (mRest.empty()) return std::nullopt;
    ++mLine;
    const std::size_t end = mRest.find('\n');
    std::string_view line = mRest.substr(0, end);
    mRest = end == std::string_view::npos ? std::string_view() : mRest.substr(end + 1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

std::optional<TextGroup> TextGroups::Next() {
    const std::optional<std::string_view> code = NextLine();
    const std::size_t line = mLine;
    const std::optional<std::string_view> value = code ? NextLine() : std::nullopt;
    if (!value) return std::nullopt;
    return TextGroup{*code, *value, line};
}

bool HoldsBinaryGroups(std::string_view content) { return content.starts_with(BinaryMark); }

bool EndsAsDxf(std::string_view content) {
    if (HoldsBinaryGroups(content)) return content.ends_with(std::string_view("EOF\0", 4));
    const std::string_view text = Trimmed(content);
    if (!text.ends_with(EndMark)) return false;
    const std::size_t lineBreak = text.find_last_of('\n');
    if (lineBreak == std::string_view::npos || Trimmed(text.substr(lineBreak)) != EndMark) return false;
    const std::string_view before = Trimmed(text.substr(0, lineBreak));
    return Trimmed(before.substr(before.find_last_of('\n') + 1)) == "0";
}

std::vector<std::string> LayersInText(std::string_view content) {
    std::vector<std::string> layers;
    if (HoldsBinaryGroups(content)) return layers;
    TextGroups groups(content);
    bool inEntities = false;
    std::string_view lastValue;
    while (const std::optional<TextGroup> next = groups.Next()) {
        const std::string_view code = Trimmed(next->code), value = Trimmed(next->value);
        if (code == "2" && lastValue == "SECTION") inEntities = value == "ENTITIES";
        if (inEntities && code == LayerCode) layers.emplace_back(value);
        lastValue = value;
    }
    return layers;
}

}  // namespace brenvik
