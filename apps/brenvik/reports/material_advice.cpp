// The nearest record is the one to begin with: the bits stay the shop's own to check.
#include "reports/material_advice.h"

#include <algorithm>
#include <string_view>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/skip.h"
#include "base/text.h"
#include "cnc/part/part_material.h"
#include "settings/material_keys.h"
#include "shell/shell_word.h"

namespace brenvik::app {

namespace {

std::string ThicknessOf(std::string_view key) { return SplitAtFirst(key, ' ').head; }
std::string NameOf(std::string_view key) { return SplitAtFirst(key, ' ').tail; }

/// The material of the library that comes in the most of these thicknesses; of several the first one.
std::string CommonestName(const MaterialLibrary& library, const std::vector<std::string>& thicknesses) {
    std::string best;
    std::ptrdiff_t most = -1;
    for (const MaterialTexts& material : library.materials) {
        if (!HasFirstTool(material)) continue;
        const std::string name = NameOf(material.front());
        const std::ptrdiff_t there = std::ranges::count_if(thicknesses, [&](const std::string& thickness) {
            return FindMaterialIn(library, thickness + " " + name) != nullptr;
        });
        if (there <= most) continue;
        most = there;
        best = name;
    }
    return best;
}

std::string AdviceToGiveOne(const MaterialLibrary& library, const std::vector<std::string>& thicknesses) {
    return "parts " + Join(thicknesses, ", ") + " thick have no material; to give them one: --material " +
           ShellWord(CommonestName(library, thicknesses));
}

/// The command stands at the end of the line, behind words of ours alone: scripts take it from there, and a
/// name out of a stranger's drawing must not look like one.
std::string AdviceToAdd(const MaterialLibrary& library, const std::string& key,
                        const std::string& programWords) {
    if (const std::string expected = NewMaterialKeyFault(key); !expected.empty())
        return "a part's material makes no key of the library, which is " + expected +
               "; change it in the drawing";
    return "to add the board as a copy of the nearest: " + programWords + " materials add " + ShellWord(key) +
           " --like " + ShellWord(NearMaterials(library, key, 1).front());
}

}  // namespace

std::vector<std::string> MaterialAdvice(std::span<const std::string> unknownKeys,
                                        const std::string& programWords) {
    MaterialLibrary library;
    // A library that can't be read has been reported already.
    if (unknownKeys.empty() || !Skip([&] { library = ReadMaterials(); })) return {};
    if (std::ranges::none_of(library.materials, HasFirstTool))
        return {
            "materials.txt in the install folder: expected materials with a first tool, found none to copy"};
    std::vector<std::string> lines, thicknesses;
    for (const std::string& key : unknownKeys)
        if (EqualsIgnoreCase(NameOf(key), UnnamedMaterial)) thicknesses.push_back(ThicknessOf(key));
    if (!thicknesses.empty()) lines.push_back(AdviceToGiveOne(library, thicknesses));
    for (const std::string& key : unknownKeys)
        if (!EqualsIgnoreCase(NameOf(key), UnnamedMaterial))
            lines.push_back(AdviceToAdd(library, key, programWords));
    return lines;
}

}  // namespace brenvik::app
