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

/// What is gathered of one part over its passes.
struct GatheredProof {
    std::unique_ptr<SolidSections> part;  ///< As the first side has it; nothing where there is no proof.
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

/// Before the first side's solid goes.
void HoldPartForProof(RunState& run);
/// An outline that a setting keeps out of the file.
void NoteLeftOutOutline(RunState& run, const AcadLWPolyline& outline);
/// What stands in the file of a side.
void GatherWrittenSide(RunState& run, AcadDocument& file, bool secondSide);
/// The part has a file that says nothing, and why.
void NoteUnproved(RunState& run, const std::string& why);
/// At the end of a part, however many sides it got. Tells differences in `run.part.differences`; of what has
/// been noted as untaken before, it takes back what the files make all the same.
void ProveGathered(RunState& run);

}  // namespace brenvik
