// Counts and names the parts that a form takes something from.
#include "drafting_host/document/files/lost_data.h"

#include <algorithm>
#include <filesystem>

#include "base/first_of.h"
#include "base/handle_text.h"
#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "drafting_host/document/files/drawing_files.h"
#include "drafting_host/document/files/extension.h"

namespace brenvik {
namespace {

/// The host's own stamp of an object's last change: it says nothing of the part.
constexpr std::string_view ChangeStamp = "ACAD_OBJECT_CHANGE_GUID";

std::string ExtentText(double extent) { return NumberToText(RoundHalfEven(extent, 5)); }

/// A part by its name, or by its handle where it has none.
std::string ShownName(const HostSolid& solid) {
    const std::string name = PartText(solid, "PARTNAME");
    return IsBlank(name) ? HandleToText(solid.HandleNumber()) : "\"" + name + "\"";
}

std::string CountOf(std::size_t count, std::string_view one, std::string_view several) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : several);
}

/// "a", "b", "c" and 11 more.
std::string FirstNames(const std::vector<const HostSolid*>& solids) {
    constexpr std::size_t most = 3;
    std::vector<std::string> names;
    for (const HostSolid* solid : solids) names.push_back(ShownName(*solid));
    return FirstOf(std::move(names), most);
}

/// Files of ACIS text have no names: readers name their bodies after the file.
bool IsNameOfFile(std::string_view name, const HostDocument& document) {
    const std::filesystem::path file(document.FullName());
    const std::string stem = file.stem().string();
    if (IsDrawingExtension(ExtensionOf(file)) || !name.starts_with(stem)) return false;
    name.remove_prefix(stem.size());
    return name.empty() || (name.size() > 1 && name.front() == ' ' &&
                            name.find_first_not_of("0123456789", 1) == std::string_view::npos);
}

bool LosesData(const HostDocument& document, const HostSolid& solid,
               const std::vector<std::string_view>& kept) {
    const auto again = DataOfReading(ReadOptions().letters, solid.Measures());
    return std::ranges::any_of(solid.ExtendedData(), [&](const XDataOfApp& data) {
        const auto isKey = [&](std::string_view key) { return EqualsIgnoreCase(key, data.app); };
        if (data.items.empty() || std::ranges::any_of(kept, isKey)) return false;
        if (isKey(ChangeStamp)) return false;
        const std::string text = PartText(solid, data.app);
        if (data.items.size() == 1 && data.items.front().code == 1000 && text.empty()) return false;
        if (isKey("PARTNAME") && IsNameOfFile(text, document)) return false;
        return std::ranges::none_of(
            again, [&](const auto& given) { return isKey(given.first) && text == given.second; });
    });
}

}  // namespace

std::array<std::pair<std::string_view, std::string>, 4> DataOfReading(const std::string& letters,
                                                                      const solids::Extents& extents) {
    return {{{"ORIE", letters},
             {"OLDVALUE1", ExtentText(extents.d1)},
             {"OLDVALUE2", ExtentText(extents.d2)},
             {"OLDVALUE3", ExtentText(extents.d3)}}};
}

std::string PartText(const HostEntity& entity, std::string_view key) {
    std::vector<std::int16_t> types;
    std::vector<XDataValue> values;
    entity.GetXData(key, types, values);
    if (values.size() < 2) return {};
    const std::string* text = std::get_if<std::string>(&values[1]);
    return text == nullptr ? std::string() : *text;
}

void TellLostPartData(const HostDocument& document, const std::vector<const HostSolid*>& solids,
                      std::string_view form, const std::vector<std::string_view>& kept,
                      std::vector<std::string>& problems) {
    std::vector<const HostSolid*> losing;
    std::ranges::copy_if(solids, std::back_inserter(losing),
                         [&](const HostSolid* solid) { return LosesData(document, *solid, kept); });
    if (losing.empty()) return;
    problems.push_back("part data of " + CountOf(losing.size(), "part", "parts") + " (" + FirstNames(losing) +
                       ") is not in " + std::string(form) + ", which " +
                       (kept.empty() ? "has no place for it" : "has names and assemblies only"));
}

void TellLostLooks(const std::vector<const HostSolid*>& solids, std::vector<std::string>& problems) {
    std::vector<const HostSolid*> losing;
    std::ranges::copy_if(solids, std::back_inserter(losing), [](const HostSolid* solid) {
        constexpr int byLayer = 256;
        return solid->LayerObject().Values().name != "0" || solid->Look().color != byLayer;
    });
    if (losing.empty()) return;
    problems.push_back("layer and colour of " + CountOf(losing.size(), "part", "parts") + " (" +
                       FirstNames(losing) + ") are not in ACIS text");
}

}  // namespace brenvik
