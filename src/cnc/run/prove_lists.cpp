// By way of the grid a file stands for a group of parts: a line's texts are those of one of them, and its
// quantity is how many there are.
#include "cnc/run/prove_lists.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/utf8.h"
#include "cnc/output/work_lists.h"
#include "cnc/part/part_file_name.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

/// As a whole field, or behind the folder in one.
bool Names(const std::string& line, const std::string& file) {
    const std::string within = FoldLower(line), name = FoldLower(file);
    constexpr std::string_view before = ",\t\\", behind = ",\t";
    for (std::size_t at = within.find(name); at != std::string::npos; at = within.find(name, at + 1)) {
        const std::size_t end = at + name.size();
        if ((at == 0 || before.find(within[at - 1]) != std::string_view::npos) &&
            (end == within.size() || behind.find(within[end]) != std::string_view::npos))
            return true;
    }
    return false;
}

std::vector<std::string>::iterator LineNaming(std::vector<std::string>& lines, const std::string& file) {
    return std::ranges::find_if(lines, [&](const std::string& line) { return Names(line, file); });
}

}  // namespace

WorkListProof::WorkListProof(RunForm form, std::string firstFolder, std::string secondFolder)
    : mForm(form), mFirstFolder(std::move(firstFolder)), mSecondFolder(std::move(secondFolder)) {}

std::string WorkListProof::Line::For(int parts) const {
    Texts all = fields;
    all[quantity] = std::to_string(std::int64_t{parts} * ofOne);
    return Join(all, separator);
}

std::optional<int> WorkListProof::Line::PartsIn(const std::string& other) const {
    const Texts all = Split(other, separator.front());
    if (all.size() != fields.size()) return std::nullopt;
    int count = 0;
    const std::string& text = all[quantity];
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    const int parts = ofOne == 0 ? 0 : count / ofOne;
    return For(parts) == other ? std::optional(parts) : std::nullopt;
}

WorkListProof::Line WorkListProof::LineFor(const RunState& run, const std::string& file,
                                           bool secondSide) const {
    RunState pass = run;
    pass.part.SecondSidePass = secondSide;
    pass.part.writtenFile = std::string(secondSide ? SecondSideFolder : OutputFolder) + file;
    Line line;
    line.separator = run.target == Target::BW ? "\t" : ",";
    line.ofOne = ToInteger(NumberSetting(setting::CNCMultiplier));
    if (mForm == RunForm::B) {
        // Those of the group; a list names the file by the number of the part in hand.
        pass.part.index = PartNumberIn(file).value();
        pass.part.Quantity = 2;
        const Texts other = Split(WorkListLine(pass), line.separator.front());
        pass.part.Quantity = 1;
        line.fields = Split(WorkListLine(pass), line.separator.front());
        line.quantity =
            static_cast<std::size_t>(std::ranges::mismatch(line.fields, other).in1 - line.fields.begin());
        // Without a quantity that shows any other field will do.
        if (line.quantity == line.fields.size()) line.quantity = 0;
    } else {
        line.fields = Split(WorkListLine(pass), line.separator.front());
    }
    return line;
}

void WorkListProof::Expect(const RunState& run, const std::string& file, bool secondSide) {
    mTarget = run.target;
    const auto same = std::ranges::find_if(
        mExpected, [&](const Expected& each) { return each.secondSide == secondSide && each.file == file; });
    Expected& part = same == mExpected.end() ? mExpected.emplace_back(Expected{file, secondSide, {}}) : *same;
    part.lines.push_back(LineFor(run, file, secondSide));
}

bool WorkListProof::HasRoomFor(const RunState& run, const std::string& file) const {
    const std::string path = PathOf(false, run.target);
    if (!ThePlatform().files->FileExists(path)) return false;
    Texts lines = LinesOf(path);
    const auto line = LineNaming(lines, file);
    if (line == lines.end()) return false;
    const std::optional<int> parts = LineFor(run, file, false).PartsIn(*line);
    const auto counted = std::ranges::find_if(
        mExpected, [&](const Expected& each) { return !each.secondSide && each.file == file; });
    const std::size_t taken = counted == mExpected.end() ? 0 : counted->lines.size();
    return parts && *parts > static_cast<int>(taken);
}

