// Walks without recursion: chains of references can be as long as the file.
#include "drafting_host/step/models/reference_circles.h"

#include <Interface_EntityIterator.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepBasic_ProductDefinitionRelationship.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <StepRepr_ProductDefinitionShape.hxx>
#include <StepRepr_Representation.hxx>
#include <StepRepr_RepresentationRelationship.hxx>
#include <StepRepr_ShapeRepresentationRelationship.hxx>
#include <StepShape_ContextDependentShapeRepresentation.hxx>
#include <StepShape_ShapeDefinitionRepresentation.hxx>
#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace brenvik::step {
namespace {

using Targets = std::vector<std::vector<int>>;

int FirstOnACircle(const Targets& targets) {
    enum class Mark : char { New, Open, Done };
    std::vector<Mark> marks(targets.size(), Mark::New);
    std::vector<std::pair<int, std::size_t>> path;
    for (std::size_t start = 1; start < targets.size(); ++start) {
        if (marks[start] != Mark::New) continue;
        path.emplace_back(static_cast<int>(start), 0);
        marks[start] = Mark::Open;
        while (!path.empty()) {
            const auto from = static_cast<std::size_t>(path.back().first);
            if (path.back().second == targets[from].size()) {
                marks[from] = Mark::Done;
                path.pop_back();
                continue;
            }
            const int to = targets[from][path.back().second++];
            Mark& mark = marks[static_cast<std::size_t>(to)];
            if (mark == Mark::Open) return to;
            if (mark == Mark::New) {
                mark = Mark::Open;
                path.emplace_back(to, 0);
            }
        }
    }
    return 0;
}

class Assemblies {
  public:
    Assemblies(const Handle(StepData_StepModel) & model, Targets& targets)
        : mModel(model), mTargets(targets) {}

    void AddUsages() {
        for (int index = 1; index <= mModel->NbEntities(); ++index) AddOwner(mModel->Value(index));
        for (int index = 1; index <= mModel->NbEntities(); ++index) {
            const Handle(Standard_Transient) entity = mModel->Value(index);
            AddUsage(Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(entity));
            AddPlacing(Handle(StepShape_ContextDependentShapeRepresentation)::DownCast(entity));
        }
    }

  private:
    void AddOwner(const Handle(Standard_Transient) & entity) {
        const auto shape = Handle(StepShape_ShapeDefinitionRepresentation)::DownCast(entity);
        if (shape.IsNull() || shape->UsedRepresentation().IsNull()) return;
        const Handle(StepRepr_PropertyDefinition) property = shape->Definition().PropertyDefinition();
        if (property.IsNull()) return;
        const Handle(StepBasic_ProductDefinition) product = property->Definition().ProductDefinition();
        if (!product.IsNull())
            mOwners[mModel->Number(shape->UsedRepresentation())].push_back(mModel->Number(product));
    }

    void Add(int assembly, int component) {
        if (assembly > 0 && component > 0) mTargets[static_cast<std::size_t>(assembly)].push_back(component);
    }

    void AddUsage(const Handle(StepRepr_NextAssemblyUsageOccurrence) & usage) {
        if (usage.IsNull()) return;
        Add(mModel->Number(usage->RelatingProductDefinition()),
            mModel->Number(usage->RelatedProductDefinition()));
    }

    /// The modeller goes on with the products of the shapes, whatever component the usage names. One of the
    /// two shapes is the assembly's own.
    void AddPlacing(const Handle(StepShape_ContextDependentShapeRepresentation) & placing) {
        if (placing.IsNull() || placing->RepresentationRelation().IsNull() ||
            placing->RepresentedProductRelation().IsNull())
            return;
        const Handle(StepBasic_ProductDefinitionRelationship) usage =
            placing->RepresentedProductRelation()->Definition().ProductDefinitionRelationship();
        if (usage.IsNull()) return;
        const int assembly = mModel->Number(usage->RelatingProductDefinition());
        const Handle(StepRepr_RepresentationRelationship) shapes = placing->RepresentationRelation();
        bool isOwnMet = false;
        for (const auto& shape : {shapes->Rep2(), shapes->Rep1()}) {
            if (shape.IsNull()) continue;
            const std::vector<int>& owners = mOwners[mModel->Number(shape)];
            if (!isOwnMet && std::ranges::find(owners, assembly) != owners.end()) {
                isOwnMet = true;
                continue;
            }
            for (const int owner : owners) Add(assembly, owner);
        }
    }

    const Handle(StepData_StepModel) & mModel;
    Targets& mTargets;
    std::map<int, std::vector<int>> mOwners;  ///< Products of a representation, by numbers in the model.
};

}  // namespace

bool CarriesShapes(std::string_view kind) {
    if (kind.find("Unit") != std::string_view::npos) return false;
    return kind.starts_with("StepGeom_") || kind.starts_with("StepShape_") || kind.starts_with("StepRepr_") ||
           kind.starts_with("StepBasic_");
}

int OnACircle(const Handle(StepData_StepModel) & model, const Interface_Graph& references) {
    Targets targets(static_cast<std::size_t>(model->NbEntities()) + 1);
    for (int index = 1; index <= model->NbEntities(); ++index) {
        const Handle(Standard_Transient) entity = model->Value(index);
        const std::string_view kind = entity->DynamicType()->Name();
        if (entity->IsKind(STANDARD_TYPE(StepRepr_NextAssemblyUsageOccurrence)) || !CarriesShapes(kind) ||
            kind.starts_with("StepBasic_"))
            continue;
        Interface_EntityIterator shared = references.Shareds(entity);
        for (shared.Start(); shared.More(); shared.Next()) {
            const int number = references.EntityNumber(shared.Value());
            if (number > 0) targets[static_cast<std::size_t>(index)].push_back(number);
        }
    }
    Assemblies(model, targets).AddUsages();
    return FirstOnACircle(targets);
}

}  // namespace brenvik::step
