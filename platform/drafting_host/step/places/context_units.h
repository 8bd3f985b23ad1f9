// Contexts of shapes that name no unit of length. The modeller would take millimetres, or none of the shapes.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "base/length_unit.h"
#include "drafting_host/step/texts/step_document.h"
#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// The contexts that the shapes of a file stand in.
class UnitContexts {
  public:
    explicit UnitContexts(const Statements& statements);

    /// Whether any of them names a unit, or there are none.
    bool NameUnits() const { return mFirst != nullptr || mUnitless.empty(); }
    bool LackUnits() const { return !mUnitless.empty(); }
    /// Reports those that name no unit, with the unit that is assumed for their lengths.
    void Note(LengthUnit unit, StepDocument& document) const;

    /// The first that names one.
    const Statement* First() const { return mFirst; }
    /// Those that name none, each once.
    const std::vector<const Statement*>& Unitless() const { return mUnitless; }

  private:
    void Take(const Statement& context);

    const Statements& mStatements;
    std::unordered_set<int> mSeen;
    std::vector<const Statement*> mUnitless;
    const Statement* mFirst = nullptr;
};

/// The content with shapes of contexts without a unit in the file's first context that names one, and in
/// `unit` where there is none.
std::string WithUnitsOfLength(std::string content, LengthUnit unit);

}  // namespace brenvik::step
