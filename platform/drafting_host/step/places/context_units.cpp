// A representation names its context last.
#include "drafting_host/step/places/context_units.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "drafting_host/step/places/step_units.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

bool IsOfShapes(const Statement& representation) {
    return representation.kind.ends_with("SHAPE_REPRESENTATION") &&
           representation.kind != "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION";
}

struct Contexts {
    std::vector<const Statement*> unitless;  ///< Of each representation.
    const Statement* first = nullptr;        ///< That names a unit.
};

/// Whether it names one, be it one that can be read or not.
bool NamesUnitOfLength(const Statements& statements, const Statement& context) {
    const auto references = statements.ReferencesOf(context);
    return std::ranges::any_of(references, [&](const Reference& reference) {
        const Statement* const unit = statements.Find(reference.number);
        return unit != nullptr && TextOf(statements, *unit).find("LENGTH_UNIT") != std::string_view::npos;
    });
}

/// Contexts of parameters are no places in space, and have no lengths.
bool IsInSpace(const Statements& statements, const Statement& context) {
    return TextOf(statements, context).find("PARAMETRIC") == std::string_view::npos;
}

Contexts ContextsOf(const Statements& statements) {
    Contexts contexts;
    for (const Statement& representation : statements.All()) {
        const auto references = statements.ReferencesOf(representation);
        if (!IsOfShapes(representation) || references.empty()) continue;
        const Statement* const context = statements.Find(references.back().number);
        const bool isContext =
            context != nullptr && (context->kind.empty() || context->kind.ends_with("CONTEXT"));
        if (!isContext || !context->wellFormed || !IsInSpace(statements, *context)) continue;
        if (!NamesUnitOfLength(statements, *context))
            contexts.unitless.push_back(context);
        else if (contexts.first == nullptr)
            contexts.first = context;
    }
    return contexts;
}

/// A context of its own in the shop's unit, with the units of angles that a context of space has.
int AddContext(NewStatements& additions, LengthUnit unit) {
    const int millimetre = additions.Add("(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.))");
    int length = millimetre;
    if (unit == LengthUnit::Inch) {
        const int measure = additions.Add("LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(" +
                                          RealText(MillimetresIn(unit)) + ")," + Shown(millimetre) + ")");
        const int exponents = additions.Add("DIMENSIONAL_EXPONENTS(1.,0.,0.,0.,0.,0.,0.)");
        length = additions.Add("(CONVERSION_BASED_UNIT('INCH'," + Shown(measure) +
                               ")LENGTH_UNIT()NAMED_UNIT(" + Shown(exponents) + "))");
    }
    const int angle = additions.Add("(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.))");
    const int solidAngle = additions.Add("(NAMED_UNIT(*)SI_UNIT($,.STERADIAN.)SOLID_ANGLE_UNIT())");
    return additions.Add("(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((" +
                         Shown(length) + "," + Shown(angle) + "," + Shown(solidAngle) +
                         "))REPRESENTATION_CONTEXT('',''))");
}

}  // namespace

bool NamesUnits(const Statements& statements) {
    const Contexts contexts = ContextsOf(statements);
    return contexts.first != nullptr || contexts.unitless.empty();
}

bool HasUnitlessContexts(const Statements& statements) { return !ContextsOf(statements).unitless.empty(); }

std::string WithUnitsOfLength(std::string content, LengthUnit unit) {
    const Statements statements(content);
    const Contexts contexts = ContextsOf(statements);
    if (contexts.unitless.empty()) return content;
    NewStatements additions(statements);
    const int context = contexts.first != nullptr ? contexts.first->number : AddContext(additions, unit);
    std::set<int> unitless;
    for (const Statement* one : contexts.unitless) unitless.insert(one->number);
    std::vector<TextEdit> edits;
    // Looks and other things that stand in such a context share it with the shapes.
    for (const Statement& representation : statements.All()) {
        const auto references = statements.ReferencesOf(representation);
        if (!representation.kind.ends_with("REPRESENTATION") || references.empty()) continue;
        if (unitless.contains(references.back().number))
            edits.push_back(ReferenceEdit(content, references.back().place, Shown(context)));
    }
    edits.push_back(additions.Edit());
    return WithEdits(std::move(content), std::move(edits));
}

void NoteUnitlessContexts(const Statements& statements, LengthUnit unit, StepDocument& document) {
    const Contexts contexts = ContextsOf(statements);
    const std::string taken =
        contexts.first == nullptr
            ? (unit == LengthUnit::Inch ? std::string("inches") : std::string("millimetres")) +
                  ", the unit of this shop's drawings"
            : "that of the context " + Shown(contexts.first->number);
    std::set<int> numbers;
    for (const Statement* one : contexts.unitless) numbers.insert(one->number);
    if (numbers.empty()) return;
    const Statement& place = *contexts.unitless.front();
    const std::string named = numbers.size() == 1
                                  ? "the context " + Shown(place.number) + " names"
                                  : std::to_string(numbers.size()) + " contexts of shapes, the first one " +
                                        Shown(place.number) + ", name";
    document.notes.push_back({named + " no unit of length, so that lengths have none: taken as " + taken,
                              statements.LineAt(place.place)});
}

}  // namespace brenvik::step
