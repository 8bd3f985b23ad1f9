// The stretches of the work on one part, in the order of a pass. Each works on the part drawing of the run's
// state and tells whether the pass goes on.
#pragma once

#include <string>
#include <string_view>

#include "cnc/part/run_state.h"

namespace brenvik {

// alignment.cpp
/// Lays the part flat on its largest face, turns it by its letters, decides which side is up, and moves its
/// corner to the origin; the part drawing is another one afterwards.
PartStep AlignPart(RunState& run);

// profile.cpp, circle_sorting.cpp, circular_routes.cpp
/// Projects the part, breaks it down to curves, and sorts circles, arcs and lines onto the work layers.
PartStep SortEdges(RunState& run);

// recognising.cpp
/// Calls the recognisers in their order: routes, horizontal bores, vertical drilling.
PartStep Recognise(RunState& run);

// routing.cpp
/// Closed shapes that stop inside the part become routes and pockets. Sets `RouteSkip` on a failure.
void RecogniseRoutes(RunState& run);
// horizontal_boring.cpp
/// Circles on the four edges become edge bores.
void BoreHorizontally(RunState& run);
// vertical_drilling.cpp
/// Circles that face the top become vertical holes. Sets `DrillSkip` on a failure.
void DrillVertically(RunState& run);

// outline.cpp, cut_outs.cpp, true_outline.cpp, pockets.cpp
/// The outside profile, the cut-outs, circular through routes, the conversion of pockets, and the outline as
/// wide as the part is anywhere in its height.
PartStep MakeOutline(RunState& run);

// closing.cpp
/// Part data, the sheet, tongues, and the sweep: what is left are the operations, the top face on Z 0.
PartStep ClosePart(RunState& run);

// tongues.cpp
/// Lead-in and lead-out for tongues that stand out from the edges.
void ProcessTongues(RunState& run);

// part_output.cpp
/// The name of the part's DXF file for this pass, without its folder.
std::string WrittenFileName(const RunState& run);
/// Writes the part's DXF file for this pass.
void WritePartFile(RunState& run);
// work_lists.cpp
/// What stands behind a list's name until the run has ended.
inline constexpr std::string_view UnfinishedListEnding = ".unfinished";
/// Adds the part's line to the target's list for this pass, which is unfinished still.
void AddListLine(RunState& run);
/// Gives the lists of a run that has ended their names, in both folders.
void FinishWorkLists(Target target);
/// Deletes the lists that the target writes, and those that it only clears, from both folders; files that
/// aren't there, or can't be deleted, are passed over.
void ClearWorkLists(Target target);

}  // namespace brenvik
