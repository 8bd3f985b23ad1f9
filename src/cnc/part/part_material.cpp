// The look-up, the box, and the notes: many parts of a job are of one board.
#include "cnc/part/part_material.h"

#include <string>

#include "base/failure.h"
#include "cnc/part/run_report.h"
#include "cnc/part/told.h"
#include "session/message.h"
#include "settings/material_faults.h"
#include "settings/materials.h"

namespace brenvik {

namespace {

/// A bit of 12,7 would be cut as one of 12, and a word as none.
void RefuseUnusable(std::string_view key) {
    for (const MaterialFault& fault : FaultsOfMaterial(key)) {
        if (fault.unusable)
            throw Failure(failure_number::TypeMismatch, std::string(OwnSource), "Type mismatch",
                          MaterialFaultText(fault));
        NoteOnce(detail::ReportOfRun().doubtfulMaterials, MaterialFaultText(fault));
    }
}

bool HasSpeedsInNames(Target target) {
    switch (target) {
        case Target::C2C:
        case Target::ATP:
        case Target::Enroute:
        case Target::ABC:
        case Target::RCIM:
        case Target::BW:
            return true;
        case Target::ROV:
        case Target::CNI:
        case Target::ASP:
        case Target::WOP4:
        case Target::WOP5:
        case Target::THERM:
            return false;
    }
    return false;
}

}  // namespace

bool TakeMaterial(const RunState& run, MaterialRecord& record) {
    LookupMaterial(run.part.MaterialKeyText, record);
    if (!record.Found()) {
        TellUnknownMaterial(run);
        return false;
    }
    RefuseUnusable(run.part.MaterialKeyText);
    if (HasSpeedsInNames(run.target))
        for (const MaterialFault& fault : PointsInSpeedsOf(run.part.MaterialKeyText))
            NoteOnce(detail::ReportOfRun().doubtfulMaterials, MaterialFaultText(fault));
    return true;
}

void TellUnknownMaterial(const RunState& run) {
    ShowMessage(UnknownMaterialText(run.part.MaterialKeyText));
    NoteOnce(detail::ReportOfRun().unknownMaterials, run.part.MaterialKeyText);
}

}  // namespace brenvik