std::vector<std::string> WorkListProof::Differences(bool allCount) const {
    std::vector<std::string> told;
    if (!mTarget) return told;
    Compare(false, allCount, told);
    Compare(true, allCount, told);
    return told;
}

std::string WorkListProof::PathOf(bool secondSide, Target target) const {
    return (secondSide ? mSecondFolder : mFirstFolder) + std::string(WorkListName(target));
}

std::vector<std::string> WorkListProof::LinesOf(const std::string& path) {
    std::vector<std::string> lines = Split(ThePlatform().files->ReadFile(path), '\n');
    for (std::string& line : lines)
        if (line.ends_with('\r')) line.pop_back();
    // After the end of the last line.
    if (!lines.empty() && lines.back().empty()) lines.pop_back();
    return lines;
}

void WorkListProof::CompareHead(const std::string& list, Texts& lines, Texts& told) const {
    const std::vector<std::string> head = WorkListHeader(*mTarget);
    const std::size_t length = std::min(head.size(), lines.size());
    for (std::size_t i = 0; i < head.size(); ++i) {
        const std::string found = i < lines.size() ? lines[i] : "";
        if (found != head[i])
            told.push_back("The work list " + list + " has \"" + found + "\" in line " +
                           std::to_string(i + 1) + " of its head, and not \"" + head[i] + "\".");
    }
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(length));
    if (std::erase(lines, "") > 0) told.push_back("The work list " + list + " has a blank line.");
}

std::string WorkListProof::FaultOf(const std::string& line, const Expected& part, bool allCount) const {
    if (mForm == RunForm::A) {
        const std::string wanted = Join(part.lines.front().fields, part.lines.front().separator);
        return line == wanted ? "" : "has the line \"" + line + "\", and not \"" + wanted + "\"";
    }
    const int count = static_cast<int>(part.lines.size());
    const auto fits =
        std::ranges::find_if(part.lines, [&](const Line& each) { return each.PartsIn(line).has_value(); });
    const Line& wanted = fits == part.lines.end() ? part.lines.front() : *fits;
    const bool countFits = !allCount || wanted.PartsIn(line) == count;
    if (fits != part.lines.end() && countFits) return "";
    return "has the line \"" + line + "\", and not \"" + wanted.For(count) + "\"";
}

void WorkListProof::Compare(bool secondSide, bool allCount, Texts& told) const {
    const std::string path = PathOf(secondSide, *mTarget);
    const std::string list = std::string(WorkListName(*mTarget)) + (secondSide ? " of the second sides" : "");
    const bool wanted = std::ranges::any_of(
        mExpected, [secondSide](const Expected& part) { return part.secondSide == secondSide; });
    if (!ThePlatform().files->FileExists(path)) {
        if (wanted) told.push_back("The work list " + list + " is missing.");
        return;
    }
    if (const std::string other = OtherEncodingOf(ThePlatform().files->ReadFile(path)); !other.empty()) {
        told.push_back("The work list " + list + " is in " + other + ", and a run's lists are plain text.");
        return;
    }
    std::vector<std::string> lines = LinesOf(path);
    CompareHead(list, lines, told);
    for (const Expected& part : mExpected) {
        if (part.secondSide != secondSide) continue;
        const auto line = LineNaming(lines, part.file);
        if (line == lines.end()) {
            told.push_back("The work list " + list + " has no line for " + part.file + ".");
            continue;
        }
        if (const std::string fault = FaultOf(*line, part, allCount); !fault.empty())
            told.push_back("The work list " + list + " " + fault + ".");
        lines.erase(line);
    }
    for (const std::string& line : lines)
        told.push_back("The work list " + list + " has a line of no part that was looked at: \"" + line +
                       "\".");
}

}  // namespace brenvik
