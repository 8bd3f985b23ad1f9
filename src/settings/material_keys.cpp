// Comparing keys, and the one way of writing that keeps a library as its shop has it.
#include "settings/material_keys.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>
#include <utility>

#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/utf8.h"
#include "session/ports/files_port.h"
#include "session/session.h"

namespace brenvik {

namespace {

constexpr std::size_t LongestKey = 255;
/// Runs write thicknesses to 5 decimals at most.
constexpr int ThicknessDecimals = 5;

/// Control characters end a line of the file, or hide in it.
bool HoldsOddCharacters(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Character character = Utf8CharacterAt(text, at);
        const bool control = character.codePoint < 0x20 ||
                             (character.codePoint >= 0x7F && character.codePoint < 0xA0) ||
                             character.codePoint == 0x2028 || character.codePoint == 0x2029;
        if (!character.valid || control) return true;
        at += character.length;
    }
    return false;
}

struct KeyParts {
    double thickness = 0;
    std::string name;
};

KeyParts PartsOf(std::string_view key) {
    const HeadAndTail parts = SplitAtFirst(key, ' ');
    return {LenientNumber(parts.head), FoldLower(Trim(parts.tail))};
}

/// How many letters have to be put in, taken out or changed.
std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t changed = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = std::exchange(row[j + 1], std::min({changed, row[j] + 1, row[j + 1] + 1}));
        }
    }
    return row.back();
}

/// 0 the same name, 1 one that a person would take for a slip or a longer form of it, 2 another.
int NameDistance(std::string_view a, std::string_view b) {
    if (a == b) return 0;
    if (a.empty() || b.empty()) return 2;
    if (a.find(b) != std::string_view::npos || b.find(a) != std::string_view::npos) return 1;
    // One slip in four letters.
    return EditDistance(a, b) * 4 <= std::max(a.size(), b.size()) ? 1 : 2;
}

}  // namespace

// Keys compare without case. Half of the shops write a thickness below 1 with a zero before the point.
std::string ComparableMaterialKey(std::string_view key) {
    if (key.starts_with("0.")) key.remove_prefix(1);
    return FoldLower(key);
}

bool HasFirstTool(const MaterialTexts& texts) {
    constexpr std::size_t firstTool = 3;
    return !texts[firstTool].empty();
}

bool SameMaterialKey(std::string_view a, std::string_view b) {
    return ComparableMaterialKey(a) == ComparableMaterialKey(b);
}

std::string MaterialKeyFault(std::string_view key) {
    const std::string form = "a thickness, a blank and a name, such as \"18 Birch Ply\"";
    if (HoldsOddCharacters(key)) return form + ", all on one line, in UTF-8 and without control characters";
    if (CharacterCount(key) > LongestKey) return form + ", of 255 characters at most";
    const HeadAndTail parts = SplitAtFirst(key, ' ');
    if (!IsNumeric(parts.head) || StrictNumber(parts.head) <= 0 || IsBlank(parts.tail)) return form;
    if (Trim(parts.tail) != parts.tail) return form + ", with no other blanks before or behind the name";
    const std::string written = NumberToTextNoZero(StrictNumber(parts.head), ThicknessDecimals);
    const std::string_view thickness = parts.head;
    const std::string_view withoutZero = thickness.starts_with("0.") ? thickness.substr(1) : thickness;
    if (withoutZero == written) return {};
    return "the thickness as runs write it: \"" + written + " " + parts.tail + "\"";
}

std::string NewMaterialKeyFault(std::string_view key) {
    if (std::string fault = MaterialKeyFault(key); !fault.empty()) return fault;
    if (key.find('\'') == std::string_view::npos) return {};
    return "a thickness, a blank and a name without single quotes, since no list takes a part with one";
}

const MaterialTexts* FindMaterialIn(const MaterialLibrary& library, std::string_view key) {
    const auto found =
        std::find_if(library.materials.rbegin(), library.materials.rend(),
                     [&](const MaterialTexts& material) { return SameMaterialKey(material.front(), key); });
    return found == library.materials.rend() ? nullptr : &*found;
}

std::vector<std::string> NearMaterials(const MaterialLibrary& library, std::string_view key,
                                       std::size_t count) {
    const KeyParts wanted = PartsOf(key);
    std::vector<std::tuple<int, double, std::string>> found;
    for (const MaterialTexts& material : library.materials) {
        if (!HasFirstTool(material)) continue;
        const KeyParts parts = PartsOf(material.front());
        found.emplace_back(NameDistance(parts.name, wanted.name),
                           std::abs(parts.thickness - wanted.thickness), material.front());
    }
    std::ranges::stable_sort(found, [](const auto& a, const auto& b) {
        return std::tie(std::get<0>(a), std::get<1>(a)) < std::tie(std::get<0>(b), std::get<1>(b));
    });
    std::vector<std::string> keys;
    for (auto& [name, thickness, itsKey] : found)
        if (keys.size() < count && std::ranges::find(keys, itsKey) == keys.end())
            keys.push_back(std::move(itsKey));
    return keys;
}

void AppendMaterial(const MaterialTexts& material) {
    FilesPort& files = *ThePlatform().files;
    const std::string path = MaterialsPath();
    std::string content = files.ReadFile(path);
    std::string lineEnd = ParseMaterials(content).lineEnd;
    if (lineEnd.empty()) lineEnd = files.LineEnd();
    if (!content.empty() && content.back() != '\n' && content.back() != '\r') content += lineEnd;
    content += MaterialsText(std::span(&material, 1), lineEnd);
    files.CopyFileOver(path, MaterialsBackupPath());
    files.WriteFile(path, content);
}

}  // namespace brenvik
