// Goes over the modeller's reports on the statements it has read.
#include "drafting_host/step/model_faults.h"

#include <Interface_Check.hxx>
#include <Interface_ReportEntity.hxx>
#include <string_view>

namespace brenvik::step {
namespace {

/// True for kinds that the shapes and their assembly hang on. Styles, annotations and units are read
/// past, as many programs write them carelessly.
bool Carries(std::string_view kind) {
    if (kind.find("Unit") != std::string_view::npos) return false;
    return kind.starts_with("StepGeom_") || kind.starts_with("StepShape_") || kind.starts_with("StepRepr_") ||
           kind.starts_with("StepBasic_");
}

bool IsOnlyText(std::string_view reason) { return reason.find("quoted String") != std::string_view::npos; }

}  // namespace

std::optional<ModelFault> FirstFault(const Handle(StepData_StepModel) & model) {
    for (int index = 1; index <= model->NbEntities(); ++index) {
        if (!model->IsReportEntity(index)) continue;
        const Handle(Interface_ReportEntity) report = model->ReportEntity(index);
        if (!report->IsError() || !Carries(model->Value(index)->DynamicType()->Name())) continue;
        const Handle(Interface_Check) check = report->Check();
        for (int fail = 1; fail <= check->NbFails(); ++fail) {
            const std::string reason = check->CFail(fail);
            if (!IsOnlyText(reason)) return ModelFault{model->IdentLabel(model->Value(index)), reason};
        }
    }
    return std::nullopt;
}

}  // namespace brenvik::step
