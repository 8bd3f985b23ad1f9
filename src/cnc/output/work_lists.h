// The work lists that go with the files of a run.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cnc/part/target.h"

namespace brenvik {

struct RunState;

/// The ending of a list's name until the run has ended.
inline constexpr std::string_view UnfinishedListEnding = ".unfinished";
/// The list that a target writes, in the folder of each side.
std::string_view WorkListName(Target target);
/// Whether a file has the name, in any case, of a list that some target writes or clears, finished or not.
bool IsWorkList(std::string_view fileName);
/// The part's line for this pass, of `run.part.writtenFile`.
std::string WorkListLine(const RunState& run);
/// The lines that stand ahead of the first part's.
std::vector<std::string> WorkListHeader(Target target);
/// A part's line, and the list that it belongs to.
struct ListLine {
    bool secondSide = false;
    std::string text;
};
/// Makes the part's line for this pass; notes the texts that move its columns.
ListLine TakeListLine(RunState& run);
/// Adds a line to its list of the target, which is unfinished still.
void WriteListLine(RunState& run, const ListLine& line);
/// Both, for the pass that is going on.
void AddListLine(RunState& run);
/// Gives the lists of a run that has ended their names, in both folders.
void FinishWorkLists(Target target);
/// Deletes the lists that the target writes, and those that it only clears, from both folders; files that
/// aren't there, or can't be deleted, are passed over.
void ClearWorkLists(Target target);

}  // namespace brenvik
