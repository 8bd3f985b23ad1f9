// Goes over the modeller's reports on the statements it has read, and over what it does not check:
// vertices without a place in space, edges made of themselves, traces on surfaces without a curve, pieces of
// a plane in space, and circles of references.
#include "drafting_host/step/models/model_faults.h"

#include <Interface_Check.hxx>
#include <Interface_ReportEntity.hxx>
#include <StepGeom_CartesianPoint.hxx>
#include <StepGeom_Curve.hxx>
#include <StepGeom_Pcurve.hxx>
#include <StepRepr_DefinitionalRepresentation.hxx>
#include <StepRepr_RepresentationItem.hxx>
#include <StepShape_Edge.hxx>
#include <StepShape_OrientedEdge.hxx>
#include <StepShape_VertexPoint.hxx>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "drafting_host/step/models/reference_circles.h"
#include "drafting_host/step/models/space_faults.h"

namespace brenvik::step {
namespace {

/// Whether the modeller reads on soundly: a missing name is replaced by an empty one, a product without a
/// context is one all the same, and how a surface is shaded is of no use here. A layer without a name it
/// falls over.
bool IsHarmless(std::string_view kind, std::string_view reason) {
    if (kind == "StepVisual_PresentationLayerAssignment") return false;
    if (reason.find("quoted String") != reason.npos || reason.find("frame_of_reference") != reason.npos)
        return true;
    return kind.starts_with("StepVisual_SurfaceStyleRendering") && reason.find("numeration") != reason.npos;
}

/// The first thing wrong with an entity by the modeller's own report.
std::optional<std::string> ReportedFault(const Handle(StepData_StepModel) & model, int index) {
    if (!model->IsReportEntity(index)) return std::nullopt;
    const std::string_view kind = model->Value(index)->DynamicType()->Name();
    const Handle(Interface_ReportEntity) report = model->ReportEntity(index);
    if (!report->IsError()) return std::nullopt;
    const Handle(Interface_Check) check = report->Check();
    for (int fail = 1; fail <= check->NbFails(); ++fail) {
        const std::string reason = check->CFail(fail);
        if (!IsHarmless(kind, reason)) return reason;
    }
    return std::nullopt;
}

bool HoldsACurve(const Handle(StepRepr_DefinitionalRepresentation) & representation) {
    return !representation.IsNull() && representation->NbItems() > 0 &&
           !Handle(StepGeom_Curve)::DownCast(representation->ItemsValue(1)).IsNull();
}

/// What the modeller takes for granted and would fall over.
std::optional<std::string> UncheckedFault(const Handle(Standard_Transient) & entity) {
    const Handle(StepShape_VertexPoint) vertex = Handle(StepShape_VertexPoint)::DownCast(entity);
    if (!vertex.IsNull()) {
        const Handle(StepGeom_CartesianPoint) point =
            Handle(StepGeom_CartesianPoint)::DownCast(vertex->VertexGeometry());
        if (point.IsNull() || point->NbCoordinates() != 3) return "the vertex is no point in space";
    }
    const Handle(StepShape_OrientedEdge) edge = Handle(StepShape_OrientedEdge)::DownCast(entity);
    if (!edge.IsNull()) {
        const Handle(StepShape_Edge) element = edge->EdgeElement();
        if (element.IsNull() || element->IsKind(STANDARD_TYPE(StepShape_OrientedEdge)))
            return "an oriented edge has to hold an edge";
    }
    const Handle(StepGeom_Pcurve) trace = Handle(StepGeom_Pcurve)::DownCast(entity);
    if (!trace.IsNull() && !HoldsACurve(trace->ReferenceToCurve()))
        return "a curve in a surface's parameters has to hold a curve";
    return std::nullopt;
}

}  // namespace

std::vector<ModelFault> Faults(const Handle(StepData_StepModel) & model, const Interface_Graph& references) {
    std::vector<ModelFault> faults;
    const auto add = [&](int index, std::string reason) {
        faults.push_back({model->IdentLabel(model->Value(index)), std::move(reason)});
    };
    for (int index = 1; index <= model->NbEntities(); ++index) {
        const std::string_view kind = model->Value(index)->DynamicType()->Name();
        if (!CarriesShapes(kind) && !kind.starts_with("StepVisual_")) continue;
        if (const auto reported = ReportedFault(model, index))
            add(index, *reported);
        else if (const auto reason = UncheckedFault(model->Value(index)))
            add(index, *reason);
    }
    if (!faults.empty()) return faults;
    faults = FlatPiecesInSpace(model, references);
    if (!faults.empty()) return faults;
    const int circle = OnACircle(model, references);
    if (circle > 0) add(circle, "it refers to itself through others");
    return faults;
}

std::vector<int> ReportedStatements(const Handle(StepData_StepModel) & model) {
    std::vector<int> numbers;
    for (int index = 1; index <= model->NbEntities(); ++index)
        if (ReportedFault(model, index)) numbers.push_back(model->IdentLabel(model->Value(index)));
    return numbers;
}

std::unordered_set<int> RepresentationItems(const Handle(StepData_StepModel) & model) {
    std::unordered_set<int> numbers;
    for (int index = 1; index <= model->NbEntities(); ++index) {
        const Handle(Standard_Transient) entity = model->Value(index);
        if (entity->IsKind(STANDARD_TYPE(StepRepr_RepresentationItem)))
            numbers.insert(model->IdentLabel(entity));
    }
    return numbers;
}

}  // namespace brenvik::step
