// The file's lines, record by record.
#include "settings/library_check.h"

#include <algorithm>
#include <iterator>

#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/quoted.h"
#include "base/text.h"
#include "session/text_files.h"
#include "settings/home_units.h"
#include "settings/material_faults.h"
#include "settings/material_keys.h"

namespace brenvik {

namespace {

constexpr std::size_t FirstToolLine = 3;

void AddFaultsOfRecord(const std::vector<std::string>& lines, std::size_t head, std::size_t end,
                       std::vector<MaterialFault>& faults) {
    const std::string key = MaterialValue(lines[head], 0);
    if (const std::string asked = KeyOfRunsFor(key); !asked.empty())
        faults.push_back({head + 1,
                          "the material " + InQuotes(key) + ": expected the thickness as runs write it: " +
                              InQuotes(asked) + "; no part finds it",
                          false});
    const std::size_t tool = head + FirstToolLine;
    if (end - head < MaterialFieldCount || !MaterialValue(lines[tool], FirstToolLine).empty()) return;
    faults.push_back(
        {tool + 1,
         "tool1 of the material " + InQuotes(key) +
             " is blank, expected the number of a tool: without one the material counts as missing",
         false});
}

}  // namespace

std::string KeyOfRunsFor(std::string_view key) {
    constexpr int metricDecimals = 2;
    if (UnitsOfHome() != MeasureUnits::Metric || !MaterialKeyFault(key).empty()) return {};
    const HeadAndTail parts = SplitAtFirst(key, ' ');
    const double thickness = LenientNumber(parts.head), rounded = RoundHalfEven(thickness, metricDecimals);
    return thickness == rounded ? std::string()
                                : NumberToTextNoZero(rounded, metricDecimals) + " " + std::string(parts.tail);
}

std::vector<MaterialFault> GuessedLinesBeside(const std::optional<CheckedMaterial>& found) {
    const FileLines file = ReadFileLines(MaterialsPath());
    const std::size_t end = file.lines.size();
    if (!found) return GuessedLines(file, 0, end);
    std::vector<MaterialFault> faults = GuessedLines(file, 0, found->head - 1);
    std::ranges::copy(GuessedLines(file, found->head + MaterialFieldCount - 1, end),
                      std::back_inserter(faults));
    return faults;
}

std::vector<MaterialFault> FaultsOfLibrary() {
    const FileLines file = ReadFileLines(MaterialsPath());
    std::vector<std::size_t> heads = MaterialHeads(file.lines);
    if (heads.empty())
        return {{1, "expected materials, of fifteen lines each, found none: every part of a run is skipped",
                 false}};
    std::vector<MaterialFault> faults = GuessedLines(file, 0, file.lines.size());
    heads.push_back(file.lines.size());
    for (std::size_t at = 0; at + 1 < heads.size(); ++at)
        AddFaultsOfRecord(file.lines, heads[at], std::min(heads[at + 1], heads[at] + MaterialFieldCount),
                          faults);
    std::ranges::stable_sort(faults, {}, &MaterialFault::line);
    return faults;
}

}  // namespace brenvik
