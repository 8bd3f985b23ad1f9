// The look-up, the box, and the notes: many parts of a job are of one board.
#include "cnc/part/part_material.h"

#include "base/failure.h"
#include "base/letter_case.h"
#include "cnc/part/target_traits.h"
#include "cnc/part/told.h"
#include "parts/mautocad.h"
#include "session/message.h"
#include "settings/material_faults.h"

namespace brenvik {

namespace {

/// A bit of 12,7 would be cut as one of 12, and a word as none.
void RefuseUnusable(RunState& run, const CheckedMaterial& material) {
    for (const MaterialFault& fault : material.faults) {
        if (fault.unusable)
            throw Failure(failure_number::TypeMismatch, std::string(OwnSource), "Type mismatch",
                          MaterialFaultText(fault));
        NoteOnce(run.report.doubtfulMaterials, MaterialFaultText(fault));
    }
}

}  // namespace

std::string MaterialNameOf(const Acad3DSolid& solid) {
    const std::string name = FoldUpper(mAutoCAD::PartDataOf(solid, "Material"));
    return name.empty() ? std::string(UnnamedMaterial) : name;
}

std::optional<CheckedMaterial> ReadMaterial(PartState& part) {
    part.MaterialKeyText = MaterialKey(part.PartThickness, part.MaterialName, part.ExportScaleSetting);
    part.Material = {};
    return LookupMaterial(part.MaterialKeyText, part.Material);
}

bool TakeMaterial(RunState& run) {
    PartState& part = run.part;
    const std::optional<CheckedMaterial> found = ReadMaterial(part);
    if (!part.Material.Found()) {
        ShowMessage(UnknownMaterialText(part.MaterialKeyText));
        NoteOnce(run.report.unknownMaterials, part.MaterialKeyText);
        return false;
    }
    RefuseUnusable(run, *found);
    for (const MaterialFault& fault : found->guessed)
        NoteOnce(run.report.doubtfulMaterials, MaterialFaultText(fault));
    if (TraitsOf(run.target).speedsInNames)
        for (const MaterialFault& fault : PointsInSpeeds(found->texts, found->head))
            NoteOnce(run.report.doubtfulMaterials, MaterialFaultText(fault));
    return true;
}

}  // namespace brenvik
