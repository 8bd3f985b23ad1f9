// The looks of a STEP file as its statements have them, for solids that the modeller has none for: copies
// that stand for uses of a shape.
#pragma once

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "drafting_host/step/looks/part_looks.h"
#include "drafting_host/step/texts/step_statements.h"
#include "drafting_host/step/texts/step_text.h"

namespace brenvik::step {

class StatementLooks {
  public:
    StatementLooks(const Statements& statements, CodePage codePage);

    /// Of a solid with what it stands in, from inside out. The innermost counts, but for layers of uses:
    /// these come first, the outermost ahead. What all faces of the solid share is its own.
    PartLook Of(const std::vector<int>& chain) const;

  private:
    void Take(const Statement& statement);
    PartLook OfOne(int number) const;
    PartLook OfFaces(int solid) const;
    std::optional<Rgb> ColourIn(const Statement& style) const;

    const Statements& mStatements;
    CodePage mCodePage;
    std::unordered_map<int, const Statement*> mLayers,
        mStyles;                      ///< By what they stand on; the first of several.
    std::unordered_set<int> mHidden;  ///< Layers and styles.
};

}  // namespace brenvik::step
