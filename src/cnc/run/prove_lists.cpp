// By way of the grid a file stands for a group of parts, so a line's quantity and names are those of the
// group, and only its file is looked for.
#include "cnc/run/prove_lists.h"

#include <algorithm>
#include <utility>

#include "base/letter_case.h"
#include "base/text.h"
#include "cnc/output/work_lists.h"
#include "session/ports/files_port.h"
#include "session/session.h"

namespace brenvik {

WorkListProof::WorkListProof(RunForm form, std::string firstFolder, std::string secondFolder)
    : mForm(form), mFirstFolder(std::move(firstFolder)), mSecondFolder(std::move(secondFolder)) {}

void WorkListProof::Expect(const RunState& run, const std::string& file, bool secondSide) {
    RunState pass = run;
    pass.part.SecondSidePass = secondSide ? 1 : 0;
    pass.part.writtenFile = std::string(secondSide ? SecondSideFolder : OutputFolder) + file;
    mTarget = run.target;
    mExpected.push_back({file, WorkListLine(pass), secondSide});
}

std::vector<std::string> WorkListProof::Differences() const {
    std::vector<std::string> told;
    if (!mTarget) return told;
    Compare(false, told);
    Compare(true, told);
    return told;
}

std::vector<std::string> WorkListProof::LinesOf(const std::string& path) const {
    std::vector<std::string> lines = Split(ThePlatform().files->ReadFile(path), '\n');
    for (std::string& line : lines)
        if (line.ends_with('\r')) line.pop_back();
    // After the end of the last line.
    if (!lines.empty() && lines.back().empty()) lines.pop_back();
    return lines;
}

void WorkListProof::CompareHead(const std::string& list, std::vector<std::string>& lines,
                                std::vector<std::string>& told) const {
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

void WorkListProof::Compare(bool secondSide, std::vector<std::string>& told) const {
    const std::string name(WorkListName(*mTarget));
    const std::string path = (secondSide ? mSecondFolder : mFirstFolder) + name;
    const std::string list = name + (secondSide ? " of the second sides" : "");
    const bool wanted = std::ranges::any_of(
        mExpected, [secondSide](const Expected& part) { return part.secondSide == secondSide; });
    if (!ThePlatform().files->FileExists(path)) {
        if (wanted) told.push_back("The work list " + list + " is missing.");
        return;
    }
    std::vector<std::string> lines = LinesOf(path);
    CompareHead(list, lines, told);
    for (const Expected& part : mExpected) {
        if (part.secondSide != secondSide) continue;
        auto line = std::ranges::find(lines, part.line);
        if (line == lines.end())
            line = std::ranges::find_if(lines, [&](const std::string& each) {
                return FoldLower(each).find(FoldLower(part.file)) != std::string::npos;
            });
        if (line == lines.end()) {
            told.push_back("The work list " + list + " has no line for " + part.file + ".");
            continue;
        }
        if (mForm == RunForm::A && *line != part.line)
            told.push_back("The work list " + list + " has the line \"" + *line + "\", and not \"" +
                           part.line + "\".");
        lines.erase(line);
    }
    for (const std::string& line : lines)
        told.push_back("The work list " + list + " has a line of no part that was looked at: \"" + line +
                       "\".");
}

}  // namespace brenvik
