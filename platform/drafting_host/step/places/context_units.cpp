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

UnitContexts::UnitContexts(const Statements& statements) : mStatements(statements) {
    for (const Statement& representation : statements.All()) {
        const auto references = statements.ReferencesOf(representation);
        if (!IsOfShapes(representation) || references.empty()) continue;
        if (!mSeen.insert(references.back().number).second) continue;
        if (const Statement* const context = statements.Find(references.back().number)) Take(*context);
    }
}

void UnitContexts::Take(const Statement& context) {
    const bool isContext = context.kind.empty() || context.kind.ends_with("CONTEXT");
    if (!isContext || !context.wellFormed || !IsInSpace(mStatements, context)) return;
    if (!NamesUnitOfLength(mStatements, context))
        mUnitless.push_back(&context);
    else if (mFirst == nullptr)
        mFirst = &context;
}

std::string WithUnitsOfLength(std::string content, LengthUnit unit) {
    const Statements statements(content);
    const UnitContexts contexts(statements);
    if (!contexts.LackUnits()) return content;
    NewStatements additions(statements);
    const int context = contexts.First() != nullptr ? contexts.First()->number : AddContext(additions, unit);
    std::set<int> unitless;
    for (const Statement* one : contexts.Unitless()) unitless.insert(one->number);
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

void UnitContexts::Note(LengthUnit unit, StepDocument& document) const {
    if (mUnitless.empty()) return;
    const std::string taken =
        mFirst == nullptr ? (unit == LengthUnit::Inch ? std::string("inches") : std::string("millimetres")) +
                                ", the unit of this shop's drawings"
                          : "that of the context " + Shown(mFirst->number);
    const Statement& place = *mUnitless.front();
    const std::string named = mUnitless.size() == 1
                                  ? "the context " + Shown(place.number) + " names"
                                  : std::to_string(mUnitless.size()) + " contexts of shapes, the first one " +
                                        Shown(place.number) + ", name";
    document.notes.push_back({named + " no unit of length, so that lengths have none: taken as " + taken,
                              mStatements.LineAt(place.place)});
}

}  // namespace brenvik::step
