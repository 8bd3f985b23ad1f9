// The proof within a run: the part is held while its files are written, and compared with them at its end.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cnc/proof/part_proof.h"

namespace brenvik {

class AcadDocument;
class AcadLWPolyline;
struct RunState;

/// Gathered from one part over its passes.
struct GatheredProof {
    std::unique_ptr<SolidSections> part;  ///< As the first side has it; null if there is no proof.
    std::vector<WrittenOperation> operations;
    std::vector<std::vector<PlanSide>> leftOutOutlines;
    std::vector<std::string> faults;
    std::string unproved;  ///< Why the part couldn't be looked at.
    double width = 0, thickness = 0;
    bool written = false;
};

/// Whether runs prove their parts; they do unless somebody has switched it off. Unloading the library
/// switches it on again.
void SetProof(bool on);
bool ProofIsOn();

/// The numbers of the bits of the part's material, by which names are read.
std::vector<std::string> ToolNumbersOf(const RunState& run);

/// One millimetre in units of the run.
double UnitOf(const RunState& run);

/// Holds the solid for the comparison; to be called before the first side's solid is deleted.
void HoldPartForProof(RunState& run);
/// Records an outline that a setting keeps out of the file.
void NoteLeftOutOutline(RunState& run, const AcadLWPolyline& outline);
/// Reads the operations of a side's file.
void GatherWrittenSide(RunState& run, AcadDocument& file, bool secondSide);
/// Records that the part's file can't be compared, and why.
void NoteUnproved(RunState& run, const std::string& why);
/// Compares the part with its files, at its end, however many sides it got. Adds differences to
/// `run.part.differences`, and removes notes of features that the files do make.
void ProveGathered(RunState& run);

}  // namespace brenvik
