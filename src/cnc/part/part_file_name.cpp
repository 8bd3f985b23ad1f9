// The name of a part's file: number, part name and part number.
#include "cnc/part/part_file_name.h"

#include <vector>

#include "base/file_name.h"
#include "base/text.h"
#include "cnc/part/run_state.h"

namespace brenvik {

namespace {

/// A text of the part for its file's name. Work lists name the file and are parted by commas.
std::string TextForName(std::string_view text) { return ReplaceAll(FileNameText(text), ",", " "); }

std::string NameOfPart(const RunState& run) {
    std::vector<std::string> texts{TextForName(run.part.texts.PartName), TextForName(run.part.texts.PN)};
    // THERM's list names the sub assembly too, and a list has to name the file that is there.
    if (run.target == Target::THERM) texts.push_back(TextForName(run.part.texts.SubAssembly));
    const std::string head = PartFileHeadOf(run.part.index), ending = ".dxf";
    MakeFit(texts, LongestFileName - SecondSideMark.size() - head.size() - texts.size() - ending.size());
    return head + "_" + Join(texts, "_") + ending;
}

}  // namespace

std::string PartFileHeadOf(int index) { return std::string(PartFileHead) + std::to_string(index); }

std::optional<int> PartNumberIn(std::string_view fileName) {
    constexpr std::size_t MostDigits = 8;
    const std::size_t mark = fileName.find('_');
    if (mark == std::string_view::npos) return std::nullopt;
    const std::string_view behind = fileName.substr(mark + 1);
    int number = 0;
    std::size_t digits = 0;
    for (; digits < behind.size() && digits < MostDigits && behind[digits] >= '0' && behind[digits] <= '9';
         ++digits)
        number = number * 10 + (behind[digits] - '0');
    if (digits == 0 || digits == behind.size() || behind[digits] != '_') return std::nullopt;
    return number;
}

std::string WrittenFileName(const RunState& run) {
    return std::string(run.FirstPass() ? "" : SecondSideMark) + NameOfPart(run);
}

}  // namespace brenvik
