// Walks down from what stands in space for sure. The statement that holds a flat piece is the faulty one, as
// the piece may be right where another statement holds it.
#include "drafting_host/step/models/space_faults.h"

#include <Interface_EntityIterator.hxx>
#include <StepGeom_Axis1Placement.hxx>
#include <StepGeom_Axis2Placement2d.hxx>
#include <StepGeom_Axis2Placement3d.hxx>
#include <StepGeom_CartesianPoint.hxx>
#include <StepGeom_CartesianTransformationOperator2d.hxx>
#include <StepGeom_CartesianTransformationOperator3d.hxx>
#include <StepGeom_Direction.hxx>
#include <StepGeom_Pcurve.hxx>
#include <StepGeom_Surface.hxx>
#include <StepShape_ShapeRepresentation.hxx>
#include <StepShape_TopologicalRepresentationItem.hxx>
#include <string_view>

namespace brenvik::step {
namespace {

constexpr int InSpace = 3;

/// How many coordinates a point or direction has; three for anything else.
int CoordinatesOf(const Handle(Standard_Transient) & entity) {
    const Handle(StepGeom_CartesianPoint) point = Handle(StepGeom_CartesianPoint)::DownCast(entity);
    if (!point.IsNull()) return point->NbCoordinates();
    const Handle(StepGeom_Direction) direction = Handle(StepGeom_Direction)::DownCast(entity);
    if (direction.IsNull()) return InSpace;
    return direction->DirectionRatios().IsNull() ? 0 : direction->NbDirectionRatios();
}

bool IsFlatFrame(const Handle(Standard_Transient) & entity) {
    return entity->IsKind(STANDARD_TYPE(StepGeom_Axis2Placement2d)) ||
           entity->IsKind(STANDARD_TYPE(StepGeom_CartesianTransformationOperator2d));
}

bool StandsInSpace(const Handle(Standard_Transient) & entity) {
    return entity->IsKind(STANDARD_TYPE(StepShape_TopologicalRepresentationItem)) ||
           entity->IsKind(STANDARD_TYPE(StepGeom_Surface)) ||
           entity->IsKind(STANDARD_TYPE(StepGeom_Axis1Placement)) ||
           entity->IsKind(STANDARD_TYPE(StepGeom_Axis2Placement3d)) ||
           entity->IsKind(STANDARD_TYPE(StepGeom_CartesianTransformationOperator3d));
}

bool IsShapePiece(const Handle(Standard_Transient) & entity) {
    const std::string_view kind = entity->DynamicType()->Name();
    return kind.starts_with("StepGeom_") || kind.starts_with("StepShape_");
}

class Walk {
  public:
    Walk(const Handle(StepData_StepModel) & model, const Interface_Graph& references)
        : mModel(model), mReferences(references), mSeen(static_cast<std::size_t>(model->NbEntities()) + 1) {}

    std::vector<ModelFault> Run() {
        for (int index = 1; index <= mModel->NbEntities(); ++index)
            if (StandsInSpace(mModel->Value(index))) Push(index);
        while (!mOpen.empty()) {
            const int index = mOpen.back();
            mOpen.pop_back();
            LookAt(mModel->Value(index));
        }
        return std::move(mFaults);
    }

  private:
    void Push(int index) {
        if (index <= 0 || mSeen[static_cast<std::size_t>(index)]) return;
        mSeen[static_cast<std::size_t>(index)] = true;
        mOpen.push_back(index);
    }

    void LookAt(const Handle(Standard_Transient) & holder) {
        Interface_EntityIterator pieces = mReferences.Shareds(holder);
        for (pieces.Start(); pieces.More(); pieces.Next()) {
            const Handle(Standard_Transient)& piece = pieces.Value();
            const int count = CoordinatesOf(piece);
            if (count != InSpace || IsFlatFrame(piece)) {
                const std::string found = "#" + std::to_string(mModel->IdentLabel(piece));
                mFaults.push_back({mModel->IdentLabel(holder),
                                   "it stands in space, and " + found +
                                       (IsFlatFrame(piece) ? " is a placement in a plane"
                                                           : " has " + std::to_string(count) +
                                                                 " coordinates instead of three")});
                return;
            }
            // The surface of a trace is met by itself, and the trace is flat by rights.
            if (IsShapePiece(piece) && !piece->IsKind(STANDARD_TYPE(StepGeom_Pcurve)))
                Push(mReferences.EntityNumber(piece));
        }
    }

    const Handle(StepData_StepModel) & mModel;
    const Interface_Graph& mReferences;
    std::vector<bool> mSeen;
    std::vector<int> mOpen;
    std::vector<ModelFault> mFaults;
};

}  // namespace

std::vector<ModelFault> FlatPiecesInSpace(const Handle(StepData_StepModel) & model,
                                          const Interface_Graph& references) {
    return Walk(model, references).Run();
}

}  // namespace brenvik::step
